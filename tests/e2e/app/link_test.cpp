// The link as the program sees it: a Postmaster that is not there, refuses, sends rubbish, goes.

#include <csignal>
#include <fstream>

#include "link/port_control.h"
#include "tests/e2e/app/app_fixture.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// What stands in the way of a connection, and what the program says of it before it waits.
struct Obstacle {
  const char* name;
  std::function<void(const std::string& socketName)> build;
  const char* texts;
};

void PrintTo(const Obstacle& obstacle, std::ostream* out) {
  *out << obstacle.name;
}

constexpr char kPortMissing[] =
    "PROCESS(PID=$):**ERR:Cannot connect to Tessil Postmaster due to missing port. File @\n";
constexpr char kNoPort[] =
    "**ERR: PortControlClient::GetPortNumberClient:Clients portnumber not found!!\n"
    "PROCESS($):**ERR: Cannot connect with Tessil Postmaster (no free port available).\n";
constexpr char kNoServer[] =
    "PROCESS(PID=$):**ERR: When trying to connect to Tessil Postmaster (SockOpenCl)-Errno=2 No "
    "such file or directory\n"
    "PROCESS($):**ERR: When trying to open connection - no connection to server !!\n";
const std::string kMissingFileTexts = std::string(kPortMissing) + kNoPort + kNoServer;
const std::string kGarbledFileTexts = std::string(kNoPort) + kNoServer;

std::string withProcessId(std::string text, pid_t process) {
  if (const std::size_t at = text.find('@'); at != std::string::npos) {
    text.replace(at, 1, portFileName());
  }
  for (std::size_t at = text.find('$'); at != std::string::npos; at = text.find('$')) {
    text.replace(at, 1, std::to_string(process));
  }
  return text;
}

class Unreachable : public AppTest, public testing::WithParamInterface<Obstacle> {};

TEST_P(Unreachable, PostmasterIsToldStepByStepAndThenInABox) {
  GetParam().build(postmaster.socketName());
  start();
  ChildProcess& program = postmaster.tool();
  program.expectText("no connection to server !!\n");
  // Ends the wait for an answer at once, as the alarm would after its twenty seconds.
  program.signal(SIGINT);
  confirm(kRefusedTitle);
  EXPECT_EQ(program.exitStatus(), 0);
  EXPECT_EQ(program.errors(), withProcessId(GetParam().texts, program.id()) +
                                  "NELKVUI:**ERR:Broken MPM connection.\n");
}

INSTANTIATE_TEST_SUITE_P(
    AppTest, Unreachable,
    testing::Values(
        Obstacle{"missing port file", [](const std::string&) { ::unlink(portFileName().c_str()); },
                 kMissingFileTexts.c_str()},
        Obstacle{"garbled port file",
                 [](const std::string&) { std::ofstream(portFileName()) << "port 4711\n"; },
                 kGarbledFileTexts.c_str()},
        Obstacle{"nobody listens", [](const std::string& name) { ::unlink(name.c_str()); },
                 kNoServer}));

TEST_F(AppTest, CanBeClosedWhileThePostmasterIsSilent) {
  start();
  postmaster.expectConnect();
  user.close(user.awaitWindow(kMainTitle));
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(postmaster.tool().errors(), "");
}

TEST_F(AppTest, TellsARefusalInABoxAndEnds) {
  start();
  postmaster.expectConnect();
  postmaster.deny();
  confirm(kRefusedTitle);
  expectEnd();
  EXPECT_FALSE(postmaster.hasSocketName());
  EXPECT_EQ(postmaster.tool().errors(), "");
}

