// The link as the program sees it: a Postmaster that is not there, refuses, sends rubbish, goes;
// and every road out of the program.

#include <csignal>

#include "link/port_control.h"
#include "tests/e2e/app/app_fixture.h"

namespace {

using testing::HasSubstr;

struct Ending {
  const char* name;
  void (*bring)(AppTest& test);
  std::vector<int> lastWords;
  const char* box = "";  ///< to be confirmed behind them
  const char* errors = "";
  int status = 0;
};

void PrintTo(const Ending& ending, std::ostream* out) {
  *out << ending.name;
}

void openBox(AppTest& test) {
  test.connect();
  test.postmaster.send(MSG_T_QUESTION, "Box", "text");
  test.user.awaitWindow("Box");
}

void openPrompt(AppTest& test) {
  test.connect();
  test.postmaster.send(MSG_T_FIND, 0, 1, Parameter::List{"beta"});
  test.user.awaitWindow(kPromptTitle);
}

void shutDown(AppTest& test) {
  test.postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
  test.postmaster.expect(MSG_SHUTDOWN_ACK);
  test.user.awaitWindow(kLostTitle);
  EXPECT_FALSE(test.postmaster.hasSocketName());
}

constexpr const char* kBroken = "NELKVUI:**ERR:Broken MPM connection.\n";

// Only who closes the window tells the tester: on its own word, by menu and by key nobody does.
const Ending kEndings[] = {
    {"Close",
     [](AppTest& t) { t.connect(), t.user.close(t.mainWindow); },
     {MSG_UI_EXIT, MSG_DISCONNECT}},
    {"CloseUnderABox",
     [](AppTest& t) { openBox(t), t.user.close(t.mainWindow); },
     {MSG_UI_EXIT, MSG_DISCONNECT}},
    {"Menu", [](AppTest& t) { t.connect(), t.choose(XK_f, XK_x); }, {MSG_DISCONNECT}},
    {"Key",
     [](AppTest& t) { t.connect(), t.user.press(XK_q, screen::kControl); },
     {MSG_DISCONNECT}},
    {"Tester", [](AppTest& t) { t.connect(), t.postmaster.send(MSG_T_EXIT); }, {MSG_DISCONNECT}},
    {"TesterInTheEnd",
     [](AppTest& t) { t.connect(), t.postmaster.send(MSG_T_EXIT_CONFIRM); },
     {MSG_DISCONNECT}},
    {"TesterUnderABox",
     [](AppTest& t) { openBox(t), t.postmaster.send(MSG_T_EXIT); },
     {MSG_DISCONNECT}},
    {"TesterUnderAPrompt",
     [](AppTest& t) { openPrompt(t), t.postmaster.send(MSG_T_EXIT); },
     {MSG_DISCONNECT}},
    {"TesterUnderAFileForm",
     [](AppTest& t) {
       t.connect();
       t.postmaster.send(MSG_T_ASK_FILE, "Log file", "/", "log", "Logs");
       t.user.awaitWindow("Log file");
       t.postmaster.send(MSG_T_EXIT);
     },
     {MSG_DISCONNECT}},
    {"CloseBeforeTheAnswer",
     [](AppTest& t) {
       t.start();
       t.postmaster.expectConnect();
       t.user.close(t.user.awaitWindow(kMainTitle));
     },
     {MSG_DISCONNECT}},
    {"Refusal",
     [](AppTest& t) {
       t.start();
       t.postmaster.expectConnect();
       t.postmaster.deny();
     },
     {},
     kRefusedTitle},
    {"Shutdown", [](AppTest& t) { openBox(t), shutDown(t); }, {}, kLostTitle},
    {"ShutdownNow",
     [](AppTest& t) { t.connect(), t.postmaster.send(MSG_SHUTDOWN_NOW); },
     {},
     "",
     "",
     154},
    {"Interrupt",
     [](AppTest& t) {
       t.connect();
       t.postmaster.tool().signal(SIGINT);
       t.user.awaitWindow(kLostTitle);
       t.postmaster.tool().signal(SIGINT);  // told once
     },
     {},
     kLostTitle,
     kBroken},
    {"DeadChild",
     [](AppTest& t) { t.connect(), t.postmaster.tool().signal(SIGCHLD); },
     {},
     kLostTitle,
     kBroken},
    {"LossUnderABoxAndClose",
     [](AppTest& t) {
       openBox(t);
       t.postmaster.tool().signal(SIGINT);
       t.user.awaitWindow(kLostTitle);
       t.user.close(t.mainWindow);
     },
     {},
     "",
     kBroken},
};

class Endings : public AppTest, public testing::WithParamInterface<Ending> {};

TEST_P(Endings, AreOrderly) {
  const Ending& ending = GetParam();
  ending.bring(*this);
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
  for (const std::string& texts : {noServer, noPort + noServer, portMissing + noPort + noServer}) {
    std::filesystem::remove(postmaster.socketName());
    if (texts != noServer) {
      std::ofstream(portFileName()) << "port 4711\n";
    }
    if (texts.starts_with(portMissing)) {
      std::filesystem::remove(portFileName());
    }
    start();
    ChildProcess& program = postmaster.tool();
    program.expectText("no connection to server !!\n");
    // Ends the wait for an answer at once, as the alarm would after its twenty seconds.
    program.signal(SIGINT);
    answer(kRefusedTitle);
    EXPECT_EQ(program.exitStatus(), 0);
    std::string expected = texts + kBroken;
    for (std::size_t at = expected.find('$'); at != std::string::npos; at = expected.find('$')) {
      expected.replace(at, 1, std::to_string(program.id()));
    }
    EXPECT_EQ(program.errors(), expected);
  }
}

class LostByASend : public AppTest, public testing::WithParamInterface<bool> {};

TEST_P(LostByASend, LinkIsToldInABox) {
  GetParam() ? openPrompt(*this) : connect();
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

TEST_F(AppTest, AssemblesFramesHoweverTheyAreCutAndIgnoresSignals) {
  connect();
  const std::string question = frame(MSG_T_ASK_LIST, std::string(16, '\0'));
  for (const std::size_t cut : {std::size_t{1}, std::size_t{40}, question.size() - 1}) {
    postmaster.sendFrameCutAt(cut, MSG_T_ASK_LIST, "", "", 0, Parameter::List{});
    postmaster.expect(MSG_UI_CANCEL);
  }
  postmaster.sendRaw(question + question + question.substr(0, 7));
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.sendRaw(question.substr(7));
  postmaster.expect(MSG_UI_CANCEL);
  // Many frames do not wait for a clock each. A second order to poll does no harm.
  std::string burst = frame(MSG_START_POLL_TIMER) + frame(MSG_START_POLL_TIMER);
  for (int i = 0; i < 3000; ++i) {
    burst += frame(MSG_T_TEXT, wireString("line\n"));
  }
  postmaster.sendRaw(burst + question);
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
  for (const std::string& bytes : {
           frame(MSG_T_TEXT, cut),
           frame(MSG_T_TEXT, wireWord(-1) + "text"),
           frame(MSG_T_TEXT, cut, 5000000),
           frame(MSG_T_TEXT, cut, -7),
           frame(MSG_T_ASK_BITS, cut + wireWord(-1)),
           frame(MSG_T_EXIT, "x"),
           frame(kUnknownTag, {}, 1 << 30),
       }) {
    postmaster.sendRaw(bytes);
    answer(kMainTitle);
    expectAnswer();
  }
  EXPECT_THAT(postmaster.tool().errors(), HasSubstr("**ERR:Message Decoder : Expected "));
  user.expectText(mainWindow, "texts");
}

TEST_F(AppTest, GoesOnAfterFramesThatAreNone) {
  connect();
  postmaster.sendRaw(
      std::string("\0"
                  "0\0"
                  "00000000?\0",
                  13));
  expectAnswer();
  const std::string name = "NELKVUI(PID=" + std::to_string(postmaster.tool().id()) +
                           ",TOOLID=2):**ERR:Message received "
                           "with illegal length information (len=";
  EXPECT_EQ(postmaster.tool().errors(), name + "0). NOT !!! Ignored.\n" + name +
                                            "0). NOT !!! Ignored.\n" + name +
                                            "4). NOT !!! Ignored.\n");
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
  command("still here");
}

TEST_F(AppTest, StopsReadingWhenItIsNotToldToPollAndNothingComes) {
  start();
  postmaster.expectConnect();
  postmaster.accept();
  postmaster.expect(MSG_TOOL_READY);
  mainWindow = user.awaitWindow(kMainTitle);
  awaitSleep();
  // Would end the program, if it were read.
  postmaster.send(MSG_T_EXIT);
  awaitCommandLine();
}

}  // namespace
