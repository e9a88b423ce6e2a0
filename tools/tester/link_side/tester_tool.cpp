#include "tester/link_side/tester_tool.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/typed_senders.h"

namespace tester {

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

/// The link's reader takes the end of the stream for silence, so it is looked for here.
bool hasHungUp() {
  char byte = 0;
  const ssize_t count = recv(g_ToolSocket, &byte, sizeof byte, MSG_PEEK | MSG_DONTWAIT);
  return count == 0 || (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR);
}

LinkDialogue::SendResult sendToUser(const OutgoingMessage& message) {
  if (!isSocketReady(POLLOUT)) {
    return LinkDialogue::SendResult::kLater;
  }
  const OutgoingRecord record(message);
  const int result =
      sendMessage(MessageDirection::kReceivedByUi, NELKVUI, message.tag, record.words());
  return result < 0 ? LinkDialogue::SendResult::kRefused : LinkDialogue::SendResult::kSent;
}

/// What a message of the user interface answers.
struct AnswerRow {
  int tag;
  AnswerKind kind;
};

constexpr AnswerRow kAnswers[] = {
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

std::string textOf(const IncomingMessage& message) {
  const char* text = message.parameters.text(0);
  return text == nullptr ? "" : text;
}

/// The answer with what the message brings besides its kind.
Answer readAnswer(AnswerKind kind, const IncomingMessage& message) {
  Answer answer{kind};
  const std::string_view shape = findMessage(message.tag, MessageDirection::kSentByUi)->shape;
  if (shape.starts_with(kStringParameter)) {
    answer.text = textOf(message);
  } else if (shape.starts_with(kListParameter)) {
    for (auto* node = message.parameters.list(0); node != nullptr; node = node->next) {
      answer.items.emplace_back(node->text);
    }
  }
  return answer;
}

MessageDirection directionOf(int tag) {
  return findMessage(tag, MessageDirection::kSentByUi) != nullptr ? MessageDirection::kSentByUi
                                                                  : MessageDirection::kReceivedByUi;
}

}  // namespace

/// What is done with a message. Messages without a row are ignored: news that do not concern the
/// tester.
struct TesterTool::Route {
  int tag;
  void (TesterTool::*function)(const IncomingMessage&);
};

const TesterTool::Route TesterTool::kRoutes[] = {
    {MSG_UI_COMMAND, &TesterTool::onCommand},
    {MSG_UI_OK, &TesterTool::onAnswer},
    {MSG_UI_NOT_OK, &TesterTool::onAnswer},
    {MSG_UI_ACK, &TesterTool::onAnswer},
    {MSG_UI_CANCEL, &TesterTool::onAnswer},
    {MSG_UI_STRING, &TesterTool::onAnswer},
    {MSG_UI_VALUE, &TesterTool::onAnswer},
    {MSG_UI_LIST_CHOICE, &TesterTool::onAnswer},
    {MSG_UI_FILE, &TesterTool::onAnswer},
    {MSG_UI_BITS, &TesterTool::onAnswer},
    {MSG_UI_DIRECTORY, &TesterTool::onAnswer},
    {MSG_UI_SIGNAL_PARAM, &TesterTool::onAnswer},
    {MSG_UI_FIND, &TesterTool::onFind},
    {MSG_UI_EXIT, &TesterTool::onUiExit},
    {MSG_CONNECT_OK, &TesterTool::onConnected},
    {MSG_TOOL_LEFT, &TesterTool::onToolLeft},
    {MSG_TOOL_READY, &TesterTool::onToolReady},
    {MSG_START_POLL_TIMER, &TesterTool::onPollingStarts},
};

TesterTool* TesterTool::active = nullptr;

TesterTool::TesterTool(Debugger& toolDebugger, LinkDialogue& toolDialogue)
    : debugger(toolDebugger), dialogue(toolDialogue) {
  active = this;
  setMessageHandler(&TesterTool::handleMessage);
}

TesterTool::~TesterTool() {
  setMessageHandler(nullptr);
  active = nullptr;
}

int TesterTool::run() {
  if (ToolInit(NELKV) != 0) {
    std::fputs("nelkv: no connection to the Postmaster, which must have started this program.\n",
               stderr);
    return EXIT_FAILURE;
  }
  ToolBroadcast(MSG_TOOL_READY, nullptr, 0);
  while (!ended) {
    receive();
    if (ended) {
      break;
    }
    pump();
    if (debugger.isRunning() && dialogue.acceptsTrace()) {
      debugger.runSlice();
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
    ended = ended || tag == -1;
    if (!ended) {
      pump();
      tag = ToolReceive(kReceivePoll);
    }
  }
  ended = ended || hasHungUp();
}

void TesterTool::pump() {
  dialogue.pump(LinkDialogue::Clock::now(), sendToUser);
  if (dialogue.takeRefusal()) {
    debugger.dropQuestion();
    dialogue.pump(LinkDialogue::Clock::now(), sendToUser);
  }
}

void TesterTool::sleep() {
  auto time = kLongestSleep;
  if (debugger.isRunning()) {
    time = std::chrono::ceil<milliseconds>(dialogue.nextTextTime() - LinkDialogue::Clock::now());
  }
  time = std::clamp(time, milliseconds(0), wasFruitless ? kFruitlessSleep : kLongestSleep);
  short events = wasFruitless ? 0 : POLLIN;
  if (dialogue.isBlocked()) {
    events |= POLLOUT;
  }
  pollfd entry{g_ToolSocket, events, 0};
  poll(&entry, 1, static_cast<int>(time.count()));
  wasFruitless = (entry.revents & POLLIN) != 0;
}

void TesterTool::handleMessage(int sender, int tag, int length, const char* payload) {
  if (active != nullptr) {
    active->handle(sender, tag, length, payload);
  }
}

void TesterTool::handle(int sender, int tag, int length, const char* payload) {
  if (sender == NELKVUI && !dialogue.isUserPresent()) {
    newUser();
  }
  const auto route = std::find_if(std::begin(kRoutes), std::end(kRoutes),
                                  [&](const Route& each) { return each.tag == tag; });
  if (route == std::end(kRoutes)) {
    return;
  }
  const MessageDirection direction = directionOf(tag);
  ToolMessage parameters;
  if (DecodeMessage(tag, payload, length, &parameters, direction) != kDecodeOk) {
    return;
  }
  (this->*route->function)({sender, tag, parameters});
  FreeMessage(tag, &parameters, direction);
}

void TesterTool::greet() {
  greeted = true;
  debugger.greet();
}

/// A user interface that has just come knows nothing of a question to one before it.
void TesterTool::newUser() {
  debugger.abandonQuestion();
  dialogue.setUserPresent(true);
}

void TesterTool::onCommand(const IncomingMessage& message) {
  if (!greeted) {
    greet();
  }
  debugger.execute(textOf(message));
}

void TesterTool::onAnswer(const IncomingMessage& message) {
  for (const AnswerRow& row : kAnswers) {
    if (row.tag == message.tag) {
      debugger.takeAnswer(readAnswer(row.kind, message));
    }
  }
}

void TesterTool::onFind(const IncomingMessage& /*message*/) {
  debugger.offerSearch();
}

void TesterTool::onUiExit(const IncomingMessage& /*message*/) {
  ended = true;
}

void TesterTool::onConnected(const IncomingMessage& message) {
  dialogue.setUserPresent(message.parameters.number(kConnectedToolsIndex) != kAlone);
}

void TesterTool::onToolLeft(const IncomingMessage& message) {
  if (message.parameters.number(kLeftToolIndex) != NELKVUI) {
    return;
  }
  ended = dialogue.isExitAsked();
  dialogue.setUserPresent(false);
  greeted = false;
  debugger.interrupt();
  debugger.abandonQuestion();
}

void TesterTool::onToolReady(const IncomingMessage& message) {
  if (message.sender != NELKVUI) {
    return;
  }
  newUser();
  greet();
}

void TesterTool::onPollingStarts(const IncomingMessage& /*message*/) {
  if (dialogue.isUserPresent() && !greeted) {
    greet();
  }
}

}  // namespace tester
