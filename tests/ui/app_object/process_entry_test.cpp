#include "framework/core/process_entry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
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

TEST(ResourceSearch, TakesTheFirstDirectoryOfTheListOrTheInstallationWhereAloneTheFileIsMissed) {
  const TemporaryFolder folder;
  const std::string there = (folder / "there").string();
  const std::string nowhere = (folder / "nowhere").string();
  const std::string installed = (folder / "installation").string();
  std::filesystem::create_directories(there);
  std::filesystem::create_directories(installed + "/X11/app-defaults");
  const std::string listed = folder.write("there/NEL2", "").string();
  const std::string ours = folder.write("installation/X11/app-defaults/NEL2", "").string();
  const struct {
    std::optional<std::string> directories, installation, file;
    bool isMissing;
  } rows[] = {
      {there, std::nullopt, listed, false},
      {there + ":" + nowhere, std::nullopt, listed, false},
      {nowhere + ":" + there, std::nullopt, std::nullopt, false},
      {there, installed, listed, false},
      {nowhere, installed, ours, false},
      {std::nullopt, installed, ours, false},
      {std::nullopt, nowhere, std::nullopt, true},
      {nowhere, nowhere, std::nullopt, true},
      {std::nullopt, std::nullopt, std::nullopt, false},
  };
  const auto pointer = [](const auto& text) { return text ? text->c_str() : nullptr; };
  for (const auto& row : rows) {
    const zResourceSearch found =
        findResourceFile(pointer(row.directories), pointer(row.installation));
    EXPECT_EQ(found.file, row.file);
    EXPECT_EQ(found.isMissing, row.isMissing);
  }
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

void reportFont(zApp* /*app*/) {
  std::cerr << theScreen().defaultFontName << ", " << (theScreen().defaultFont != nullptr);
}

TEST_F(ProcessEntryDeathTest, LoadsTheDefaultFontThatTheResourcesNameOrAnother) {
  for (const auto& [resource, said] :
       {std::pair("*other: none", "^-\\*-helvetica-bold-r-\\*--10-\\*, 1$"),
        {"*MainWindow.fontList: 6x13", "^6x13, 1$"},
        {"zApp.XmMainWindow.FontList: 6x13", "^6x13, 1$"},
        {"*MainWindow.fontList: no-such-font", ", 1$"}}) {
    Arguments arguments{"nelkvui", "-xrm", resource};
    EXPECT_EXIT(std::exit(runProcess(arguments.count(), arguments.values(), reportFont)),
                kOrdinaryEnd, said);
  }
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
