// The boxes that messages and the loss of the link bring up: title, icon, buttons and text.

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "app/message_handler.h"
#include "app/session.h"
#include "app/wmain.h"
#include "framework/controls/edit.h"
#include "framework/core/application.h"
#include "framework/core/x_settings.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/wire.h"
#include "tests/ui/app_object/box_view.h"
#include "tests/ui/support/ui_test.h"
#include "tests/ui/textarea/log_view.h"
#include "textarea/text_pane.h"

#include <X11/keysym.h>

namespace {

/// A string parameter.
std::string text(const std::string& bytes, int announced) {
  return std::string(reinterpret_cast<const char*>(&announced), sizeof announced) + bytes;
}
std::string text(const std::string& bytes) {
  return text(bytes, static_cast<int>(bytes.size()));
}

struct BoxRow {
  int tag;
  std::string payload;
  const char* title;
  const char* icon;
  std::vector<std::string> buttons;
  const char* text;
};

class MainWindowBoxes : public testing::Test {
 protected:
  MainWindowBoxes() {
    window = std::make_unique<WMain>(nullptr, "");
    ui::waitForDialog(g_AppTitle);
    g_XSettings.promptKeyDelay = 0;
  }
  ~MainWindowBoxes() override { window.reset(); }

  std::unique_ptr<WMain> window;
};

TEST_F(MainWindowBoxes, SayWhatTheMessagesSayOrWhatIsWrongWithThem) {
  const std::vector<std::string> ok{"OK"};
  const std::vector<std::string> okCancel{"OK", "Cancel"};
  for (const BoxRow& row : {
           BoxRow{MSG_T_QUESTION, text("Korvane - Page file") + text("More?"),
                  "Korvane - Page file", "question", okCancel, "More?"},
           BoxRow{MSG_T_QUESTION, text("Other") + text("a\nb"), "Other", "error", okCancel, "a\nb"},
           BoxRow{MSG_T_ERROR_BOX, text("Error") + text("bad"), "Error", "error", ok, "bad"},
           BoxRow{MSG_T_WARNING_BOX, text("Caution") + text("w"), "Caution", "warning", ok, "w"},
           BoxRow{MSG_LINK_WARNING_BOX, text("Link") + text("l"), "Link", "warning", ok, "l"},
           BoxRow{MSG_T_TEXT, text("abc", 9), "Korvane UI", "information", ok,
                  "Decode Error in message length:\nTag 2000\nLength 7"},
           BoxRow{MSG_T_EXIT, "x", "Korvane UI", "information", ok,
                  "Decode Error in message length:\nTag 2007\nLength 1"},
           BoxRow{-5, "1234", "Korvane UI", "information", ok,
                  "Decode Error in message length:\nTag -5\nLength 4"},
       }) {
    SCOPED_TRACE(row.text);
    ui::ModalScript script;
    const Window main = ui::windowWithTitle("Korvane UI");
    script.when(
        [&] {
          const Window box = ui::windowWithTitle(row.title);
          return box != main && ui::hasInputFocus(box);
        },
        row.title,
        [&] {
          const BoxView box(row.title);
          EXPECT_EQ(box.icon(), row.icon);
          EXPECT_EQ(box.buttonLabels(), row.buttons);
          EXPECT_EQ(box.text(), row.text);
          ui::pressKey(XK_Return);
        });
    script.run([&] {
      MessageHandler(NELKV, row.tag, static_cast<int>(row.payload.size()), row.payload.c_str());
    });
    ui::waitFor([&] { return ui::hasInputFocus(main); }, "the focus back in the main window");
  }
}

TEST_F(MainWindowBoxes, AMessageThatNothingIsDoneOnIsNamedOnStandardOutputOnly) {
  testing::internal::CaptureStdout();
  PROCESS_MESSAGE(4711, {});
  std::fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "PROCESS_MESSAGE: 4711");
}

/// The edit line of the prompt that is up.
zEditLine* promptLine() {
  zEditLine* line = nullptr;
  zWindowDlist::Iter windows(g_MainWindow->children());
  while (zWindow* window = windows.next()) {
    zWindowDlist::Iter controls(window->children());
    while (zWindow* control = window->isA(kClassDialogFrame) ? controls.next() : nullptr) {
      line = control->isA(kClassEditLine) ? windowCast<zEditLine>(control) : line;
    }
  }
  return line;
}

