// Options, the display and resources that the program finds at its start.

#include "support/version.h"
#include "tests/e2e/app/app_fixture.h"

namespace {

constexpr char kUsage[] =
    "\nKorvane UI\nUsage:\n\t-h\t\tthis help page\n\t-v\t\tprint Version "
    "Information\n\t-t<targetdir>\tuse targetdirectory\n\t-post\tconnect to NEL-Postmaster at "
    "startup\n\n";

TEST_F(AppTest, SaysItsVersionOrUsageForAnyDashVOrDashHButNeedsADisplayForIt) {
  const std::string version = std::string("nelkvui: Korvane : ") + kProductVersion + "  \n";
  const std::string noDisplay = "Error:  unable to open display \"";
  const std::tuple<Launch, int, std::string, std::string> rows[] = {
      {{"", {"-t/some-version", "-post"}, {"neldir"}}, 0, version, ""},
      {{"", {"-h", "-post"}}, 0, kUsage, ""},
      {{"", {"-v"}, {"DISPLAY"}}, 1, "", noDisplay + "\".\n"},
      {{"", {"-display", ":987654"}}, 1, "", noDisplay + ":987654\".\n"},
  };
  for (auto [launch, status, output, errors] : rows) {
    launch.program = builtProgram("nelkvui");
    launch.workingFolder = folder.path();
    ChildProcess once(launch);
    EXPECT_EQ(once.exitStatus(), status);
    EXPECT_EQ(once.output(), output);
    EXPECT_EQ(once.errors(), errors) << "no word of a connection";
  }
}

// The resource file names a colour that there is not, which the toolkit complains of.
TEST_F(AppTest, ReadsTheResourceFileOfTheFirstDirectoryOrTheInstallation) {
  std::filesystem::create_directories(folder / "there");
  std::filesystem::create_directories(folder / "installation/X11/app-defaults");
  folder.write("there/NEL2", "*foreground: there\n");
  folder.write("installation/X11/app-defaults/NEL2", "*foreground: installed\n");
  for (const auto& [directories, installed, complaint] :
       {std::tuple("there:nowhere", "installation", "Color name \"there\""),
        std::tuple("nowhere:there", "installation", "Color name \"installed\""),
        std::tuple("nowhere:there", "nowhere", "Cannot find X-Resources. Please set XENVIR")}) {
    const std::string resources = std::string("XAPPLRESDIR=") + directories;
    const std::string installation = std::string("nelwerk=") + installed;
    ChildProcess({builtProgram("nelkvui"), {}, {resources, installation}, folder.path()})
        .expectText(complaint);
  }
}

}  // namespace