TEST_F(AppTest, AssemblesFramesHoweverTheyAreCut) {
  connect();
  const std::size_t length = frame(MSG_T_ASK_LIST, std::string(16, '\0')).size();
  for (const std::size_t cut : {std::size_t{1}, std::size_t{40}, length - 1}) {
    postmaster.sendFrameCutAt(cut, MSG_T_ASK_LIST, "", "", 0, Parameter::List{});
    postmaster.expect(MSG_UI_CANCEL);
  }
  const std::string question = frame(MSG_T_ASK_LIST, std::string(16, '\0'));
  std::string burst;
  for (int i = 0; i < 3; ++i) {
    burst += question;
  }
  postmaster.sendRaw(burst + question.substr(0, 7));
  for (int i = 0; i < 3; ++i) {
    postmaster.expect(MSG_UI_CANCEL);
  }
  postmaster.sendRaw(question.substr(7));
  postmaster.expect(MSG_UI_CANCEL);
  // Many frames do not wait for a clock each.
  burst.clear();
  for (int i = 0; i < 3000; ++i) {
    burst += frame(MSG_T_TEXT, std::string("\x05\0\0\0line\n", 9));
  }
  postmaster.sendRaw(burst + question);
  postmaster.expect(MSG_UI_CANCEL);
}

TEST_F(AppTest, TellsAMessageThatCannotBeDecodedInABoxAndGoesOn) {
  connect();
  constexpr int kUnknownTag = 4711;
  const std::string word("\x05\0\0\0", 4);
  const std::string negative("\xFF\xFF\xFF\xFF", 4);
  postmaster.sendRaw(frame(MSG_T_TEXT, word + "texts"));  // sound
  const std::string cut = word + "text";
  for (const std::string& bytes : {
           frame(MSG_T_TEXT, cut),
           frame(MSG_T_TEXT, negative + "text"),
           frame(MSG_T_TEXT, cut, 5000000),
           frame(MSG_T_TEXT, cut, 9),
           frame(MSG_T_TEXT, cut, -7),
           frame(MSG_T_ASK_BITS, cut + negative),
           frame(MSG_T_EXIT, "x"),
           frame(kUnknownTag, "x"),
           frame(kUnknownTag, {}, 1 << 30),
       }) {
    postmaster.sendRaw(bytes);
    confirm(kMainTitle);
    expectAnswer();
  }
  EXPECT_THAT(postmaster.tool().errors(), HasSubstr("**ERR:Message Decoder : Expected "));
  user.expectText(mainWindow, "texts");
}

TEST_F(AppTest, GoesOnAfterFramesThatAreNone) {
  connect();
  postmaster.sendRaw(std::string("\0", 1));
  postmaster.sendRaw(std::string("0\0", 2));
  postmaster.sendRaw(std::string("00000000?\0", 10));
  expectAnswer();
  const std::string name = "NELKVUI(PID=" + std::to_string(postmaster.tool().id()) +
                           ",TOOLID=2):**ERR:Message received "
                           "with illegal length information (len=";
  EXPECT_EQ(postmaster.tool().errors(), name + "0). NOT !!! Ignored.\n" + name +
                                            "0). NOT !!! Ignored.\n" + name +
                                            "4). NOT !!! Ignored.\n");
  postmaster.sendRaw(std::string("\xFF\x01 zzz~~\n\t") + std::string(60, '\x7F') + '\0');
  confirm(kMainTitle);
  // Messages of other tools that nothing is done on.
  postmaster.send(MSG_TOOL_LEFT, 1, 2, "NELKV");
  postmaster.sendRaw(frame(MSG_TOOL_STARTED) + frame(MSG_TOOL_READY) + frame(MSG_TOOL_ACTIVE, "x"));
  postmaster.send(MSG_LINK_IDENT, std::string(5000, 'i'));
  expectAnswer();
}

TEST_F(AppTest, NeverGetsPastAFrameThatIsTooLongButStaysUsable) {
  connect();
  postmaster.sendRaw(std::string(40000, '0') + '\0');
  postmaster.tool().expectText("INTERNAL ERROR:Buffersize problem. Continuing.\n");
  postmaster.send(MSG_T_EXIT);
  user.type("still here\n");
  postmaster.expect(MSG_UI_COMMAND, "still here");
  closeAndExpectEnd();
}

