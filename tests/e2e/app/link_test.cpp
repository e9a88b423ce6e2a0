// The link as the program sees it: a Postmaster that is not there, refuses, sends rubbish, goes;
// and every road out of the program.

#include <csignal>

#include "tests/e2e/app/app_fixture.h"

namespace {

constexpr const char* kRefusedTitle = "Korvane UI: INFO";
constexpr const char* kBroken = "NELKVUI:**ERR:Broken MPM connection.\n";

/// Scenes before the end and causes of it.
class Scenes : public AppTest {
 public:
  void isConnecting() {
    start();
    postmaster.expectConnect();
    mainWindow = user.awaitWindow(kMainTitle);
  }
  void isInUse() { connect(); }
  void showsABox() { asks(MSG_T_QUESTION, "Box", "Box", "text"); }
  void showsAPrompt() { asks(MSG_T_FIND, kPromptTitle, 0, 1, Parameter::List{"beta"}); }
  void showsAFileForm() { asks(MSG_T_ASK_FILE, "Log file", "Log file", "/", "log", "Logs"); }

  void isClosed() { user.close(mainWindow); }
  void isLeftByMenu() { choose(XK_f, XK_x); }
  void hearsExit() { postmaster.send(MSG_T_EXIT); }
  void hearsExitConfirm() { postmaster.send(MSG_T_EXIT_CONFIRM); }
  void isDenied() { postmaster.deny(); }
  void isShutDown() {
    postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
    postmaster.expect(MSG_SHUTDOWN_ACK);
    user.awaitWindow(kLostTitle);
  }
  void losesTheLink() {
    postmaster.tool().signal(SIGINT);
    user.awaitWindow(kLostTitle);
    postmaster.tool().signal(SIGINT);  // told once
  }
  void losesTheLinkAndIsClosed() {
    losesTheLink();
    isClosed();
  }

 private:
  template <typename... Values>
  void asks(int tag, const char* title, Values... parameters) {
    connect();
    postmaster.send(tag, parameters...);
    user.awaitWindow(title);
  }
};

struct Ending {
  const char* name;
  void (Scenes::*before)();
  void (Scenes::*cause)();
  std::vector<int> lastWords;
  const char* box = "";  ///< to be confirmed behind them
  const char* errors = "";
};

void PrintTo(const Ending& ending, std::ostream* out) {
  *out << ending.name;
}

// Only who closes the window tells the tester: on its own word and by menu nobody does.
using S = Scenes;
const Ending kEndings[] = {
    {"Close", &S::isInUse, &S::isClosed, {MSG_UI_EXIT, MSG_DISCONNECT}},
    {"CloseUnderABox", &S::showsABox, &S::isClosed, {MSG_UI_EXIT, MSG_DISCONNECT}},
    {"CloseBeforeTheAnswer", &S::isConnecting, &S::isClosed, {MSG_DISCONNECT}},
    {"Menu", &S::isInUse, &S::isLeftByMenu, {MSG_DISCONNECT}},
    {"TesterInTheEnd", &S::isInUse, &S::hearsExitConfirm, {MSG_DISCONNECT}},
    {"TesterUnderABox", &S::showsABox, &S::hearsExit, {MSG_DISCONNECT}},
    {"TesterUnderAPrompt", &S::showsAPrompt, &S::hearsExit, {MSG_DISCONNECT}},
    {"TesterUnderAFileForm", &S::showsAFileForm, &S::hearsExit, {MSG_DISCONNECT}},
    {"Refusal", &S::isConnecting, &S::isDenied, {}, kRefusedTitle},
    {"Shutdown", &S::showsABox, &S::isShutDown, {}, kLostTitle},
    {"Loss", &S::isInUse, &S::losesTheLink, {}, kLostTitle, kBroken},
    {"LossUnderABox", &S::showsABox, &S::losesTheLinkAndIsClosed, {}, "", kBroken},
};

class Endings : public Scenes, public testing::WithParamInterface<Ending> {};

TEST_P(Endings, AreOrderly) {
  const Ending& ending = GetParam();
  (this->*ending.before)();
  (this->*ending.cause)();
  for (const int tag : ending.lastWords) {
    postmaster.expect(tag);
  }
  if (*ending.box != '\0') {
    answer(ending.box);
  }
  expectEnd();
  EXPECT_EQ(postmaster.tool().errors(), ending.errors);
  EXPECT_FALSE(postmaster.hasSocketName());
}

INSTANTIATE_TEST_SUITE_P(AppTest, Endings, testing::ValuesIn(kEndings),
                         [](const auto& ending) { return ending.param.name; });

TEST_F(Scenes, EndInABoxWhereThereIsNoPostmasterOrASendFindsItGone) {
  showsAPrompt();
  postmaster.hangUp();
  awaitSleep();
  user.press(XK_Escape);  // the cancelled question
  answer(kLostTitle);
  EXPECT_EQ(postmaster.exitStatus(), 0);
  EXPECT_THAT(postmaster.tool().errors(), testing::EndsWith(kBroken));
  start();
  postmaster.tool().expectText("no connection to server !!\n");
  // Ends the wait for an answer at once, as the alarm would after its twenty seconds.
  postmaster.tool().signal(SIGINT);
  answer(kRefusedTitle);
  EXPECT_EQ(postmaster.exitStatus(), 0);
}

TEST_F(AppTest, GoesOnAfterFramesAndMessagesThatAreNone) {
  connect();
  const auto send = [this](int tag, std::string_view payload, int announced) {
    postmaster.sendRaw(wireText({kFrameDirected, tag, NELKV, NELKVUI, announced}, payload));
  };
  send(4711, wireWord(-1) + "text", 1 << 30);
  answer(kMainTitle);
  postmaster.sendRaw(std::string("\0", 1) + "00000000?" + '\0');
  // Messages of other tools that nothing is done on.
  postmaster.send(MSG_TOOL_LEFT, 1, 2, "NELKV");
  send(MSG_TOOL_ACTIVE, "x", 1);
  postmaster.send(MSG_LINK_IDENT, std::string(5000, 'i'));
  expectAnswer();
  // It never gets past a frame that is too long but stays usable.
  postmaster.sendRaw(std::string(40000, '0') + '\0');
  postmaster.send(MSG_T_EXIT);
  awaitCommandLine();
}

}  // namespace
