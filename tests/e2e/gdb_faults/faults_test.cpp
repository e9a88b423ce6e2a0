// Whatever GDB does: each command of the user's is answered by text and one confirmation, nothing
// that was written is lost, and the user is told what happened in a sentence.

#include <gmock/gmock.h>

#include <csignal>
#include <memory>
#include <sstream>

#include "tests/support/scripted_postmaster.h"

namespace {

constexpr int kCommand = MSG_UI_COMMAND;

/// What the user does, the message up to which he listens then, and parts of what he hears, in
/// their order and with "|" between them.
struct Step {
  int sent;  ///< 0: nothing
  std::vector<Parameter> parameters;
  int heard;  ///< 0: he does not listen yet
  std::string told = {};
};

class GdbFaults : public testing::Test {
 protected:
  ~GdbFaults() override { EXPECT_EQ(open.size(), 0) << open.front().text << " was not confirmed"; }

  void script(const std::string& lines) const { folder.write("script", lines); }

  /// Starts nelgdb on that GDB, with a user interface that is there already.
  void start(const std::string& lines,
             const std::filesystem::path& gdb = builtProgram("false_gdb")) {
    script(lines);
    postmaster.reset();
    postmaster = std::make_unique<ScriptedPostmaster>();
    postmaster->start({builtProgram("nelgdb"),
                       {"--gdb", gdb, "--pid", "7"},
                       {"NELGDB_TEST_SCRIPT=" + (folder / "script").string(),
                        "XDG_CONFIG_HOME=" + folder.path().string()}});
    postmaster->expectConnect();
    postmaster->send(MSG_CONNECT_OK, NELKV, 1, 1, 2, "scripted Postmaster");
    postmaster->expect(MSG_TOOL_READY);
    postmaster->send(MSG_START_POLL_TIMER);
  }

  void userLeaves() {
    postmaster->send(MSG_TOOL_LEFT, NELKVUI, 1, "its name");
    open.clear();
  }
  void userComes() {
    postmaster->sendRaw(wireText({kFrameUndirected, MSG_TOOL_READY, NELKVUI, 0, 0}));
  }

  void say(const ScriptTag& tag, const std::vector<Parameter>& parameters) {
    if (tag.tag == kCommand) {
      open.push_back({std::get<std::string>(parameters.at(0))});
    }
    postmaster->sendRaw(toWire({kFrameDirected, tag.tag, NELKVUI, NELKV, parameters}), tag.where);
  }

  /// The log's texts up to the next such message, and between them the other messages.
  std::string hear(const ScriptTag& tag) {
    std::string heard;
    for (const Message& message : postmaster->takeUntil(tag)) {
      if (message.tag == MSG_T_TEXT) {
        heard += message.text();
        for (Open& each : open) {
          each.hasText = true;
        }
      } else {
        heard += '<' + describe(message) + '>';
      }
      if (message.tag == MSG_T_PROMPT) {
        const auto confirmed = std::ranges::find(open, message.text(), &Open::text);
        EXPECT_TRUE(confirmed != open.end() && confirmed->hasText) << heard;
        open.erase(confirmed);
      }
    }
    return heard;
  }

  void play(const std::vector<Step>& steps) {
    for (const auto& [sent, parameters, heard, told] : steps) {
      SCOPED_TRACE(describe({0, sent, 0, 0, parameters}));
      if (sent != 0) {
        say(sent, parameters);
      }
      const std::string all = heard == 0 ? "" : hear(heard);
      std::istringstream parts(told);
      std::size_t at = 0;
      for (std::string part; std::getline(parts, part, '|');) {
        at = all.find(part, at);
        ASSERT_NE(at, std::string::npos) << '"' << part << "\" is not in:\n" << all;
        at += part.size();
      }
    }
  }

  struct Open {
    std::string text;
    bool hasText = false;
  };

