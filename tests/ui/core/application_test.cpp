// The application object: its start and its end, accelerators, settings, what it says of errors.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>

#include "framework/core/process_entry.h"
#include "framework/core/x_settings.h"
#include "framework/draw/screen.h"
#include "tests/support/basics.h"
#include "tests/ui/core/core_test.h"

#include "framework/core/toolkit_xm.h"

namespace {

using testing::HasSubstr;

zApp& app() {
  return *zApp::instance();
}

TEST(AcceleratorTable, TakesTheKeyByTheKindOfTheRowUpToItsEnd) {
  std::string codes;
  for (const char* name : {"VK_F1", "VK_F12", "VK_DELETE", "VK_INSERT", "VK_UP", "VK_DOWN", "VK_F",
                           "VK_Fx", "VK_F1x", "VK_F-1", ""}) {
    const AcceleratorRow rows[] = {{7, 1, name, kAccelVirtualKey, 0},
                                   {0, 0, nullptr, kAccelEnd, 0}};
    codes += std::to_string(makeAccelerators(rows).at(0).keyCode.value_or(0)) + " ";
  }
  EXPECT_EQ(codes, "65470 65481 65535 65379 65362 0 0 0 0 0 0 ");
  const AcceleratorRow rows[] = {{7, 1, "open", kAccelCharacter, 0},
                                 {7, 2, "o", kAccelKeysym, 0},
                                 {7, 3, "", kAccelCharacter, 0},
                                 {0, 0, nullptr, kAccelEnd, 0},
                                 {7, 4, "x", kAccelCharacter, 0}};
  const std::vector<zAccel> table = makeAccelerators(rows);
  ASSERT_EQ(table.size(), 3U);
  EXPECT_EQ(table[0].keyCode, 'o');
  EXPECT_EQ(table[1].keyCode, 7U);
  EXPECT_EQ(findAccelerator({table[2]}, 0, 0, 0), nullptr) << "can never be pressed";
}

TEST(AcceleratorTable, FindsTheFirstRowWhoseKeyItIsAndWhoseModifiersAreAmongThoseDown) {
  const AcceleratorRow rows[] = {{0, 1, "o", kAccelCharacter, kAccelControl | kAccelShift},
                                 {0, 2, "o", kAccelCharacter, kAccelControl},
                                 {0, 3, "o", kAccelCharacter, kAccelAlt},
                                 {0, 4, "VK_F3", kAccelVirtualKey, 1},
                                 {0, 0, nullptr, kAccelEnd, 0}};
  const std::vector<zAccel> table = makeAccelerators(rows);
  constexpr unsigned kF3 = 65472;
  constexpr unsigned kControlO = 15;
  const auto command = [&](unsigned character, unsigned keysym, unsigned modifiers) {
    const zAccel* found = findAccelerator(table, character, keysym, modifiers);
    return found == nullptr ? 0 : found->command;
  };
  EXPECT_EQ(command(kControlO, 'o', kStateControl), 2);
  EXPECT_EQ(command('o', 'x', kStateControl), 2);
  EXPECT_EQ(command(kControlO, 'o', kStateControl | kStateShift), 1);
  EXPECT_EQ(command('o', 'o', kStateMod1), 3);
  EXPECT_EQ(command('o', 'o', kStateControl | kStateMod1 | kStateLock), 2);
  EXPECT_EQ(command('o', 'o', kStateShift), 0);
  EXPECT_EQ(command(kF3, kF3, kStateControl | kStateShift | kStateMod1), 4);
  EXPECT_EQ(command(kControlO, 'p', kStateControl), 0);
}

TEST(Quit, IsRefusedByAHandlerOrByTheMainWindow) {
  TestFrame frame;
  frame.handlerAnswer = 1;
  app().quit();
  app().closeMainWindow();
  frame.handlerAnswer = 0;
  app().quit();
  app().closeMainWindow();
  EXPECT_THAT(frame.seen, ElementsAre("handler 16", "handler 16", "handler 16", "close 16",
                                      "handler 16", "close 16"));
  EXPECT_TRUE(app().isRunning());
}

TEST(Settings, CountTextsAsNumbersAndTheWordTrueAsOne) {
  const std::pair<const char*, int> rows[] = {{"12", 12},  {"-3 points", -3}, {"True", 1},
                                              {"true", 1}, {"TRUE", 0},       {"on", 0}};
  for (const auto& [text, number] : rows) {
    setXResource("settings.key", text);
    EXPECT_EQ(readXSetting(app().display(), "settings", "key"), number) << text;
  }
  EXPECT_EQ(readXSetting(app().display(), "settings", "other"), std::nullopt);
}

TEST(Settings, AreReadAnewButForTheDebugLevelAndTheChildWindowSwitch) {
  const int levelBefore = debugLevel();
  const zXSettings before = g_XSettings;
  const auto read = [](const char* application) {
    readXSettings(app().display(), application);
    const zXSettings& now = g_XSettings;
    return std::vector<int>{
        now.useChildMdi,       debugLevel(),       now.positionIsFrameWorkaround ? 1 : 0,
        now.incFontInDialogBy, now.promptKeyDelay, now.startSize.width,
        now.startSize.height};
  };
  for (const char* key : {"useChildMDI", "debugOn", "positionIsFrameWorkaround",
                          "incFontInDialogBy", "promptKeyDelay", "startSize"}) {
    setXResource(std::string("set.") + key, "40x30");
    setXResource(std::string("odd.") + key, "50x60+0+0");
  }
  for (const auto& [application, values] : {std::pair("unset", std::vector{1, 0, 0, 0, 300, 0, 0}),
                                            {"set", {40, 40, 1, 40, 40, 40, 30}},
                                            {"odd", {50, 50, 1, 50, 50, 0, 0}}}) {
    setDebugLevel(-1);
    g_XSettings = {};
    EXPECT_EQ(read(application), values) << application;
  }
  EXPECT_THAT(read("set"), ElementsAre(50, 50, 1, 40, 40, 40, 30));
  g_XSettings = before;
  setDebugLevel(levelBefore);
}

TEST(Settings, OfFontsInPointsFollowTheScreen) {
  // 96 dots an inch.
  const struct {
    const char *asked, *family, *pixels;
  } rows[] = {{"-*-helvetica-bold-r-normal--*-110-*", "-helvetica-bold-r-", "--14-"},
              {"-*-courier-medium-o-*--*-180-*", "-courier-medium-o-", "--24-"},
              {"-*-helvetica-bold-r-*--11-*", "-helvetica-bold-r-", "--11-*"},
              {"-*-helvetica-bold-r-*--*-1x-*", "-helvetica-bold-r-", "--*-1x-*"},
              {"-*-helvetica-bold-r-*--*-0-*", "-helvetica-bold-r-", "--*-0-*"}};
  for (const auto& row : rows) {
    setXResource("points*fontList", row.asked);
    resolveFontPoints(app().display());
    const std::string font =
        readXResource(app().display(), "points.list.fontList", "P.L.FontList").value_or("");
    EXPECT_THAT(font, testing::AllOf(HasSubstr(row.family), HasSubstr(row.pixels))) << row.asked;
  }
}

TEST(DebugOutput, ComesAboveLevelZeroAndTellsProtocolErrorsAfterWhichTheProgramGoesOn) {
  const int levelBefore = debugLevel();
  const auto printed = [] {
    testing::internal::CaptureStdout();
    // The finished text serves as a format a second time; directives in it have no argument.
    zDebugOut("value %d of %s", 7, "100%% of %d %");
    mapUnknownWindow(77);
    return testing::internal::GetCapturedStdout();
  };
  for (const int silent : {-1, 0}) {
    setDebugLevel(silent);
    EXPECT_EQ(printed(), "");
  }
  setDebugLevel(1);
  EXPECT_THAT(printed(),
              testing::MatchesRegex(
                  "value 7 of 100% of %d %\r\n"
                  "X Error of failed request: BadWindow \\(invalid Window parameter\\)\r\n"
                  "Opcode of failed request: 8, 0\r\n"
                  "Resource id in failed request: 77\r\n"
                  "Serial number of failed request: [0-9]+\n\r\n"));
  setDebugLevel(levelBefore);
}

TEST(ProcessStart, TakesTheFirstDirectoryOfTheListOrTheInstallationWhereAloneTheFileIsMissed) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder / "there");
  std::filesystem::create_directories(folder / "home/X11/app-defaults");
  const std::string there = (folder / "there").string();
  const std::string nowhere = (folder / "nowhere").string();
  const std::string home = (folder / "home").string();
  const std::string listed = folder.write("there/NEL2", "").string();
  const std::string ours = folder.write("home/X11/app-defaults/NEL2", "").string();
  const auto found = [](const char* directories, const char* installation) {
    const zResourceSearch search = findResourceFile(directories, installation);
    return search.isMissing ? "missing" : search.file.value_or("none");
  };
  EXPECT_EQ(found((there + ":" + nowhere).c_str(), nullptr), listed);
  EXPECT_EQ(found((nowhere + ":" + there).c_str(), nullptr), "none");
  EXPECT_EQ(found(there.c_str(), home.c_str()), listed);
  EXPECT_EQ(found(nowhere.c_str(), home.c_str()), ours);
  EXPECT_EQ(found(nullptr, nowhere.c_str()), "missing");
  EXPECT_EQ(found(nullptr, nullptr), "none");
}

