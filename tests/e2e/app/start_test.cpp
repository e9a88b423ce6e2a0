// Options, the display, fonts and resources that the program finds at its start.

#include <sys/stat.h>

#include "support/version.h"
#include "tests/e2e/app/app_fixture.h"

namespace {

constexpr char kUsage[] =
    "\nKorvane UI\nUsage:\n\t-h\t\tthis help page\n\t-v\t\tprint Version "
    "Information\n\t-t<targetdir>\tuse targetdirectory\n\t-post\tconnect to NEL-Postmaster at "
    "startup\n\n";

TEST_F(AppTest, TakesWhatIsTypedAsSoonAsTheWindowHasTheFocusAndIgnoresItsOptions) {
  start({"-post", "-t/a/b"});
  shakeHands();
  user.awaitWindow(kMainTitle);
  user.type("at once\n");
  postmaster.expectLater(MSG_UI_COMMAND, "at once");
  EXPECT_EQ(postmaster.tool().output() + postmaster.tool().errors(), "");
}

struct OneShot {
  Launch launch;
  int status;
  std::string output;
  std::string errors;
};

TEST_F(AppTest, SaysItsVersionOrUsageForAnyDashVOrDashHButNeedsADisplayForIt) {
  const TemporaryFolder folder;
  const auto program = builtProgram("nelkvui");
  const std::string nel = "neldir=" + (folder / "nel").string();
  // The line ends in two blanks, since the file is emptied before it is read. Intended, as is the
  // backslash in its name.
  const std::string version = std::string("nelkvui: Korvane : ") + kProductVersion + "  \n";
  const std::string noDisplay = "Error:  unable to open display \"";
  // A pipe that nobody reads or writes.
  ASSERT_EQ(mkfifo((folder / "pipe\\patchlevel.txt").c_str(), 0600), 0);
  std::filesystem::create_symlink(program, folder / "nelkvui-here");
  const OneShot rows[] = {
      {{program, {"-v"}, {nel}}, 0, version, ""},
      {{program, {"-h", "-v"}, {nel}}, 0, version, ""},
      {{program, {"-t/some-version", "-post"}, {nel}}, 0, version, ""},
      {{program, {"-v"}, {"neldir=" + (folder / "pipe").string()}}, 0, version, ""},
      {{program, {"-v"}, {"neldir"}, folder.path()}, 0, version, ""},
      {{program, {"-h", "-post"}}, 0, kUsage, ""},
      {{folder / "nelkvui-here"}, 0, kUsage, ""},
      {{program, {"-v"}, {"DISPLAY"}}, 1, "", noDisplay + "\".\n"},
      {{program, {"-display", ":987654"}}, 1, "", noDisplay + ":987654\".\n"},
  };
  for (const OneShot& row : rows) {
    const auto file = folder.write("nel\\patchlevel.txt", "17\n");
    ChildProcess once(row.launch);
    EXPECT_EQ(once.exitStatus(), row.status);
    EXPECT_EQ(once.output(), row.output);
    EXPECT_EQ(once.errors(), row.errors) << "no word of a connection";
    EXPECT_EQ(readFile(file), row.launch.environment == std::vector{nel} ? "" : "17\n");
  }
  EXPECT_TRUE(exists(folder / "\\patchlevel.txt")) << "without the variable in the working folder";
  EXPECT_TRUE(postmaster.hasSocketName());
}

TEST_F(AppTest, IsUsableOnAServerWithoutFontsOfItsOwn) {
  ChildProcess server({"/usr/bin/Xvfb",
                       {"-displayfd", "1", "-fp", "built-ins", "-nolisten", "tcp", "-noreset",
                        "-screen", "0", "800x600x24"}});
  while (server.output().find('\n') == std::string::npos && server.isRunning()) {
    server.waitABit(kAnswerTime);
  }
  const std::string display = ":" + server.output().substr(0, server.output().find('\n'));
  User poorUser(display);
  start({}, {"DISPLAY=" + display});
  shakeHands();
  poorUser.giveFocus(kMainTitle);
  postmaster.send(MSG_T_TEXT, "some text\n");
  awaitCommandLine(poorUser);
}

// The resource file names a colour that there is not, which the toolkit complains of.
TEST_F(AppTest, ReadsTheResourceFileOfTheFirstDirectoryOrTheInstallation) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder / "there");
  std::filesystem::create_directories(folder / "installation/X11/app-defaults");
  folder.write("there/NEL2", "*foreground: there\n");
  folder.write("installation/X11/app-defaults/NEL2", "*foreground: installed\n");
  for (const auto& [directories, installed, complaint] :
       {std::tuple("there:nowhere", "installation", "Color name \"there\""),
        std::tuple("nowhere:there", "installation", "Color name \"installed\""),
        std::tuple("nowhere:there", "nowhere",
                   "Cannot find X-Resources. Please set XENVIRONMENT!\n")}) {
    const std::string resources = std::string("XAPPLRESDIR=") + directories;
    const std::string installation = std::string("nelwerk=") + installed;
    ChildProcess({builtProgram("nelkvui"), {}, {resources, installation}, folder.path()})
        .expectText(complaint);
  }
}

}  // namespace
