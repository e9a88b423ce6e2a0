// What messages and the loss of the link bring up over the main window, and what is answered.

#include <csignal>
#include <cstdlib>
#include <iostream>

#include "framework/core/application.h"
#include "framework/core/timer.h"
#include "tests/ui/app/main_window.h"

namespace {

using testing::HasSubstr;

const std::string kOk = "---\n[OK] default focus\n";

TEST_F(MainWindow, TellsInBoxesWhatMessagesSayOrWhatIsWrongWithThem) {
  const std::tuple<int, const char*, std::string> rows[] = {
      {MSG_T_QUESTION, "Korvane - Page file", "{question}\na\nb\n" + kOk + "[Cancel]\n"},
      {MSG_T_QUESTION, "Other", "{error}\na\nb\n" + kOk + "[Cancel]\n"},
      {MSG_T_ERROR_BOX, "Error", "{error}\na\nb\n" + kOk},
      {MSG_T_WARNING_BOX, "Caution", "{warning}\na\nb\n" + kOk},
      {MSG_LINK_WARNING_BOX, "Link", "{warning}\na\nb\n" + kOk}};
  for (const auto& [tag, title, look] : rows) {
    const auto tell = [tag = tag, title = title] { receive(tag, {title, "a\nb"}); };
    EXPECT_EQ(boxOf(title, tell), look);
  }
  EXPECT_EQ(sent(), "1000 MSG_UI_OK\n1000 MSG_UI_OK\n1011 MSG_UI_ACK\n");
  for (const int tag : {2000, -5}) {
    const auto tell = [tag] { MessageHandler(NELKV, tag, 4, wireWord(9).c_str()); };
    EXPECT_EQ(boxOf(g_AppTitle, tell), "{information}\nDecode Error in message length:\nTag " +
                                           std::to_string(tag) + "\nLength 4\n" + kOk);
  }
  const auto answerAtLength = [] {
    // The dialog bounds what is typed only.
    const auto enter = [] {
      ui::setText(ui::part(kPrompt, "TextField"), std::string(kMaxSentText + 1, 'x'));
      ui::pressKey(XK_Return);
    };
    ui::inDialog(kPrompt, enter, [] { receive(MSG_T_ASK_STRING, {"title", "Name:"}); });
  };
  EXPECT_EQ(boxOf(g_AppTitle, answerAtLength),
            "{error}\nThe answer is too long to be sent.\n" + kOk);
  EXPECT_EQ(sent(), "1003 MSG_UI_CANCEL\n");
}

TEST_F(MainWindow, ShowsTextsTogetherButBeforeWhatComesBehindThem) {
  const auto shownAfter = [](int tag, const char* text) {
    receive(tag, {text});
    return ui::textOf(theTextPane->widget());
  };
  ASSERT_EQ(write(peer.fd(), "0", 1), 1);
  EXPECT_EQ(shownAfter(MSG_T_TEXT, "a"), "") << "more is to follow";
  EXPECT_EQ(shownAfter(MSG_T_PROMPT, "go"), "");
  EXPECT_EQ(theCommandLine->selectString("go"), 0) << "what the tester confirms is history";
  EXPECT_EQ(shownAfter(MSG_T_TITLE, "system"), "a");
  ui::waitForDialog("Korvane UI - system");
  EXPECT_EQ(shownAfter(MSG_T_TEXT, "b"), "a");
  ToolReceive(kReceivePoll);
  EXPECT_EQ(shownAfter(MSG_T_TEXT, "c"), "abc");
}

TEST_F(MainWindow, TellsFindOfEarlierSearchesAndOfWhatTheUserMayDo) {
  theSession.rememberSearch({"old", false, false});
  theSession.rememberSearch({"new", true, true});
  const auto ask = [] {
    std::string look;
    const auto leave = [&] {
      look = ui::look(kPrompt);
      ui::pressKey(XK_Escape);
    };
    ui::inDialog(kPrompt, leave, [] { receive(MSG_T_FIND, {0, 1, Parameter::List{"p"}}); });
    return look;
  };
  setenv("KV_REGEXP", "", 1);
  EXPECT_THAT(ask(), HasSubstr("(x) Regular expression\n(x) Match case\n"));
  unsetenv("KV_REGEXP");
  EXPECT_THAT(ask(), testing::AllOf(HasSubstr("<new>"), HasSubstr("<p>"),
                                    HasSubstr("( ) Regular expression greyed\n(x) Match case\n")));
}

// The timer sleeps until its descriptors tell of input; the idle handler takes both frames from the
// socket, and the box of the first one keeps it from running again.
TEST_F(MainWindow, LeavesTheSecondOfTwoFramesToTheTimerThatSleeps) {
  MessageHandler(NELMPM, MSG_START_POLL_TIMER, 0, "");
  const Deadline asleep(Milliseconds{50});
  ui::waitFor([&] { return asleep.hasPassed(); }, "a timer that has found nothing to do");
  std::string both;
  for (const Message& message :
       {Message{kFrameDirected, MSG_T_ERROR_BOX, NELKV, NELKVUI, {"First", "text"}},
        Message{kFrameDirected, MSG_T_ASK_RANGE, NELKV, NELKVUI, {"t", "Which?", 7, 7}}}) {
    both += toWire(message);
  }
  std::string_view bytes = both;
  EXPECT_EQ(peer.send(bytes), 0);
  const auto lookAround = [&] {
    std::string answer;
    ui::waitFor([&] { return !(answer += sent()).empty(); }, "the answer under the box");
    EXPECT_EQ(answer, "1005 MSG_UI_VALUE \"7\"\n");
    ui::pressKey(XK_Return);
  };
  ui::inDialog("First", lookAround, [&] { return PollLinkIdle(window.get()); });
  delete std::exchange(g_PollTimer, nullptr);
}

TEST_F(MainWindow, TellsTheLossOfTheLinkByTheHandlerThatSawItAndEndsTheProgram) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto lose = [](int (*poll)(zEvH * owner)) {
    g_SignalClient = std::make_unique<CatchSignalsClient>();
    g_SocketClient = std::make_unique<SocketControlClient>(-1);
    g_IdleList = zApp::instance()->idleList();
    std::raise(SIGINT);
    const auto confirm = [] {
      std::cerr << ui::look("Korvane UI: NELMPM Error") << std::flush;
      ui::pressKey(XK_Return);
    };
    ui::inDialog("Korvane UI: NELMPM Error", confirm, [&] { return poll(g_MainWindow); });
    std::_Exit(zApp::instance()->isRunning() ? EXIT_FAILURE : EXIT_SUCCESS);
  };
  const std::string text =
      "Broken MPM connection.\n..\nConnection to Tessil Postmaster lost.\n Application will quit. ";
  EXPECT_EXIT(lose(PollLinkIdle), testing::ExitedWithCode(0), text + "1\n---\n.OK. default");
  EXPECT_EXIT(lose(PollLinkTimer), testing::ExitedWithCode(0), text + "2\n---\n.OK. default");
}

}  // namespace