  TemporaryFolder folder;
  std::unique_ptr<ScriptedPostmaster> postmaster;
  std::vector<Open> open;  ///< commands that are not confirmed yet
};

// What scripts say over and over.
constexpr char kAlive[] =
    "answer -list-thread-groups ^done,groups=[{id=\"i1\",pid=\"7\",executable=\"/x/prog\"}]\n";
constexpr char kRuns[] = R"(send mi ^running\n*running,thread-id=\"all\"\n(gdb) \n)"
                         "\n";

std::string stopsAt(int line) {
  return R"(send mi *stopped,frame={func=\"main\",file=\"m.c\",line=\")" + std::to_string(line) +
         R"(\"},thread-id=\"1\",stopped-threads=\"all\"\n)" + '\n';
}

TEST_F(GdbFaults, StopsAndPromptsComeInAnyOrder) {
  start(kAlive + std::string("expect console late\n") + kRuns + "send console one\\n%P\n" +
        stopsAt(1) + "expect console early\n" + kRuns + stopsAt(2) + "send console two\\n%P\n" +
        "expect console twice\n" + kRuns +
        R"(send mi *stopped\n*running,thread-id=\"all\"\n*stopped,frame={func=\"f\"}\n)" + "\n" +
        "send console three\\n%P\n" + "expect console kill\n" + kRuns +
        "answer -list-thread-groups ^done,groups=[{id=\"i1\",executable=\"/x/prog\"}]\n" +
        R"(send mi =thread-group-exited,id=\"i1\",exit-code=\"0106\"\n)" + "\nsend console %P\n");
  play({{kCommand, {"late"}, MSG_T_PROMPT, "(gdb) late\n|one\n|prog: stopped in main at m.c:1"},
        {kCommand, {"early"}, MSG_T_PROMPT, "(gdb) early\n|two\n|prog: stopped in main at m.c:2"},
        {kCommand, {" twice "}, MSG_T_PROMPT, "three\n|prog: stopped in f"},
        {kCommand, {"kill"}, MSG_T_PROMPT, "status 70.\n|\"prog\""},
        {kCommand, {""}, MSG_T_PROMPT, "(gdb) \n"}});
}

TEST_F(GdbFaults, WhatCannotBeReadIsToldAndHoldsNothingUp) {
  start(std::string(kAlive) + R"(expect console odd
send mi \n*stopped\n=unknown,a=\"1\"\n7777^done\n^done\n\000\377(gdb) \n*stopped,frame=\"f\"\n
send mi =thread-group-exited\n=breakpoint-created\n^\n*running,thread-id={}\n*stopped\n
send console %P
expect console noise
send console \000\377\036\03699\037\303( no end\0361
send console %P
expect console run
send mi *running,thread-id=\"all\"\n*running\n
send console done\n%P
)");
  play({{kCommand, {"odd"}, MSG_T_PROMPT, "(gdb) odd\n|cannot be read: .\xff(gdb) \n"},
        {kCommand, {"noise"}, MSG_T_PROMPT, "(gdb) noise\n|.\xff.\xc3( no end.1"},
        {kCommand, {"run"}, MSG_T_PROMPT, "done\n"},
        {kCommand, {"next"}, MSG_T_PROMPT, "Did next.\n"}});
}

TEST_F(GdbFaults, GdbEndsInEveryPhaseAndIsStartedAnew) {
  struct Row {
    const char* script;
    const char* end;
    std::vector<Step> steps = {};
  };
  const Step next{kCommand, {"next"}, 0};
  const Row rows[] = {
      {"die 3\n", "ended with status 3"},
      {"expect console next\nsend mi *stopped,fr\ndie 0\n", "ended with status 0", {next}},
      {"expect console next\nsend console %P\nexpect mi -list-thread-groups\n"
       "send mi %T^do\ndie 1\n",
       "ended with status 1",
       {next}},
      {"expect console next\nsend console Sure? (y or n) \nexpect console y\ndie 4\n",
       "ended with status 4",
       {{kCommand, {"next"}, MSG_T_QUESTION, "Sure?"}, {MSG_UI_OK, {}, 0}}},
      {"expect console next\nsend mi *running\\n\nexpect mi -exec-interrupt\ndie 5\n",
       "ended with status 5",
       {{kCommand, {"next"}, MSG_T_BUSY}, {kCommand, {"stop"}, 0}, {kCommand, {"bt"}, 0}}},
  };
  for (const auto& [lines, end, steps] : rows) {
    SCOPED_TRACE(lines);
    start(lines);
    play(steps);
    EXPECT_THAT(hear(MSG_T_QUESTION), testing::HasSubstr("GDB " + std::string(end) + ".\n"));
    script("die 1\n");
    play({{MSG_UI_OK, {}, MSG_T_QUESTION, "GDB ended with status 1"}});
    script("");
    say(MSG_UI_OK, {});
    say(kCommand, {"next"});
    // What was loaded once is not loaded again, apart from the program.
    const bool isLoaded = !steps.empty();
    EXPECT_EQ(hear(MSG_T_PROMPT).find("Did attach 7.") == std::string::npos, isLoaded);
  }
}

TEST_F(GdbFaults, QuestionsOfGdbAreAnsweredOrLeft) {
  start(R"(expect console delete
send console Delete all breakpoints? (y or n) 
expect console y
send console %P
expect console file x
send console Load new symbol table? (y or n) 
expect console n
send console Please answer y or n.\nLoad? (y or n) 
expect console y
send console Done\n%P
expect console break f
send console [0] cancel\n[1] all\n[2] m.c:f(int)\n> 
expect console 2
send console Breakpoint 1\n%P
expect console define x
send console Type commands.\n>
expect console silent
send console >
expect console end
send console %P
expect console delete
send console Delete? (y or n) 
expect interrupt
send console Quit\n%P
)");
  play(
      {{kCommand, {"delete"}, MSG_T_QUESTION, "\"Delete all breakpoints? \""},
       {MSG_UI_OK, {}, MSG_T_PROMPT, "y\n"},
       {kCommand, {"file x"}, MSG_T_QUESTION, "\"Load new symbol table? \""},
       {MSG_UI_NOT_OK, {}, MSG_T_QUESTION, "n\n|\"Please answer y or n.\\nLoad? \""},
       {MSG_UI_OK, {}, MSG_T_PROMPT, "y\nDone\n"},
       {kCommand, {"break f"}, MSG_T_ASK_LIST, "[\"[0] cancel\", \"[1] all\", \"[2] m.c:f(int)\"]"},
       {MSG_UI_LIST_CHOICE, {"[2] m.c:f(int)"}, MSG_T_PROMPT, "2\n|Breakpoint 1\n"},
       {kCommand, {"define x"}, MSG_T_ASK_STRING, "Type commands.\n"},
       {MSG_UI_STRING, {"silent"}, MSG_T_ASK_STRING, "silent\n"},
       {MSG_UI_STRING, {"end"}, MSG_T_PROMPT, "end\n"},
       {kCommand, {"delete"}, MSG_T_QUESTION, "\"Delete? \""}});
  userLeaves();
  userComes();
  hear(MSG_T_TITLE);
  play({{kCommand, {"next"}, MSG_T_PROMPT, "Did next.\n"}});
}

TEST_F(GdbFaults, ARunIsStoppedForTheNextCommand) {
  start(kAlive + std::string("expect console continue\n") + kRuns + R"(expect mi -exec-interrupt
send mi ^done\n(gdb) \n
)" + stopsAt(5) +
        "send console Interrupt.\\n%P\nexpect console continue&\n" + kRuns +
        "send console %P\nexpect mi -exec-interrupt\n" + stopsAt(6) +
        "expect console one\nexpect interrupt\nsend console %P\nexpect console two\n" + kRuns +
        "expect mi -exec-interrupt\n" + stopsAt(8) + "send console %P\nexpect console until\n" +
        kRuns + "expect mi -exec-interrupt\n" + stopsAt(7) + "send console %P\n");
  play({{kCommand, {"continue"}, MSG_T_BUSY},
        {0, {}, MSG_T_TITLE, ": running"},
        {kCommand, {"print 1"}, MSG_T_PROMPT, "(gdb) print 1\n|Interrupt.\n|m.c:5|\"continue\""},
        {0, {}, MSG_T_PROMPT, "Did print 1.\n"},
        {kCommand, {"continue&"}, MSG_T_PROMPT, ": running"},
        {kCommand, {"stop"}, MSG_T_PROMPT, "m.c:6"},
        // What waits is stopped as well, each in its turn.
        {kCommand, {"one"}, MSG_T_BUSY},
        {kCommand, {"two"}, 0},
        {kCommand, {"stop"}, MSG_T_PROMPT, "\"one\""},
        {0, {}, MSG_T_PROMPT, "m.c:8|\"two\""},
        {0, {}, MSG_T_PROMPT, "\"stop\""},
        {kCommand, {"until"}, MSG_T_BUSY}});
  userLeaves();
  userComes();
  play({{0, {}, MSG_T_TITLE}, {kCommand, {"next"}, MSG_T_PROMPT, "Did next.\n"}});
}

TEST_F(GdbFaults, AFloodIsShownAsFarAsTheUserWants) {
  start(R"(expect console lines
flood console 20000 a line of text\n
send console %P
expect console endless
flood console 100000 endless
send console %P
expect console few
flood console 1000 another line\n
send console %P
)");
  play({{kCommand, {"lines"}, MSG_T_QUESTION, "a line of text\n"}});
  say(MSG_UI_OK, {});
  const std::string all = hear(MSG_T_PROMPT);
  EXPECT_EQ(std::ranges::count(all, '\n'), 20000 - 200);
  say(kCommand, {"endless"});
  EXPECT_GE(hear(MSG_T_PROMPT).size(), 700000);
  play({{kCommand, {"few"}, MSG_T_QUESTION, "another line\n"},
        {MSG_UI_NOT_OK, {}, MSG_T_PROMPT, "Stopped; the rest is not shown.\n"}});
}

TEST_F(GdbFaults, AGdbThatIsNoneIsNamed) {
  start("", folder / "no such");
  hear(MSG_T_ERROR_BOX);
  // Nobody has read it.
  userLeaves();
  userComes();
  play({{0, {}, MSG_T_ERROR_BOX, "no such is no program that can"},
        {MSG_UI_ACK, {}, 0},
        {kCommand, {"next"}, MSG_T_PROMPT, "GDB is not running.\n"},
        {0, {}, MSG_T_QUESTION, "Start it anew?"}});
  start("old\n");
  play({{0, {}, MSG_T_ERROR_BOX, "too old"}, {MSG_UI_ACK, {}, MSG_T_QUESTION, "Start it anew?"}});
  say(MSG_UI_NOT_OK, {});
  play({{kCommand, {"bt"}, MSG_T_PROMPT, "GDB is not running.\n"}});
}

TEST_F(GdbFaults, AHangOfARunIsEndedWhenTheUserSaysSo) {
  start("expect console next\n" + std::string(kRuns) + "hang\n");
  play({{kCommand, {"next"}, MSG_T_BUSY},
        {kCommand, {"stop"}, MSG_T_QUESTION, "GDB does not answer."},
        {MSG_UI_OK, {}, MSG_T_PROMPT, "GDB was killed by signal 9.\n"},
        {0, {}, MSG_T_PROMPT}});
}

TEST_F(GdbFaults, AHangIsNoHindranceToARestart) {
  start("expect mi -gdb-exit\nhang\n");
  play({{kCommand, {"next"}, MSG_T_PROMPT, "Did next.\n"}});
  say(kCommand, {"restart-gdb"});
  script("");
  play({{0, {}, MSG_T_PROMPT}, {kCommand, {"next"}, MSG_T_PROMPT, "Did next.\n"}});
  script("old\n");
  play({{kCommand, {"restart-gdb"}, MSG_T_ERROR_BOX, "too old"}, {MSG_UI_ACK, {}, MSG_T_QUESTION}});
  script("");
  play({{MSG_UI_OK, {}, 0}, {kCommand, {"next"}, MSG_T_PROMPT, "Did next.\n"}});
}

TEST_F(GdbFaults, AHangBeforeACommandIsTold) {
  start("expect console attach\nsend console %P\nexpect mi -gdb-set prompt\nhang\n");
  play({{kCommand, {"next"}, MSG_T_QUESTION, "GDB does not answer."},
        {MSG_UI_OK, {}, MSG_T_PROMPT, "GDB was killed by signal 9.\n"}});
}

TEST_F(GdbFaults, NoGdbIsLeftWhenTheLinkEnds) {
  for (const char* lines : {"", "hang\n"}) {
    start("expect console next\nsend console [%I]? (y or n) \n" + std::string(lines));
    say(kCommand, {"next"});
    const std::string heard = hear(MSG_T_QUESTION);
    const pid_t gdb = std::stoi(heard.substr(heard.find('[') + 1));
    postmaster->hangUp();
    EXPECT_EQ(postmaster->exitStatus(), 0);
    EXPECT_EQ(::kill(gdb, 0), -1) << "GDB lives on";
    open.clear();
  }
}

}  // namespace
