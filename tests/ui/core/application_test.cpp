// The application object: its start and its end, accelerators, settings, what it says of errors.

#include <algorithm>
#include <cstdlib>
#include <iostream>

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
    codes += std::to_string(virtualKeysym(name).value_or(0)) + " ";
  }
  EXPECT_EQ(codes, "65470 65481 65535 65379 65362 0 0 0 0 0 0 ");
  const AcceleratorRow rows[] = {
      {7, 1, "open", kAccelCharacter, 0},   {7, 2, "o", kAccelKeysym, 0},
      {7, 3, "VK_F1", kAccelVirtualKey, 0}, {7, 4, "", kAccelCharacter, 0},
      {0, 0, nullptr, kAccelEnd, 0},        {7, 5, "x", kAccelCharacter, 0}};
  codes.clear();
  for (const zAccel& accelerator : makeAccelerators(rows)) {
    codes += std::to_string(accelerator.keyCode.value_or(0)) + " ";
  }
  EXPECT_EQ(codes, "111 7 65470 0 ");
  EXPECT_EQ(findAccelerator({makeAccelerators(rows)[3]}, 0, 0, 0), nullptr) << "no key is no key";
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
  for (const int answer : {1, 0}) {
    frame.handlerAnswer = answer;
    app().quit();
    app().closeMainWindow();
  }
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
    return testing::PrintToString(std::vector<int>{
        now.useChildMdi, debugLevel(), now.positionIsFrameWorkaround, now.incFontInDialogBy,
        now.promptKeyDelay, now.startSize.width, now.startSize.height});
  };
  for (const char* key : {"useChildMDI", "debugOn", "positionIsFrameWorkaround",
                          "incFontInDialogBy", "promptKeyDelay", "startSize"}) {
    setXResource(std::string("set.") + key, "40x30");
    setXResource(std::string("odd.") + key, "50x60+0+0");
  }
  for (const auto& [application, values] : {std::pair("unset", "{ 1, 0, 0, 0, 300, 0, 0 }"),
                                            {"set", "{ 40, 40, 1, 40, 40, 40, 30 }"},
                                            {"odd", "{ 50, 50, 1, 50, 50, 0, 0 }"}}) {
    setDebugLevel(-1);
    g_XSettings = {};
    EXPECT_EQ(read(application), values) << application;
  }
  EXPECT_EQ(read("set"), "{ 50, 50, 1, 40, 40, 40, 30 }");
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
  std::string printed;
  for (const int level : {-1, 0, 1}) {
    setDebugLevel(level);
    testing::internal::CaptureStdout();
    // The finished text serves as a format a second time; directives in it have no argument.
    zDebugOut("value %d of %s", 7, "100%% of %d %");
    XSync(ui::display(), False);
    const XErrorHandler before = XSetErrorHandler(XErrorReporter);
    XMapWindow(ui::display(), 77);
    XSync(ui::display(), False);
    XSetErrorHandler(before);
    printed += std::to_string(level) + testing::internal::GetCapturedStdout();
  }
  EXPECT_THAT(printed, testing::MatchesRegex(
                           "-101value 7 of 100% of %d %\r\n"
                           "X Error of failed request: BadWindow \\(invalid Window parameter\\)\r\n"
                           "Opcode of failed request: 8, 0\r\n"
                           "Resource id in failed request: 77\r\n"
                           "Serial number of failed request: [0-9]+\n\r\n"));
  setDebugLevel(levelBefore);
}

/// Arguments of a process, as main gets them.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers(texts.size() + 1);
  std::transform(texts.begin(), texts.end(), pointers.begin(),
                 [](std::string& text) { return text.data(); });
  return pointers;
}

TEST(ProcessStart, NamesTheDisplayThatFollowsTheLastArgumentThatBeginsWithTheOption) {
  std::string names;
  for (std::vector<std::string> texts : std::vector<std::vector<std::string>>{
           {"-d"}, {"p", "-display"}, {"p", "-d", "a", "-dx", "b"}, {"p", "-d", "c", "-d"}}) {
    const char* found = displayArgument(static_cast<int>(texts.size()), pointersTo(texts).data());
    names += std::string(found == nullptr ? "none" : found) + " ";
  }
  EXPECT_EQ(names, "none none b c ");
}

/// Expects a process of its own to end, which may open displays. What it is to say goes to standard
/// error.
void expectEnd(void (*appMain)(zApp* app), const std::string& said, int status = EXIT_SUCCESS,
               std::vector<std::string> arguments = {"nelkvui"}) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        constexpr unsigned kSeconds = 10;
        alarm(kSeconds);
        const auto count = static_cast<int>(arguments.size());
        std::exit(runProcess(count, pointersTo(arguments).data(), appMain));
      },
      testing::ExitedWithCode(status), said);
}

TEST(ProcessDeathTest, RunsTheApplicationWithTheResourcesFoundAndTheJoinedCommandLine) {
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
}

TEST(ProcessDeathTest, LoadsTheDefaultFontThatTheResourcesNameOrAnother) {
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

TEST(ProcessDeathTest, EndsAtOnceWhenAnIdleHandlerQuits) {
  expectEnd(
      [](zApp* app) {
        TestFrame frame;
        frame.closeAnswer = 0;
        Owner quits([] { zApp::instance()->quit(); });
        app->idleList()->add(&quits, &Owner::run);
        app->go();
        app->go();
        app->idleList()->remove(&quits, &Owner::run);
        std::cerr << "runs " << quits.runs << ", " << frame.seen.back();
      },
      "^runs 1, close 16$");
}

TEST(ProcessDeathTest, EndsTheLoopsInsideToo) {
  expectEnd(
      [](zApp* app) {
        Owner nests([] {
          zApp::instance()->pumpWhile([] { return true; });
          std::cerr << "inner loop ended";
        });
        Owner stops([] { zApp::instance()->stop(); });
        const zTimer outer(&nests, &Owner::run, 1, zTimer::kOnce);
        const zTimer inner(&stops, &Owner::run, 20, zTimer::kOnce);
        app->go();
      },
      "^inner loop ended$");
}

// Xt crashes when an error handler returns.
TEST(ProcessDeathTest, AnErrorOfTheToolkitEndsTheProcessAndAWarningDoesNot) {
  expectEnd(
      [](zApp* app) {
        Owner fails([] {
          XtAppWarning(zApp::instance()->context(), "odd");
          XtAppError(zApp::instance()->context(), "broken");
        });
        const zTimer timer(&fails, &Owner::run, 1, zTimer::kOnce);
        app->go();
      },
      "^Error: broken\n$", EXIT_FAILURE);
}

}  // namespace