TEST_F(MainWindowBoxes, TellAnAnswerThatIsTooLongWhichCancelsTheQuestion) {
  std::array<int, 2> ends{};
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
  g_SocketClient = std::make_unique<SocketControlClient>(ends[0]);
  g_ToolSocket = ends[0];
  g_ToolState = LINK_CONNECTED;
  ui::ModalScript script;
  script.onDialog("Korvane Select", [] {
    promptLine()->setText(std::string(kMaxSentText + 1, 'x').c_str());
    ui::pressKey(XK_Return);
  });
  const Window main = ui::windowWithTitle("Korvane UI");
  script.when([&] { return ui::windowWithTitle("Korvane UI") != main; }, "the box",
              [] {
                EXPECT_EQ(BoxView("Korvane UI").text(), "The answer is too long to be sent.");
                ui::pressKey(XK_Return);
              });
  const std::string question = text("Korvane Select") + text("Name:");
  script.run([&] {
    MessageHandler(NELKV, MSG_T_ASK_STRING, static_cast<int>(question.size()), question.c_str());
  });
  g_ToolState = LINK_IDLE;
  g_SocketClient.reset();
  std::array<char, kMaxSentFrameText> sent{};
  std::array<char, kFrameHeaderBytes> binary{};
  const ssize_t count = recv(ends[1], sent.data(), sent.size(), MSG_DONTWAIT);
  EXPECT_EQ(count, 2 * kFrameHeaderBytes + 1) << "one frame without a payload";
  EXPECT_EQ(decodeFrame(sent.data(), static_cast<int>(count), binary).header.tag, MSG_UI_CANCEL);
  close(ends[0]);
  close(ends[1]);
}

TEST_F(MainWindowBoxes, AndTitlesComeAfterTheTextsBeforeThem) {
  std::array<int, 2> ends{};
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
  g_SocketClient = std::make_unique<SocketControlClient>(ends[0]);
  g_ToolSocket = ends[0];
  const auto shownAfter = [](int tag, const std::string& payload) {
    MessageHandler(NELKV, tag, static_cast<int>(payload.size()), payload.c_str());
    return shownLength(theTextPane->widget());
  };
  ASSERT_EQ(write(ends[1], "0", 1), 1);
  EXPECT_EQ(shownAfter(MSG_T_TEXT, text("a")), 0) << "more is to follow";
  EXPECT_EQ(shownAfter(MSG_T_PROMPT, text("go")), 0);
  EXPECT_EQ(shownAfter(MSG_T_TITLE, text("system")), 1);
  EXPECT_EQ(shownAfter(MSG_T_TEXT, text("b")), 1);
  ToolReceive(kReceivePoll);
  EXPECT_EQ(shownAfter(MSG_T_TEXT, text("c")), 3);
  g_SocketClient.reset();
  close(ends[0]);
  close(ends[1]);
}

TEST_F(MainWindowBoxes, TheIdlePollGivesUpAfterAHundredSilentPollsInARow) {
  constexpr int kSilentPolls = 100;
  g_IdleList = zApp::instance()->idleList();
  g_IdleList->add(window.get(), PollLinkIdle);
  const auto pollOften = [&](int count) {
    for (int poll = 0; poll < count; ++poll) {
      EXPECT_FALSE(g_IdleList->isEmpty());
      PollLinkIdle(window.get());
    }
  };
  pollOften(kSilentPolls - 1);
  MessageHandler(NELMPM, MSG_TOOL_ACTIVE, 0, "");
  pollOften(kSilentPolls);
  EXPECT_TRUE(g_IdleList->isEmpty());
  EXPECT_EQ(g_IdleCount, 0);
}

/// The link is gone; `poll` finds out. Ends the process with 0 if that ends the program.
[[noreturn]] void lose(int (*poll)(zEvH* owner)) {
  g_SignalClient = std::make_unique<CatchSignalsClient>();
  g_SocketClient = std::make_unique<SocketControlClient>(-1);
  g_IdleList = zApp::instance()->idleList();
  std::raise(SIGINT);
  ui::ModalScript script;
  script.onDialog("Korvane UI: NELMPM Error", [] {
    const BoxView box("Korvane UI: NELMPM Error");
    std::cerr << box.icon() << ": " << box.text() << std::flush;
    ui::pressKey(XK_Return);
  });
  script.run([&] { return poll(g_MainWindow); });
  std::_Exit(zApp::instance()->isRunning() ? EXIT_FAILURE : EXIT_SUCCESS);
}

TEST_F(MainWindowBoxes, TellTheLossOfTheLinkByTheHandlerThatSawIt) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto isOrdinaryEnd = testing::ExitedWithCode(EXIT_SUCCESS);
  const std::string text =
      "Broken MPM connection.\nplain: Connection to Tessil Postmaster lost.\n Application will "
      "quit. ";
  EXPECT_EXIT(lose(PollLinkIdle), isOrdinaryEnd, text + "1");
  EXPECT_EXIT(lose(PollLinkTimer), isOrdinaryEnd, text + "2");
}

}  // namespace