/// Arguments of a process, as main gets them.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers(texts.size() + 1);
  std::transform(texts.begin(), texts.end(), pointers.begin(),
                 [](std::string& text) { return text.data(); });
  return pointers;
}

TEST(ProcessStart, NamesTheDisplayThatFollowsTheLastArgumentThatBeginsWithTheOption) {
  const auto name = [](std::vector<std::string> texts) {
    const char* found = displayArgument(static_cast<int>(texts.size()), pointersTo(texts).data());
    return std::string(found == nullptr ? "none" : found);
  };
  EXPECT_EQ(name({"-d"}) + name({"p", "-display"}), "nonenone");
  EXPECT_EQ(name({"p", "-display", "a:1"}), "a:1");
  EXPECT_EQ(name({"p", "-d", "a:1", "-dx", "b:2"}), "b:2");
  EXPECT_EQ(name({"p", "-d", "a:1", "-d"}), "a:1");
}

/// Processes of their own, which may open displays and end. What they are to say goes to standard
/// error.
class ProcessDeathTest : public testing::Test {
 protected:
  ProcessDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  static void expectEnd(void (*appMain)(zApp* app), const std::string& said,
                        int status = EXIT_SUCCESS,
                        std::vector<std::string> arguments = {"nelkvui"}) {
    EXPECT_EXIT(
        {
          constexpr unsigned kSeconds = 10;
          alarm(kSeconds);
          const auto count = static_cast<int>(arguments.size());
          std::exit(runProcess(count, pointersTo(arguments).data(), appMain));
        },
        testing::ExitedWithCode(status), said);
  }
};