/// Whether the process has slept at each of many looks in a row.
bool sleeps(pid_t process) {
  constexpr int kLooks = 30;
  for (int look = 0; look < kLooks; ++look) {
    const std::string status = readFile("/proc/" + std::to_string(process) + "/stat");
    if (status.find(") S") == std::string::npos) {
      return false;
    }
    ::usleep(5000);
  }
  return true;
}

void awaitSleep(pid_t process) {
  const Deadline deadline(kAnswerTime);
  bool isAsleep = sleeps(process);
  while (!isAsleep && !deadline.hasPassed()) {
    isAsleep = sleeps(process);
  }
  EXPECT_TRUE(isAsleep);
}

TEST_F(AppTest, NoticesADeadPostmasterByTheNextCommand) {
  connect();
  postmaster.hangUp();
  awaitSleep(postmaster.tool().id());
  user.type("go\n");
  confirm(kLostTitle);
  EXPECT_EQ(postmaster.exitStatus(), 0);
  const std::string process = std::to_string(postmaster.tool().id());
  EXPECT_EQ(postmaster.tool().errors(), "PROCESS:" + process +
                                            ":No connection to Tessil Postmaster. Continuing.\n" +
                                            "NELKVUI:**ERR:Broken MPM connection.\n");
}

class LostBySignal : public AppTest, public testing::WithParamInterface<int> {};

TEST_P(LostBySignal, LinkIsToldInABoxOnceAndEndsTheProgram) {
  connect();
  postmaster.tool().signal(GetParam());
  user.awaitWindow(kLostTitle);
  postmaster.tool().signal(GetParam());
  confirm(kLostTitle);
  expectEnd();
  EXPECT_EQ(postmaster.tool().errors(), "NELKVUI:**ERR:Broken MPM connection.\n");
  EXPECT_FALSE(postmaster.hasSocketName());
}

INSTANTIATE_TEST_SUITE_P(AppTest, LostBySignal, testing::Values(SIGINT, SIGCHLD));

TEST_F(AppTest, IgnoresTheSignalsThatAskForItsEnd) {
  connect();
  for (const int number : {SIGTERM, SIGHUP, SIGQUIT, SIGTERM, SIGHUP, SIGQUIT}) {
    postmaster.tool().signal(number);
    expectAnswer();
  }
}

TEST_F(AppTest, TellsTheLossOfTheLinkOverABoxAndEndsWithTheWindowToo) {
  connect();
  postmaster.send(MSG_T_ERROR_BOX, "Error", "text");
  user.awaitWindow("Error");
  postmaster.tool().signal(SIGINT);
  user.awaitWindow(kLostTitle);
  user.close(mainWindow);
  expectEnd();
}

TEST_F(AppTest, AcknowledgesAShutdownAndEndsBehindABox) {
  connect();
  postmaster.send(MSG_T_ERROR_BOX, "Error", "text");
  user.awaitWindow("Error");
  postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
  postmaster.expect(MSG_SHUTDOWN_ACK);
  user.awaitWindow(kLostTitle);
  EXPECT_FALSE(postmaster.hasSocketName());
  confirm(kLostTitle);
  expectEnd();
}

TEST_F(AppTest, EndsAtOnceOnAnImmediateShutdown) {
  connect();
  postmaster.send(MSG_SHUTDOWN_NOW);
  constexpr int kShutdownNowStatus = 154;
  expectEnd(kShutdownNowStatus);
}

TEST_F(AppTest, StopsReadingWhenItIsNotToldToPollAndNothingComes) {
  start();
  postmaster.expectConnect();
  postmaster.accept();
  postmaster.expect(MSG_TOOL_READY);
  mainWindow = user.awaitWindow(kMainTitle);
  awaitSleep(postmaster.tool().id());
  // Would end the program, if it were read.
  postmaster.send(MSG_T_EXIT);
  awaitCommandLine();
  closeAndExpectEnd();
}

TEST_F(AppTest, ASecondOrderToPollDoesNoHarm) {
  connect();
  postmaster.send(MSG_START_POLL_TIMER);
  postmaster.send(MSG_START_POLL_TIMER);
  expectAnswer();
  postmaster.send(MSG_T_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
}

}  // namespace
