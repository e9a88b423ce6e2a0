// The link as the program sees it: a Postmaster that is not there, refuses, sends rubbish, goes;
// and every road out of the program.

#include <csignal>
#include <regex>

#include "link/port_control.h"
#include "tests/e2e/app/app_fixture.h"

namespace {

using namespace std::string_literals;

/// A frame as bytes, with a payload that need not fit its tag.
std::string frame(int tag, std::string_view payload, int announced) {
  return wireText({kFrameDirected, tag, NELKV, NELKVUI, announced}, payload);
}
std::string frame(int tag, std::string_view payload = {}) {
  return frame(tag, payload, static_cast<int>(payload.size()));
}

/// Something that happens to the program.
using Scene = void(AppTest& test);

void isConnecting(AppTest& test) {
  test.start();
  test.postmaster.expectConnect();
  test.mainWindow = test.user.awaitWindow(kMainTitle);
}
void isInUse(AppTest& test) {
  test.connect();
}
template <int tag, typename... Values>
void asks(AppTest& test, const char* title, Values... parameters) {
  test.connect();
  test.postmaster.send(tag, parameters...);
  test.user.awaitWindow(title);
}
void showsABox(AppTest& test) {
  asks<MSG_T_QUESTION>(test, "Box", "Box", "text");
}
void showsAPrompt(AppTest& test) {
  asks<MSG_T_FIND>(test, kPromptTitle, 0, 1, Parameter::List{"beta"});
}
void showsAFileForm(AppTest& test) {
  asks<MSG_T_ASK_FILE>(test, "Log file", "Log file", "/", "log", "Logs");
}

void isClosed(AppTest& test) {
  test.user.close(test.mainWindow);
}
void isLeftByMenu(AppTest& test) {
  test.choose(XK_f, XK_x);
}
void isLeftByKey(AppTest& test) {
  test.user.press(XK_q, screen::kControl);
}
template <int tag>
void hears(AppTest& test) {
  test.postmaster.send(tag);
}
void isDenied(AppTest& test) {
  test.postmaster.deny();
}
void isShutDown(AppTest& test) {
  test.postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
  test.postmaster.expect(MSG_SHUTDOWN_ACK);
  test.user.awaitWindow(kLostTitle);
  EXPECT_FALSE(test.postmaster.hasSocketName());
}
template <int signal>
void gets(AppTest& test) {
  test.postmaster.tool().signal(signal);
  test.user.awaitWindow(kLostTitle);
  test.postmaster.tool().signal(signal);  // told once
}
void losesTheLinkAndIsClosed(AppTest& test) {
  gets<SIGINT>(test);
  isClosed(test);
}

constexpr const char* kBroken = "NELKVUI:**ERR:Broken MPM connection.\n";

struct Ending {
  const char* name;
  Scene* before;
  Scene* cause;
  std::vector<int> lastWords;
  const char* box = "";  ///< to be confirmed behind them
  const char* errors = "";
  int status = 0;
};

void PrintTo(const Ending& ending, std::ostream* out) {
  *out << ending.name;
}

// Only who closes the window tells the tester: on its own word, by menu and by key nobody does.
const Ending kEndings[] = {
    {"Close", isInUse, isClosed, {MSG_UI_EXIT, MSG_DISCONNECT}},
    {"CloseUnderABox", showsABox, isClosed, {MSG_UI_EXIT, MSG_DISCONNECT}},
    {"Menu", isInUse, isLeftByMenu, {MSG_DISCONNECT}},
    {"Key", isInUse, isLeftByKey, {MSG_DISCONNECT}},
    {"Tester", isInUse, hears<MSG_T_EXIT>, {MSG_DISCONNECT}},
    {"TesterInTheEnd", isInUse, hears<MSG_T_EXIT_CONFIRM>, {MSG_DISCONNECT}},
    {"TesterUnderABox", showsABox, hears<MSG_T_EXIT>, {MSG_DISCONNECT}},
    {"TesterUnderAPrompt", showsAPrompt, hears<MSG_T_EXIT>, {MSG_DISCONNECT}},
    {"TesterUnderAFileForm", showsAFileForm, hears<MSG_T_EXIT>, {MSG_DISCONNECT}},
    {"CloseBeforeTheAnswer", isConnecting, isClosed, {MSG_DISCONNECT}},
    {"Refusal", isConnecting, isDenied, {}, kRefusedTitle},
    {"Shutdown", showsABox, isShutDown, {}, kLostTitle},
    {"ShutdownNow", isInUse, hears<MSG_SHUTDOWN_NOW>, {}, "", "", 154},
    {"Interrupt", isInUse, gets<SIGINT>, {}, kLostTitle, kBroken},
    {"DeadChild", isInUse, gets<SIGCHLD>, {}, kLostTitle, kBroken},
    {"LossUnderABoxAndClose", showsABox, losesTheLinkAndIsClosed, {}, "", kBroken},
};

class Endings : public AppTest, public testing::WithParamInterface<Ending> {};

TEST_P(Endings, AreOrderly) {
  const Ending& ending = GetParam();
  ending.before(*this);
  ending.cause(*this);
  for (const int tag : ending.lastWords) {
    postmaster.expect(tag);
  }
  if (*ending.box != '\0') {
    answer(ending.box);
  }
  expectEnd(ending.status);
  EXPECT_EQ(postmaster.tool().errors(), ending.errors);
  EXPECT_EQ(postmaster.hasSocketName(), ending.status != 0);
}

INSTANTIATE_TEST_SUITE_P(AppTest, Endings, testing::ValuesIn(kEndings),
                         [](const auto& ending) { return ending.param.name; });

TEST_F(AppTest, TellsStepByStepThatThePostmasterCannotBeReachedAndThenInABox) {
  const std::string noPort =
      "**ERR: PortControlClient::GetPortNumberClient:Clients portnumber not found!!\n"
      "PROCESS($):**ERR: Cannot connect with Tessil Postmaster (no free port available).\n";
  const std::string noServer =
      "PROCESS(PID=$):**ERR: When trying to connect to Tessil Postmaster (SockOpenCl)-Errno=2 No "
      "such file or directory\n"
      "PROCESS($):**ERR: When trying to open connection - no connection to server !!\n";
  const std::string portMissing =
      "PROCESS(PID=$):**ERR:Cannot connect to Tessil Postmaster due to missing port. File " +
      portFileName() + "\n";
  // From the last step of the way to the first one.
  const std::string fromPort = noPort + noServer;
  for (const std::string& texts : {noServer, fromPort, portMissing + fromPort}) {
    std::filesystem::remove(postmaster.socketName());
    if (texts.starts_with(noPort)) {
      std::ofstream(portFileName()) << "port 4711\n";
    } else if (texts.starts_with(portMissing)) {
      std::filesystem::remove(portFileName());
    }
    start();
    ChildProcess& program = postmaster.tool();
    program.expectText("no connection to server !!\n");
    // Ends the wait for an answer at once, as the alarm would after its twenty seconds.
    program.signal(SIGINT);
    answer(kRefusedTitle);
    EXPECT_EQ(program.exitStatus(), 0);
    const std::regex ownNumber("\\b" + std::to_string(program.id()) + "\\b");
    EXPECT_EQ(std::regex_replace(program.errors(), ownNumber, "$$"), texts + kBroken);
  }
}

class LostByASend : public AppTest, public testing::WithParamInterface<bool> {};

TEST_P(LostByASend, LinkIsToldInABox) {
  GetParam() ? showsAPrompt(*this) : connect();
  postmaster.hangUp();
  awaitSleep();
  // The command, or the cancelled question, finds nobody.
  GetParam() ? user.press(XK_Escape) : user.type("go\n");
  answer(kLostTitle);
  EXPECT_EQ(postmaster.exitStatus(), 0);
  EXPECT_EQ(postmaster.tool().errors(), "PROCESS:" + std::to_string(postmaster.tool().id()) +
                                            ":No connection to Tessil Postmaster. Continuing.\n" +
                                            kBroken);
}

INSTANTIATE_TEST_SUITE_P(AppTest, LostByASend, testing::Bool());

TEST_F(AppTest, AssemblesFramesAndIgnoresSignals) {
  connect();
  const std::string question = frame(MSG_T_ASK_LIST, std::string(16, '\0'));
  postmaster.sendRaw(question + question.substr(0, 7));
  postmaster.expect(MSG_UI_CANCEL);
  // Many frames do not wait for a clock each. A second order to poll does no harm.
  std::string burst = question.substr(7) + frame(MSG_START_POLL_TIMER);
  for (int i = 0; i < 3000; ++i) {
    burst += frame(MSG_T_TEXT, wireString("line\n"));
  }
  postmaster.sendRaw(burst + question);
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.expect(MSG_UI_CANCEL);
  for (const int number : {SIGTERM, SIGHUP, SIGQUIT, SIGTERM, SIGHUP, SIGQUIT}) {
    postmaster.tool().signal(number);
    expectAnswer();
  }
}

TEST_F(AppTest, TellsAMessageThatCannotBeDecodedInABoxAndGoesOn) {
  connect();
  constexpr int kUnknownTag = 4711;
  postmaster.sendRaw(frame(MSG_T_TEXT, wireString("texts")));  // sound
  const std::string cut = wireWord(5) + "text";
  for (const std::string& bytes :
       {frame(MSG_T_TEXT, cut), frame(MSG_T_TEXT, wireWord(-1) + "text"),
        frame(MSG_T_TEXT, cut, 5000000), frame(MSG_T_TEXT, cut, -7), frame(MSG_T_EXIT, "x"),
        frame(MSG_T_ASK_BITS, cut + wireWord(-1)), frame(kUnknownTag, {}, 1 << 30)}) {
    postmaster.sendRaw(bytes);
    answer(kMainTitle);
    expectAnswer();
  }
  EXPECT_THAT(postmaster.tool().errors(), testing::HasSubstr("**ERR:Message Decoder : Expected "));
  user.expectText(mainWindow, "texts");
}

TEST_F(AppTest, GoesOnAfterFramesThatAreNone) {
  connect();
  postmaster.sendRaw("\0"s + "0\0"s + "00000000?\0"s);
  expectAnswer();
  postmaster.tool().expectText("illegal length information (len=4). NOT !!! Ignored.\n");
  postmaster.sendRaw(std::string("\xFF\x01 zzz~~\n\t") + std::string(60, '\x7F') + '\0');
  answer(kMainTitle);
  // Messages of other tools that nothing is done on.
  postmaster.send(MSG_TOOL_LEFT, 1, 2, "NELKV");
  postmaster.sendRaw(frame(MSG_TOOL_STARTED) + frame(MSG_TOOL_READY) + frame(MSG_TOOL_ACTIVE, "x"));
  postmaster.send(MSG_LINK_IDENT, std::string(5000, 'i'));
  expectAnswer();
  // It never gets past a frame that is too long but stays usable.
  postmaster.sendRaw(std::string(40000, '0') + '\0');
  postmaster.tool().expectText("INTERNAL ERROR:Buffersize problem. Continuing.\n");
  postmaster.send(MSG_T_EXIT);
  awaitCommandLine();
}

TEST_F(AppTest, StopsReadingWhenItIsNotToldToPollAndNothingComes) {
  isConnecting(*this);
  postmaster.accept();
  postmaster.expect(MSG_TOOL_READY);
  awaitSleep();
  // Would end the program, if it were read.
  postmaster.send(MSG_T_EXIT);
  awaitCommandLine();
}

}  // namespace