TEST_F(ProcessDeathTest, RunsTheApplicationWithTheResourcesFoundAndTheJoinedCommandLine) {
  const TemporaryFolder folder;
  folder.write("NEL2", "nelkvui.incFontInDialogBy: 3\n");
  setenv("XAPPLRESDIR", folder.path().c_str(), 1);
  expectEnd(
      [](zApp* app) {
        std::cerr << "name " << app->name() << ", line [" << app->commandLine() << "], path "
                  << app->programPath() << ", setting "
                  << readXSetting(app->display(), "nelkvui", "incFontInDialogBy").value_or(-1)
                  << ", " << std::getenv("XENVIRONMENT");
      },
      "^name zApp, line \\[nelkvui -t/a b  -post\\], path nelkvui, setting 3, .*/NEL2$",
      EXIT_SUCCESS, {"nelkvui", "-t/a b", "", "-post"});
  unsetenv("XAPPLRESDIR");
  setenv("nelwerk", "/nowhere", 1);
  expectEnd([](zApp*) {}, "^Cannot find X-Resources. Please set XENVIRONMENT!\n$");
  unsetenv("nelwerk");
  expectEnd([](zApp*) {}, "^Error:  unable to open display \"nowhere:9\".\n$", EXIT_FAILURE,
            {"nelkvui", "-display", "nowhere:9"});
}

TEST_F(ProcessDeathTest, LoadsTheDefaultFontThatTheResourcesNameOrAnother) {
  for (const auto& [resource, said] :
       {std::pair("*other: none", "^-\\*-helvetica-bold-r-\\*--10-\\*, 1$"),
        {"*MainWindow.fontList: 6x13", "^6x13, 1$"},
        {"zApp.XmMainWindow.FontList: 6x13", "^6x13, 1$"},
        {"*MainWindow.fontList: no-such-font", ", 1$"}}) {
    expectEnd(
        [](zApp*) {
          std::cerr << theScreen().defaultFontName << ", " << (theScreen().defaultFont != nullptr);
        },
        said, EXIT_SUCCESS, {"nelkvui", "-xrm", resource});
  }
}

TEST_F(ProcessDeathTest, EndsAtOnceWhenAnIdleHandlerQuits) {
  expectEnd(
      [](zApp* app) {
        TestFrame frame;
        frame.closeAnswer = 0;
        Owner quits([] {
          zApp::instance()->quit();
          return 0;
        });
        app->idleList()->add(&quits, &Owner::run);
        app->go();
        app->go();
        app->idleList()->remove(&quits, &Owner::run);
        std::cerr << "runs " << quits.runs << ", " << frame.seen.back();
      },
      "^runs 1, close 16$");
}

TEST_F(ProcessDeathTest, EndsTheLoopsInsideToo) {
  expectEnd(
      [](zApp* app) {
        Owner nests([] {
          zApp::instance()->pumpWhile([] { return true; });
          std::cerr << "inner loop ended";
          return 0;
        });
        Owner stops([] {
          zApp::instance()->stop();
          return 0;
        });
        const zTimer outer(&nests, &Owner::run, 1, zTimer::kOnce);
        const zTimer inner(&stops, &Owner::run, 20, zTimer::kOnce);
        app->go();
      },
      "^inner loop ended$");
}

// Xt crashes when an error handler returns.
TEST_F(ProcessDeathTest, AnErrorOfTheToolkitEndsTheProcessAndAWarningDoesNot) {
  expectEnd(
      [](zApp* app) {
        Owner fails([] {
          raiseXtWarning("odd");
          raiseXtError("broken");
          return 0;
        });
        const zTimer timer(&fails, &Owner::run, 1, zTimer::kOnce);
        app->go();
      },
      "^Error: broken\n$", EXIT_FAILURE);
}

}  // namespace
