// Launcher and help tool, as far as no process is needed.

#include <gmock/gmock.h>

#include <map>
#include <set>

#include "help/pages.h"
#include "launcher/files.h"
#include "launcher/launch.h"
#include "postmaster/options.h"

namespace {

std::string joined(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& word : words) {
    all += (all.empty() ? "" : " ") + word;
  }
  return all;
}

launcher::CommandLine parsed(std::vector<const char*> words) {
  words.insert(words.begin(), "korvane");
  return launcher::parseCommandLine(static_cast<int>(words.size()), words.data());
}

TEST(Launcher, MakesTheCommandLineOfThePostmaster) {
  using Words = std::vector<const char*>;
  const auto made = [](const Words& words) {
    const launcher::CommandLine line = parsed(words);
    return line.options ? joined(launcher::postmasterWords(*line.options, "/s"))
                        : std::to_string(line.status) + " " + line.text;
  };
  const std::pair<Words, const char*> rows[] = {
      {{},
       "nelmpm --transcript /s/transcript.txt --record /s/recording.txt --history /s/history.txt "
       "--charset UTF-8 --join-text --keep-buttons --restart-tester --tool nelkv --tool nel-help "
       "--tool \"nelkvui\""},
      {{"--tester", "t 'a b'", "--history", "h", "--keep-nothing", "--charset", "none", "--trace",
        "-", "--", "-geometry", "9x9", "a \"\\"},
       "nelmpm --history h --trace - --join-text --keep-buttons --restart-tester --tool t 'a b' "
       "--tool nel-help --tool \"nelkvui\" \"-geometry\" \"9x9\" \"a \\\"\\\\\""},
      {{"--replay", "r", "--speed", "2", "--transcript", "t"},
       "nelmpm --transcript t --charset UTF-8 --join-text --keep-buttons --replay r --speed 2 "
       "--tool \"nelkvui\""},
      // A program has its own options, and the window words behind those.
      {{"--keep-nothing", "--command", "a", "--cd", "/d", "--command", "b c", "--gdb", "./p",
        "--core", "-x", "--gdb", "--", "-w"},
       "nelmpm --charset UTF-8 --join-text --keep-buttons --restart-tester --tool \"nelgdb\" "
       "\"--command\" \"a\" \"--command\" \"b c\" \"--cd\" \"/d\" \"--\" \"./p\" \"--core\" \"-x\" "
       "\"--gdb\" --tool nel-help --tester nelgdb --tool \"nelkvui\" \"-w\""},
      {{"--keep-nothing", "--remote", "h:1", "--", "--gdb"},
       "nelmpm --charset UTF-8 --join-text --keep-buttons --restart-tester --tool \"nelgdb\" "
       "\"--remote\" \"h:1\" --tool nel-help --tester nelgdb --tool \"nelkvui\" \"--gdb\""},
      {{"--keep-nothing", "--gdb"},
       "nelmpm --charset UTF-8 --join-text --keep-buttons --restart-tester --tool \"nelgdb\" "
       "--tool nel-help --tester nelgdb --tool \"nelkvui\""},
  };
  for (const auto& [words, expected] : rows) {
    EXPECT_EQ(made(words), expected);
  }
  EXPECT_THAT(launcher::postmasterWords({}, ""), testing::Not(testing::Contains("--record")));
  const std::vector<std::string> odd = {"a b", "c\"\\'", ""};
  EXPECT_EQ(postmaster::splitCommand(launcher::quoteCommand(odd)).words, odd);
  for (const Words& wrong : {Words{"word"},
                             {"--no-such"},
                             {"--speed=2"},
                             {"--pid", "x"},
                             {"--tester", "t", "--gdb", "p"},
                             {"--replay", "r", "--core", "c"}}) {
    EXPECT_THAT(made(wrong), testing::MatchesRegex("2 korvane: [^\n]*; try korvane --help\n"));
  }
  EXPECT_EQ(launcher::stateFolderOf("/x", "/h"), "/x/korvane");
  EXPECT_EQ(launcher::stateFolderOf("x", "/h"), "/h/.local/state/korvane");
  EXPECT_EQ(launcher::stateFolderOf(nullptr, nullptr), "");
}

