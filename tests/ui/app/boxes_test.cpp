// What messages and the loss of the link bring up over the main window, and what is answered.

#include <csignal>
#include <cstdlib>
#include <iostream>

#include "framework/core/application.h"
#include "framework/core/timer.h"
#include "link/wire.h"
#include "tests/ui/app/main_window.h"

namespace {

using testing::HasSubstr;

using Boxes = MainWindow;

/// What is seen of the box that `call` brings up over the main window; Return ends it. The focus
/// is back in the main window then.
std::string boxOf(const std::string& title, const std::function<void()>& call) {
  const Window main = ui::windowWithTitle(g_AppTitle);
  std::string look;
  ui::ModalScript script;
  const auto isUp = [&] {
    const Window box = ui::windowWithTitle(title);
    return box != main && ui::hasInputFocus(box);
  };
  script.when(isUp, title, [&] {
    ui::drain();
    look = ui::look(title);
    ui::pressKey(XK_Return);
  });
  script.run(call);
  ui::waitFor([&] { return ui::hasInputFocus(main); }, "the focus back in the main window");
  return look;
}

TEST_F(Boxes, SayWhatTheMessagesSayOrWhatIsWrongWithThem) {
  const std::string ok = "---\n[OK] default focus\n";
  const std::string wrong = "{information}\nDecode Error in message length:\nTag ";
  const auto with = [](const char* title) { return wireString(title) + wireString("a\nb"); };
  const std::tuple<int, std::string, const char*, std::string> rows[] = {
      {MSG_T_QUESTION, with("Korvane - Page file"), "Korvane - Page file",
       "{question}\na\nb\n" + ok + "[Cancel]\n"},
      {MSG_T_QUESTION, with("Other"), "Other", "{error}\na\nb\n" + ok + "[Cancel]\n"},
      {MSG_T_ERROR_BOX, with("Error"), "Error", "{error}\na\nb\n" + ok},
      {MSG_T_WARNING_BOX, with("Caution"), "Caution", "{warning}\na\nb\n" + ok},
      {MSG_LINK_WARNING_BOX, with("Link"), "Link", "{warning}\na\nb\n" + ok},
      {MSG_T_TEXT, wireWord(9) + "abc", g_AppTitle, wrong + "2000\nLength 7\n" + ok},
      {-5, "1234", g_AppTitle, wrong + "-5\nLength 4\n" + ok}};
  for (const auto& [tag, payload, title, look] : rows) {
    EXPECT_EQ(boxOf(title,
                    [&, &tag = tag, &payload = payload] {
                      MessageHandler(NELKV, tag, static_cast<int>(payload.size()), payload.c_str());
                    }),
              look);
  }
  EXPECT_EQ(sent(), "1000 MSG_UI_OK\n1000 MSG_UI_OK\n1011 MSG_UI_ACK\n");
  // An answer that is too long cancels the question.
  const std::string look = boxOf(g_AppTitle, [] {
    ui::ModalScript script;
    script.onDialog("Korvane Select", [] {
      // The dialog bounds what is typed only.
      ui::setText(ui::part("Korvane Select", "TextField"), std::string(kMaxSentText + 1, 'x'));
      ui::pressKey(XK_Return);
    });
    script.run([] { receive(MSG_T_ASK_STRING, {"Korvane Select", "Name:"}); });
  });
  EXPECT_EQ(look, "{error}\nThe answer is too long to be sent.\n" + ok);
  EXPECT_EQ(sent(), "1003 MSG_UI_CANCEL\n");
}

TEST_F(Boxes, AndTitlesComeAfterTheTextsBeforeThem) {
  const auto shownAfter = [](int tag, const char* text) {
    receive(tag, {text});
    return ui::textOf(theTextPane->widget());
  };
  ASSERT_EQ(write(peer.fd(), "0", 1), 1);
  EXPECT_EQ(shownAfter(MSG_T_TEXT, "a"), "") << "more is to follow";
  EXPECT_EQ(shownAfter(MSG_T_PROMPT, "go"), "");
  EXPECT_EQ(shownAfter(MSG_T_TITLE, "system"), "a");
  ui::waitForDialog("Korvane UI - system");
  EXPECT_EQ(shownAfter(MSG_T_TEXT, "b"), "a");
  ToolReceive(kReceivePoll);
  EXPECT_EQ(shownAfter(MSG_T_TEXT, "c"), "abc");
}

TEST_F(Boxes, FindIsToldOfEarlierSearchesAndOfWhatTheUserMayDo) {
  const auto asked = [] {
    std::string look;
    ui::ModalScript script;
    script.onDialog("Korvane Select", [&] {
      look = ui::look("Korvane Select");
      ui::pressKey(XK_Escape);
    });
    script.run([] { receive(MSG_T_FIND, {0, 1, Parameter::List{"p"}}); });
    return look;
  };
  unsetenv("KV_REGEXP");
  theSession.rememberSearch({"old", false, false});
  theSession.rememberSearch({"new", true, true});
  const std::string look = asked();
  EXPECT_THAT(look, HasSubstr("<new>"));
  EXPECT_THAT(look, HasSubstr("<p>"));
  EXPECT_THAT(look, HasSubstr("( ) Regular expression greyed\n(x) Match case\n"));
  setenv("KV_REGEXP", "", 1);
  EXPECT_THAT(asked(), HasSubstr("(x) Regular expression\n(x) Match case\n"));
  unsetenv("KV_REGEXP");
}

// The timer sleeps until its descriptors tell of input; the idle handler takes both frames from the
// socket, and the box of the first one keeps it from running again.
TEST_F(Boxes, LeaveTheSecondOfTwoFramesToTheTimerThatSleeps) {
  setMessageHandler(MessageHandler);
  MessageHandler(NELMPM, MSG_START_POLL_TIMER, 0, "");
  const Deadline asleep(Milliseconds{50});
  ui::waitFor([&] { return asleep.hasPassed(); }, "a timer that has found nothing to do");
  std::string both;
  for (const Message& message :
       {Message{kFrameDirected, MSG_T_ERROR_BOX, NELKV, NELKVUI, {"First", "text"}},
        Message{kFrameDirected, MSG_T_ASK_RANGE, NELKV, NELKVUI, {"t", "Which?", 7, 7}}}) {
    both += toWire(message, MessageDirection::kReceivedByUi);
  }
  std::string_view bytes = both;
  EXPECT_EQ(peer.send(bytes), 0);
  ui::ModalScript script;
  script.onDialog("First", [&] {
    std::string answer;
    ui::waitFor([&] { return !(answer += sent()).empty(); }, "the answer under the box");
    EXPECT_EQ(answer, "1005 MSG_UI_VALUE \"7\"\n");
    ui::pressKey(XK_Return);
  });
  script.run([&] { return PollLinkIdle(window.get()); });
  delete std::exchange(g_PollTimer, nullptr);
}

/// The link is gone; `poll` finds out. Ends the process with 0 if that ends the program.
[[noreturn]] void lose(int (*poll)(zEvH* owner)) {
  g_SignalClient = std::make_unique<CatchSignalsClient>();
  g_SocketClient = std::make_unique<SocketControlClient>(-1);
  g_IdleList = zApp::instance()->idleList();
  std::raise(SIGINT);
  std::cerr << boxOf("Korvane UI: NELMPM Error", [&] { poll(g_MainWindow); }) << std::flush;
  std::_Exit(zApp::instance()->isRunning() ? EXIT_FAILURE : EXIT_SUCCESS);
}

TEST_F(Boxes, TellTheLossOfTheLinkByTheHandlerThatSawIt) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto isOrdinaryEnd = testing::ExitedWithCode(EXIT_SUCCESS);
  const std::string text =
      "Broken MPM connection.\n..\nConnection to Tessil Postmaster lost.\n Application will quit. ";
  EXPECT_EXIT(lose(PollLinkIdle), isOrdinaryEnd, text + "1\n---\n.OK. default");
  EXPECT_EXIT(lose(PollLinkTimer), isOrdinaryEnd, text + "2\n---\n.OK. default");
}

}  // namespace
