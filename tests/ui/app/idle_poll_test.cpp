#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>

#include "app/message_handler.h"
#include "app/wmain.h"
#include "framework/core/timer.h"
#include "framework/core/x_settings.h"
#include "link/tool_interface.h"
#include "tests/support/connection.h"
#include "tests/support/message.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

std::string frame(int tag, std::vector<Parameter> parameters) {
  return toWire({kFrameDirected, tag, NELKV, NELKVUI, std::move(parameters)},
                MessageDirection::kReceivedByUi);
}

// The timer sleeps until its descriptors tell of input; the idle handler takes both frames from the
// socket, and the box of the first one keeps it from running again.
TEST(IdlePoll, LeavesTheSecondOfTwoFramesToTheTimerThatSleeps) {
  const auto window = std::make_unique<WMain>(nullptr, "");
  ui::waitForDialog("Korvane UI");
  g_XSettings.promptKeyDelay = 0;
  std::array<int, 2> ends{};
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends.data()), 0);
  Connection tester{UniqueDescriptor(ends[1])};
  g_SocketClient = std::make_unique<SocketControlClient>(ends[0]);
  g_ToolSocket = ends[0];
  g_ToolState = LINK_CONNECTED;
  setMessageHandler(MessageHandler);
  MessageHandler(NELMPM, MSG_START_POLL_TIMER, 0, "");
  const Deadline asleep(Milliseconds{50});
  ui::waitFor([&] { return asleep.hasPassed(); }, "a timer that has found nothing to do");

  const std::string both =
      frame(MSG_T_ERROR_BOX, {"First", "text"}) + frame(MSG_T_ASK_RANGE, {"t", "Which?", 7, 7});
  std::string_view bytes = both;
  EXPECT_EQ(tester.send(bytes), 0);
  ui::ModalScript script;
  script.onDialog("First", [&] {
    ui::waitFor([&] { return tester.read(), tester.hasFrame(); }, "the answer under the box");
    ui::pressKey(XK_Return);
  });
  script.run([&] { return PollLinkIdle(window.get()); });
  const auto answer = fromWire(tester.take().value_or(""), MessageDirection::kSentByUi);
  EXPECT_EQ(describe(answer), "1005 MSG_UI_VALUE \"7\"");

  delete std::exchange(g_PollTimer, nullptr);
  g_ToolState = LINK_IDLE;
  g_SocketClient.reset();
  ::close(ends[0]);
}

}  // namespace
