#include "tester_link/tester_tool.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"

namespace tester_link {

namespace {

using std::chrono::milliseconds;

/// Longest sleep. A signal that comes right before one is seen after it.
constexpr milliseconds kLongestSleep{1000};
/// Sleep after a wake-up that brought no frame, so that half a frame, or one that the link cannot
/// take, does not keep the process busy.
constexpr milliseconds kFruitlessSleep{10};

/// Meaning of the integers of 8000 and 8002.
constexpr int kConnectedToolsIndex = 3;
constexpr int kLeftToolIndex = 0;
constexpr int kAlone = 1;

bool isSocketReady(short events) {
  pollfd entry{g_ToolSocket, events, 0};
  return poll(&entry, 1, 0) > 0 && (entry.revents & events) != 0;
}

/// Fills the record of a message to be sent, which refers to the message and to `list`.
struct Filling {
  void operator()(const std::string& text) { record.setText(index++, text.c_str()); }
  void operator()(std::int32_t number) { record.setNumber(index++, number); }
  void operator()(const Items& items) {
    for (const std::string& item : items) {
      list.append(item);
    }
    record.setList(index++, list.head());
  }

  ToolMessage record = {};
  StringList list = {};  ///< of the message's list; no message has two
  int index = 0;
};

UserLink::SendResult sendToUser(const OutgoingMessage& message) {
  if (!isSocketReady(POLLOUT)) {
    return UserLink::SendResult::kLater;
  }
  Filling filling;
  for (const OutgoingParameter& parameter : message.parameters) {
    std::visit(filling, parameter);
  }
  // The link takes an EPIPE for its own that something else left behind.
  errno = 0;
  const int result =
      sendMessage(MessageDirection::kReceivedByUi, NELKVUI, message.tag, filling.record);
  return result < 0 ? UserLink::SendResult::kRefused : UserLink::SendResult::kSent;
}

/// What a message of the user interface answers.
constexpr std::pair<int, AnswerKind> kAnswers[] = {
    {MSG_UI_OK, AnswerKind::kYes},
    {MSG_UI_NOT_OK, AnswerKind::kNo},
    {MSG_UI_ACK, AnswerKind::kAcknowledged},
    {MSG_UI_CANCEL, AnswerKind::kCancelled},
    {MSG_UI_STRING, AnswerKind::kText},
    {MSG_UI_VALUE, AnswerKind::kNumber},
    {MSG_UI_LIST_CHOICE, AnswerKind::kChoice},
    {MSG_UI_FILE, AnswerKind::kFile},
    {MSG_UI_BITS, AnswerKind::kBits},
    {MSG_UI_DIRECTORY, AnswerKind::kDirectory},
    {MSG_UI_SIGNAL_PARAM, AnswerKind::kParameters},
};

std::string textOf(const ToolMessage& message) {
  const char* text = message.text(0);
  return text == nullptr ? "" : text;
}

/// The answer with what the message brings besides its kind.
Answer readAnswer(AnswerKind kind, std::string_view shape, const ToolMessage& message) {
  Answer answer{kind};
  if (shape.starts_with(kStringParameter)) {
    answer.text = textOf(message);
  } else if (shape.starts_with(kListParameter)) {
    for (const auto* node = message.list(0); node != nullptr; node = node->next) {
      answer.items.emplace_back(node->text);
    }
  }
  return answer;
}

}  // namespace

/// What is done with a message that is no answer. Messages without a row are ignored: news that do
/// not concern the tester.
struct TesterTool::Route {
  int tag;
  void (TesterTool::*function)(int sender, const ToolMessage&);
};

const TesterTool::Route TesterTool::kRoutes[] = {
    {MSG_UI_COMMAND, &TesterTool::onCommand},
    {MSG_UI_FIND, &TesterTool::onFind},
    {MSG_UI_EXIT, &TesterTool::onUiExit},
    {MSG_CONNECT_OK, &TesterTool::onConnected},
    {MSG_TOOL_LEFT, &TesterTool::onToolLeft},
    {MSG_TOOL_READY, &TesterTool::onToolReady},
    {MSG_START_POLL_TIMER, &TesterTool::onPollingStarts},
};

TesterTool* TesterTool::active = nullptr;

TesterTool::TesterTool(Tester& toolTester, UserLink& toolUser)
    : tester(toolTester), user(toolUser) {
  active = this;
  setMessageHandler(&TesterTool::handleMessage);
}

TesterTool::~TesterTool() {
  setMessageHandler(nullptr);
  active = nullptr;
}

int TesterTool::run(const char* name) {
  if (ToolInit(NELKV) != 0) {
    std::fprintf(stderr,
                 "%s: no connection to the Postmaster, which must have started this program.\n",
                 name);
    return EXIT_FAILURE;
  }
  tester.start();
  ToolBroadcast(MSG_TOOL_READY, nullptr, 0);
  for (receive(); !ended; receive()) {
    pump();
    if (tester.isWorking() && user.acceptsText()) {
      tester.work();
    } else {
      sleep();
    }
  }
  ToolExit(NELKV);
  return EXIT_SUCCESS;
}

void TesterTool::receive() {
  int tag = ToolReceive(kReceivePoll);
  wasFruitless = wasFruitless && tag == 0;
  while (tag != 0 && !ended) {
    ended = tag == -1;
    if (!ended) {
      pump();
      tag = ToolReceive(kReceivePoll);
    }
  }
  ended = ended || hasHungUp();
}

void TesterTool::pump() {
  do {
    handOnCommands();
    user.pump(UserLink::Clock::now(), sendToUser);
  } while (!commands.empty() && !user.isAsking());
}

void TesterTool::handOnCommands() {
  while (!commands.empty() && !user.isAsking()) {
    const std::string command = std::move(commands.front());
    commands.pop_front();
    tester.takeCommand(command);
  }
}

void TesterTool::sleep() {
  tester.prepareSleep();
  auto time = kLongestSleep;
  if (tester.isWorking() || user.isPacing()) {
    time = std::chrono::ceil<milliseconds>(user.nextTextTime() - UserLink::Clock::now());
  }
  time = std::clamp(time, milliseconds(0), wasFruitless ? kFruitlessSleep : kLongestSleep);
  short events = wasFruitless ? 0 : POLLIN;
  if (user.isBlocked()) {
    events |= POLLOUT;
  }
  pollfd entries[] = {{g_ToolSocket, events, 0}, {tester.wakeDescriptor(), POLLIN, 0}};
  poll(entries, std::size(entries), static_cast<int>(time.count()));
  wasFruitless = (entries[0].revents & POLLIN) != 0;
  if ((entries[1].revents & POLLIN) != 0) {
    tester.onWake();
  }
}

void TesterTool::handleMessage(int sender, int tag, int length, const char* payload) {
  if (active != nullptr) {
    active->handle(sender, tag, length, payload);
  }
}

void TesterTool::handle(int sender, int tag, int length, const char* payload) {
  if (sender == NELKVUI && !user.isUserPresent()) {
    newUser();
  }
  const MessageRow* row = findMessage(tag, MessageDirection::kSentByUi);
  row = row == nullptr ? findMessage(tag, MessageDirection::kReceivedByUi) : row;
  ToolMessage message;
  if (row == nullptr ||
      DecodeMessage(tag, payload, length, &message, row->direction) != kDecodeOk) {
    return;
  }
  for (const auto& [answerTag, kind] : kAnswers) {
    if (answerTag == tag) {
      user.takeAnswer(readAnswer(kind, row->shape, message));
    }
  }
  for (const Route& route : kRoutes) {
    if (route.tag == tag) {
      (this->*route.function)(sender, message);
    }
  }
  FreeMessage(tag, &message, row->direction);
}

void TesterTool::greet() {
  greeted = true;
  tester.greet();
}

/// A user interface that has just come knows nothing of a question to one before it.
void TesterTool::newUser() {
  commands.clear();
  user.setUserPresent(true);
}

void TesterTool::onCommand(int /*sender*/, const ToolMessage& message) {
  if (!greeted) {
    greet();
  }
  commands.push_back(textOf(message));
}

void TesterTool::onFind(int /*sender*/, const ToolMessage& /*message*/) {
  tester.search();
}

void TesterTool::onUiExit(int /*sender*/, const ToolMessage& /*message*/) {
  ended = true;
}

void TesterTool::onConnected(int /*sender*/, const ToolMessage& message) {
  user.setUserPresent(message.number(kConnectedToolsIndex) != kAlone);
}

void TesterTool::onToolLeft(int /*sender*/, const ToolMessage& message) {
  if (message.number(kLeftToolIndex) != NELKVUI) {
    return;
  }
  ended = user.isLeaving();
  user.setUserPresent(false);
  greeted = false;
  commands.clear();
  tester.userLeft();
}

void TesterTool::onToolReady(int sender, const ToolMessage& /*message*/) {
  if (sender == NELKVUI) {
    newUser();
    greet();
  }
}

void TesterTool::onPollingStarts(int /*sender*/, const ToolMessage& /*message*/) {
  if (user.isUserPresent() && !greeted) {
    greet();
  }
}

bool hasHungUp() {
  char byte = 0;
  const ssize_t count = recv(g_ToolSocket, &byte, sizeof byte, MSG_PEEK | MSG_DONTWAIT);
  return count == 0 || (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR);
}

}  // namespace tester_link
