// Options, the display, fonts and resources that the program finds at its start.

#include <sys/stat.h>

#include "support/version.h"
#include "tests/e2e/app/app_fixture.h"

namespace {

using testing::HasSubstr;

constexpr char kUsage[] =
    "\nKorvane UI\nUsage:\n\t-h\t\tthis help page\n\t-v\t\tprint Version "
    "Information\n\t-t<targetdir>\tuse targetdirectory\n\t-post\tconnect to NEL-Postmaster at "
    "startup\n\n";

TEST_F(AppTest, TakesWhatIsTypedAsSoonAsTheWindowHasTheFocus) {
  start();
  shakeHands();
  user.awaitWindow(kMainTitle);
  user.type("at once\n");
  postmaster.expectLater(MSG_UI_COMMAND, "at once");
}

TEST_F(AppTest, PrintsItsVersionForAnyDashVAndEmptiesThePatchLevelFile) {
  const TemporaryFolder folder;
  // The line ends in two blanks, since the file is emptied before it is read. Intended, as is the
  // backslash in its name.
  const std::string line = std::string("nelkvui: Korvane : ") + kProductVersion + "  \n";
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{"-v"}, {"-h", "-v"}, {"-t/some-version", "-post"}}) {
    const auto file = folder.write("nel\\patchlevel.txt", "17\n");
    ChildProcess program(
        {builtProgram("nelkvui"), options, {"neldir=" + (folder / "nel").string()}});
    EXPECT_EQ(program.exitStatus(), 0);
    EXPECT_EQ(program.output(), line);
    EXPECT_EQ(program.errors(), "") << "no word of a connection";
    EXPECT_EQ(readFile(file), "");
  }
  EXPECT_TRUE(postmaster.hasSocketName());

  // A pipe that nobody reads or writes.
  ASSERT_EQ(mkfifo((folder / "pipe\\patchlevel.txt").c_str(), 0600), 0);
  ChildProcess piped({builtProgram("nelkvui"), {"-v"}, {"neldir=" + (folder / "pipe").string()}});
  EXPECT_EQ(piped.exitStatus(), 0);
  EXPECT_EQ(piped.output(), line);

  ChildProcess program({builtProgram("nelkvui"), {"-v"}, {"neldir"}, folder.path()});
  EXPECT_EQ(program.exitStatus(), 0);
  EXPECT_TRUE(exists(folder / "\\patchlevel.txt")) << "without the variable in the working folder";
}

TEST_F(AppTest, PrintsItsUsageForAnyDashHEvenInItsOwnName) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink(builtProgram("nelkvui"), folder / "nelkvui-here");
  for (const Launch& launch :
       {Launch{builtProgram("nelkvui"), {"-h", "-post"}}, Launch{folder / "nelkvui-here"}}) {
    ChildProcess program(launch);
    EXPECT_EQ(program.exitStatus(), 0);
    EXPECT_EQ(program.output(), kUsage);
    EXPECT_EQ(program.errors(), "");
  }
}

TEST_F(AppTest, NeedsADisplayEvenForItsVersion) {
  ChildProcess without({builtProgram("nelkvui"), {"-v"}, {"DISPLAY"}});
  EXPECT_EQ(without.exitStatus(), 1);
  EXPECT_EQ(without.output(), "");
  EXPECT_EQ(without.errors(), "Error:  unable to open display \"\".\n");
  ChildProcess dead({builtProgram("nelkvui"), {"-display", ":987654"}});
  EXPECT_EQ(dead.exitStatus(), 1);
  EXPECT_EQ(dead.errors(), "Error:  unable to open display \":987654\".\n");
}

class FirstMessages : public AppTest, public testing::WithParamInterface<const char*> {};

TEST_P(FirstMessages, AreTheSameWithAndWithoutOptions) {
  start({GetParam()});
  const Message connect = postmaster.expectConnect();
  EXPECT_EQ(connect.kind, kFrameDirected);
  EXPECT_EQ(connect.sender, NELKVUI);
  EXPECT_EQ(connect.dest, NELMPM);
  postmaster.accept();
  postmaster.send(MSG_START_POLL_TIMER);
  const Message ready = postmaster.expect(MSG_TOOL_READY);
  EXPECT_EQ(ready.kind, kFrameUndirected);
  EXPECT_EQ(ready.dest, 0);
  awaitCommandLine();
  EXPECT_EQ(postmaster.tool().output() + postmaster.tool().errors(), "");
}

INSTANTIATE_TEST_SUITE_P(AppTest, FirstMessages, testing::Values("", "-post", "-t/a/b"));

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
  const Deadline deadline(kAnswerTime);
  while (!postmaster.hasMessage(Milliseconds{50}) && !deadline.hasPassed()) {
    poorUser.press(XK_Return);
  }
  postmaster.send(MSG_T_TEXT, "some text\n");
  poorUser.type("list-process\n");
  postmaster.expectLater(MSG_UI_COMMAND, "list-process");
  postmaster.send(MSG_T_EXIT);
  postmaster.expectLater(MSG_DISCONNECT);
  expectEnd();
}

// The resource file names a colour that there is not, which the toolkit complains of.
TEST_F(AppTest, ReadsTheResourceFileOfTheFirstDirectoryOrTheInstallation) {
  const TemporaryFolder folder;
  const std::string there = (folder / "there").string();
  const std::string installation = (folder / "installation").string();
  const std::string nowhere = (folder / "nowhere").string();
  std::filesystem::create_directories(there);
  std::filesystem::create_directories(installation + "/X11/app-defaults");
  folder.write("there/NEL2", "*foreground: there\n");
  folder.write("installation/X11/app-defaults/NEL2", "*foreground: installed\n");
  const std::string listed = there + ":" + nowhere;
  const std::string second = nowhere + ":" + there;
  struct Row {
    const std::string& directories;
    const std::string& installation;
    const char* complaint;
  };
  for (const Row& row :
       {Row{listed, installation, "Color name \"there\""},
        Row{second, installation, "Color name \"installed\""},
        Row{second, nowhere, "Cannot find X-Resources. Please set XENVIRONMENT!\n"}}) {
    ChildProcess program({builtProgram("nelkvui"),
                          {},
                          {"XAPPLRESDIR=" + row.directories, "nelwerk=" + row.installation}});
    program.expectText(row.complaint);
  }
}

}  // namespace
