#include "framework/core/process_entry.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/x_settings.h"
#include "framework/draw/screen.h"
#include "tests/support/temporary_folder.h"

namespace {

/// Arguments of a process, as main gets them.
class Arguments {
 public:
  Arguments(std::initializer_list<const char*> given) : texts(given.begin(), given.end()) {
    for (std::string& text : texts) {
      pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
  }
  int count() const { return static_cast<int>(texts.size()); }
  char** values() { return pointers.data(); }

 private:
  std::vector<std::string> texts;
  std::vector<char*> pointers;
};

class ResourceSearch : public testing::Test {
 protected:
  std::string installed(const std::string& name) {
    std::filesystem::create_directories(folder / (name + "/X11/app-defaults"));
    folder.write(name + "/X11/app-defaults/NEL2", "");
    return (folder / name).string();
  }
  std::string directory(const std::string& name) {
    std::filesystem::create_directories(folder / name);
    folder.write(name + "/NEL2", "");
    return (folder / name).string();
  }

  TemporaryFolder folder;
  std::string nowhere = (folder / "nowhere").string();
};

TEST_F(ResourceSearch, TakesTheFirstDirectoryOfTheListOnly) {
  const std::string there = directory("there");
  EXPECT_EQ(findResourceFile(there.c_str(), nullptr).file, there + "/NEL2");
  EXPECT_EQ(findResourceFile((there + ":" + nowhere).c_str(), nullptr).file, there + "/NEL2");
  const zResourceSearch second = findResourceFile((nowhere + ":" + there).c_str(), nullptr);
  EXPECT_EQ(second.file, std::nullopt);
  EXPECT_FALSE(second.isMissing);
}

TEST_F(ResourceSearch, FallsThroughToTheInstallationAndMissesTheFileOnlyThere) {
  const std::string there = directory("there");
  const std::string installation = installed("installation");
  const std::string file = installation + "/X11/app-defaults/NEL2";
  EXPECT_EQ(findResourceFile(nowhere.c_str(), installation.c_str()).file, file);
  EXPECT_EQ(findResourceFile(nullptr, installation.c_str()).file, file);
  EXPECT_EQ(findResourceFile(there.c_str(), installation.c_str()).file, there + "/NEL2");
  EXPECT_TRUE(findResourceFile(nullptr, nowhere.c_str()).isMissing);
  EXPECT_TRUE(findResourceFile(nowhere.c_str(), nowhere.c_str()).isMissing);
  EXPECT_FALSE(findResourceFile(nullptr, nullptr).isMissing);
}

TEST(DisplayArgument, IsWhatFollowsTheLastArgumentThatBeginsWithTheOption) {
  EXPECT_EQ(displayArgument(1, Arguments{"-d"}.values()), nullptr);
  EXPECT_EQ(displayArgument(2, Arguments{"p", "-display"}.values()), nullptr);
  EXPECT_STREQ(displayArgument(3, Arguments{"p", "-display", "a:1"}.values()), "a:1");
  EXPECT_STREQ(displayArgument(5, Arguments{"p", "-d", "a:1", "-dx", "b:2"}.values()), "b:2");
  EXPECT_STREQ(displayArgument(4, Arguments{"p", "-d", "a:1", "-d"}.values()), "a:1");
}

// The tests below run in processes of their own, which may open displays and end.
class ProcessEntryDeathTest : public testing::Test {
 protected:
  ProcessEntryDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  TemporaryFolder folder;
};

const auto kOrdinaryEnd = testing::ExitedWithCode(EXIT_SUCCESS);
const auto kFailure = testing::ExitedWithCode(EXIT_FAILURE);

void reportApplication(zApp* app) {
  std::cerr << "name " << app->name() << ", line [" << app->commandLine() << "], setting "
            << readXSetting(app->display(), "nelkvui", "incFontInDialogBy").value_or(-1) << ", "
            << std::getenv("XENVIRONMENT");
}

TEST_F(ProcessEntryDeathTest, RunsTheApplicationWithTheResourcesFoundAndTheJoinedCommandLine) {
  folder.write("NEL2", "nelkvui.incFontInDialogBy: 3\n");
  Arguments arguments{"nelkvui", "-t/a b", "", "-post"};
  EXPECT_EXIT(
      {
        setenv("XAPPLRESDIR", folder.path().c_str(), 1);
        std::exit(runProcess(arguments.count(), arguments.values(), reportApplication));
      },
      kOrdinaryEnd, "^name zApp, line \\[nelkvui -t/a b  -post\\], setting 3, .*/NEL2$");
}

TEST_F(ProcessEntryDeathTest, SaysSoWhenTheInstallationHasNoResourcesAndGoesOn) {
  Arguments arguments{"nelkvui"};
  const std::string nowhere = (folder / "nowhere").string();
  EXPECT_EXIT(
      {
        unsetenv("XAPPLRESDIR");
        setenv("nelwerk", nowhere.c_str(), 1);
        std::exit(runProcess(arguments.count(), arguments.values(),
                             [](zApp*) { std::cerr << "running"; }));
      },
      kOrdinaryEnd, "^Cannot find X-Resources. Please set XENVIRONMENT!\nrunning$");
}

TEST_F(ProcessEntryDeathTest, EndsWithTheNameOfTheDisplayThatCannotBeOpened) {
  Arguments named{"nelkvui", "-display", ":987654", "-post"};
  EXPECT_EXIT(runProcess(named.count(), named.values(), [](zApp*) { std::cerr << "running"; }),
              kFailure, "^Error:  unable to open display \":987654\".\n$");
  Arguments unnamed{"nelkvui"};
  EXPECT_EXIT(
      {
        setenv("DISPLAY", ":987653", 1);
        runProcess(unnamed.count(), unnamed.values(), [](zApp*) { std::cerr << "running"; });
      },
      kFailure, "^Error:  unable to open display \":987653\".\n$");
}

void reportFont(zApp* /*app*/) {
  std::cerr << theScreen().defaultFontName << ", " << (theScreen().defaultFont != nullptr);
}

TEST_F(ProcessEntryDeathTest, LoadsTheDefaultFontThatTheResourcesNameOrAnother) {
  Arguments plain{"nelkvui"};
  EXPECT_EXIT(std::exit(runProcess(plain.count(), plain.values(), reportFont)), kOrdinaryEnd,
              "^-\\*-helvetica-bold-r-\\*--10-\\*, 1$");
  Arguments named{"nelkvui", "-xrm", "*MainWindow.fontList: 6x13"};
  EXPECT_EXIT(std::exit(runProcess(named.count(), named.values(), reportFont)), kOrdinaryEnd,
              "^6x13, 1$");
  Arguments byClass{"nelkvui", "-xrm", "zApp.XmMainWindow.FontList: 6x13"};
  EXPECT_EXIT(std::exit(runProcess(byClass.count(), byClass.values(), reportFont)), kOrdinaryEnd,
              "^6x13, 1$");
  Arguments unknown{"nelkvui", "-xrm", "*MainWindow.fontList: no-such-font"};
  EXPECT_EXIT(std::exit(runProcess(unknown.count(), unknown.values(), reportFont)), kOrdinaryEnd,
              ", 1$");
}

// Bytes are characters, or texts with bytes that are invalid in the user's locale would be cut.
TEST_F(ProcessEntryDeathTest, TreatsBytesAsCharactersInEveryLocale) {
  Arguments arguments{"nelkvui"};
  EXPECT_EXIT(
      {
        setenv("LC_ALL", "C.UTF-8", 1);
        std::exit(runProcess(arguments.count(), arguments.values(), [](zApp*) {
          std::cerr << std::setlocale(LC_CTYPE, nullptr) << " " << MB_CUR_MAX;
        }));
      },
      kOrdinaryEnd, "^C 1$");
}

void setFallback(zApp* app) {
  const char* const resources[] = {"*incFontInDialogBy: 4", nullptr};
  app->setFallbackResources(resources);
  std::cerr << readXSetting(app->display(), "nelkvui", "incFontInDialogBy").value_or(-1) << ", "
            << (theScreen().defaultFont != nullptr);
}

TEST_F(ProcessEntryDeathTest, OpensTheSameDisplayAgainWithFallbackResources) {
  Arguments arguments{"nelkvui", "-display", std::getenv("DISPLAY")};
  EXPECT_EXIT(
      {
        unsetenv("DISPLAY");
        std::exit(runProcess(arguments.count(), arguments.values(), setFallback));
      },
      kOrdinaryEnd, "^4, 1$");
}

}  // namespace