TEST(Launcher, NamesTheFileThatTheSessionCannotBeginWith) {
  const std::pair<std::vector<const char*>, const char*> rows[] = {
      {{"--core", "/dev/zero", "--cd", "/", "--command", "/etc/passwd", "--gdb", "/bin/sh"}, "^$"},
      {{"--replay", "/dev/null"}, "^$"},
      {{"--replay", "/etc/passwd"}, "^cannot replay /etc/passwd: "},
      {{"--core", "/no"}, "^cannot read /no: "},
      {{"--command", "/"}, "^/ is a folder"},
      {{"--cd", "/bin/sh"}, "^/bin/sh is no folder"},
      {{"--gdb", "/dev/zero"}, "^/dev/zero is no program"},
      {{"--gdb", "/etc/passwd"}, "^/etc/passwd is no program"}};
  for (const auto& [words, expected] : rows) {
    EXPECT_THAT(launcher::fileFault(*parsed(words).options), testing::ContainsRegex(expected));
  }
}

TEST(HelpPages, OpenInATerminalOrABrowserAsTheUserHasThem) {
  const auto viewer = [](const char* topic, const std::set<std::string>& programs,
                         const std::map<std::string, std::string>& variables = {},
                         const char* tester = "") {
    const auto find = [=](const std::string& name) {
      return programs.contains(name) ? std::optional("/bin/" + name) : std::nullopt;
    };
    const auto variable = [=](const std::string& name) {
      return variables.contains(name) ? variables.at(name) : "";
    };
    const auto exists = [](const std::string& file) {
      return file == "/man/man1/nelkvui.1" || file == "/man/man1/nelkv.1.gz" ||
             (file.starts_with("/doc/") && !file.ends_with(".gz"));
    };
    return joined(
        help::viewerOf(help::pageOf(topic, tester), {"/doc", "/man", exists, find, variable}));
  };
  EXPECT_EQ(viewer("tessil-testerui", {"xterm", "x-terminal-emulator"}),
            "/bin/x-terminal-emulator -e man /man/man1/nelkvui.1");
  EXPECT_EQ(viewer("tessil-tester", {"mine", "xterm"}, {{"PAGER", "most"}, {"TERMINAL", "mine"}}),
            "/bin/mine -e most /doc/first-ten-minutes.md");
  EXPECT_EQ(viewer("tessil-generator", {"xterm"}, {{"TERMINAL", "gone"}}),
            "/bin/xterm -e pager /doc/button-file.md");
  EXPECT_EQ(viewer("tessil-tester", {"fox", "xdg-open"}, {{"BROWSER", "fox"}}),
            "/bin/fox /doc/first-ten-minutes.md");
  EXPECT_EQ(viewer("tessil-tester", {"xterm"}, {{"PAGER", "most"}}, "nelgdb"),
            "/bin/xterm -e most /doc/gdb.md");
  EXPECT_EQ(viewer("tessil-tester-commands", {"xterm"}, {}, "another"),
            "/bin/xterm -e man /man/man1/nelkv.1.gz");
  EXPECT_EQ(viewer("tessil-tester-commands", {"xdg-open"}), "") << "no browser shows a manual page";
  EXPECT_EQ(help::whereIs(help::pageOf("unknown"), {"/doc", "", nullptr, nullptr, nullptr}),
            "< Help: man nelkvui >\n");
  EXPECT_EQ(
      help::whereIs(help::pageOf("tessil-generator"), {"/doc", "", nullptr, nullptr, nullptr}),
      "< Help: man nelkv.btn, or /doc/button-file.md >\n");
}

}  // namespace
