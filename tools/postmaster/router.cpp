// The rules of routing. Every refusal is a text for people; the caller adds who sent the frame.
#include "postmaster/router.h"

#include "link/message_numbers.h"

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <utility>

namespace postmaster {

const int Router::kUi = NELKVUI;

namespace {

/// Whether only the Postmaster may send this number.
bool isPostmastersOwn(int tag) {
  return tag == MSG_CONNECT_OK || tag == MSG_CONNECT_DENIED || tag == MSG_TOOL_LEFT ||
         tag == MSG_SHUTDOWN || tag == MSG_SHUTDOWN_NOW;
}

/// Whether the number is meant for the Postmaster and for nobody else.
bool isForPostmaster(int tag) {
  return tag == MSG_CONNECT || tag == MSG_DISCONNECT || tag == MSG_SHUTDOWN_ACK;
}

bool isToPostmaster(const FrameHeader& header) {
  return header.kind == kFrameDirected && header.dest == NELMPM;
}

/// Words of the texts among the parameters of 8000 and 8002.
constexpr int kIdentificationIndex = 4;
constexpr int kLeftNameIndex = 2;

constexpr char kNoTester[] = " was not sent: there is no tester >\n";
constexpr char kTesterLeft[] = " was not confirmed: the tester has left >\n";

/// A message whose first parameters are these integers.
ToolMessage numbers(std::initializer_list<int> values) {
  ToolMessage message;
  int index = 0;
  for (const int value : values) {
    message.setNumber(index++, value);
  }
  return message;
}

Routing refuse(std::string why) {
  return {{}, std::move(why), true};
}

}  // namespace

Routing Router::frameCame(ClientId client, const Message& message) {
  const FrameHeader& header = message->header;
  const auto tool = tools.find(client);
  if (tool == tools.end()) {
    if (header.tag == MSG_CONNECT && isToPostmaster(header)) {
      return connect(client, header);
    }
    return refuse(messageLabel(header) + " before the connection request 7000");
  }
  if (header.sender == tool->second.type && account.closesOwnQuestion(header)) {
    return {};
  }
  const bool isCommand = header.sender == tool->second.type && header.tag == MSG_UI_COMMAND;
  if (isCommand && header.dest == NELKV && !isThere(NELKV)) {
    return commandWithoutTester(client, message);
  }
  if (std::string why = reasonToRefuse(tool->second, header); !why.empty()) {
    Routing refused = refuse(std::move(why));
    refused.isNews = header.dest != kUi || header.sender != NELKV || uiHasCome;
    return refused;
  }
  account.note(message);
  Routing routing =
      isToPostmaster(header) ? toPostmaster(client, header) : forward(client, message);
  if (const ClientId* visitor = clientOf(EXTERNAL);
      visitor != nullptr && account.visitorHears(message)) {
    routing.deliveries.push_back({*visitor, message});
  }
  if (header.tag == MSG_TOOL_READY) {
    routing.deliveries.push_back({client, ownMessage(MSG_START_POLL_TIMER, header.sender)});
    tools[client].ready = true;
    if (header.sender == kUi) {
      for (Message& item : std::exchange(forUser, {})) {
        routing.deliveries.push_back({client, std::move(item)});
      }
    }
  }
  return routing;
}

std::string Router::reasonToRefuse(const Tool& tool, const FrameHeader& header) const {
  const std::string label = messageLabel(header);
  if (header.sender != tool.type) {
    return label + " in the name of " + toolName(header.sender);
  }
  if (isPostmastersOwn(header.tag)) {
    return label + ", which only the Postmaster sends";
  }
  if (isForPostmaster(header.tag) && !isToPostmaster(header)) {
    return label + " to others than the Postmaster";
  }
  if (header.kind == kFrameDirected && header.dest != NELMPM && !isThere(header.dest)) {
    return label + " for " + toolName(header.dest) + ", which is not connected";
  }
  return {};
}

Routing Router::connect(ClientId client, const FrameHeader& header) {
  const int type = header.sender;
  if (!mayConnectAs(type)) {
    return deny(client, type, DenyReason::kUnknownTool);
  }
  if (shuttingDown) {
    return deny(client, type, DenyReason::kShuttingDown);
  }
  if (isThere(type)) {
    return deny(client, type, DenyReason::kAlreadyConnected);
  }
  tools[client] = {type};
  uiHasCome = uiHasCome || type == kUi;
  ToolMessage reply = numbers({type, self.pid, self.port, static_cast<int>(tools.size())});
  reply.setText(kIdentificationIndex, self.text.c_str());
  Routing routing{{{client, ownMessage(MSG_CONNECT_OK, type, reply)}}, {}};
  if (type == NELKV) {
    for (const Message& command : account.testerCame()) {
      routing.deliveries.push_back({client, command});
    }
  }
  return routing;
}

Routing Router::deny(ClientId client, int toolType, DenyReason reason) const {
  const ToolMessage reply = numbers({toolType, self.pid, self.port, static_cast<int>(reason)});
  std::string why = "connection of " + toolName(toolType) + " denied, ";
  switch (reason) {
    case DenyReason::kAlreadyConnected:
      why += "one is connected already";
      break;
    case DenyReason::kUnknownTool:
      why += "no tool of this type may connect";
      break;
    case DenyReason::kShuttingDown:
      why += "the Postmaster is shutting down";
      break;
  }
  return {{{client, ownMessage(MSG_CONNECT_DENIED, toolType, reply), true}}, std::move(why)};
}

Routing Router::toPostmaster(ClientId client, const FrameHeader& header) {
  switch (header.tag) {
    case MSG_DISCONNECT:
      return leave(client, LeaveReason::kDisconnected);
    case MSG_SHUTDOWN_ACK:
      if (!shuttingDown) {
        return refuse(messageLabel(header) + " without a shutdown");
      }
      tools[client].answered = true;
      return {};
    case MSG_TOOL_READY:
      return {};
    case MSG_CONNECT:
      return refuse(messageLabel(header) + " a second time");
    default:
      return refuse(messageLabel(header) + ", which the Postmaster does not know");
  }
}

Routing Router::forward(ClientId client, const Message& message) const {
  Routing routing;
  if (message->header.kind == kFrameDirected) {
    if (const ClientId* receiver = clientOf(message->header.dest); receiver != nullptr) {
      routing.deliveries.push_back({*receiver, message});
    }
    return routing;
  }
  for (const auto& [other, tool] : tools) {
    if (other != client) {
      routing.deliveries.push_back({other, message});
    }
  }
  return routing;
}

Routing Router::connectionLost(ClientId client, LeaveReason reason) {
  return tools.count(client) != 0 ? leave(client, reason) : Routing{};
}

Routing Router::leave(ClientId client, LeaveReason reason) {
  const int type = tools.at(client).type;
  tools.erase(client);
  uiGone = uiGone || type == kUi;
  if (type == EXTERNAL) {
    account.visitorLeft();
  }
  Routing routing;
  const std::string name = toolName(type);
  ToolMessage news = numbers({type, static_cast<int>(reason)});
  news.setText(kLeftNameIndex, name.c_str());
  for (const auto& [other, tool] : tools) {
    routing.deliveries.push_back({other, ownMessage(MSG_TOOL_LEFT, tool.type, news)});
  }
  if (type == NELKV && !shuttingDown) {
    for (const Message& command : account.takeUnconfirmed()) {
      giveBack(command, kTesterLeft, routing);
    }
  }
  return routing;
}

Routing Router::tellUser(Message message) {
  const ClientId* ui = clientOf(kUi);
  if (ui != nullptr && tools[*ui].ready) {
    return {{{*ui, std::move(message)}}, {}};
  }
  forUser.push_back(std::move(message));
  return {};
}

Routing Router::warnUser(const std::string& caption, const std::string& text) {
  ToolMessage box;
  box.setText(0, caption.c_str());
  box.setText(1, text.c_str());
  return tellUser(ownMessage(MSG_LINK_WARNING_BOX, kUi, box));
}

Routing Router::askUser(const std::string& caption, const std::string& text) {
  const ClientId* ui = clientOf(kUi);
  if (ui == nullptr || !tools[*ui].ready) {
    return {};
  }
  ToolMessage box;
  box.setText(0, caption.c_str());
  box.setText(1, text.c_str());
  account.noteOwnQuestion();
  return {{{*ui, ownMessage(MSG_T_QUESTION, kUi, box)}}, {}};
}

Routing Router::commandWithoutTester(ClientId client, const Message& message) {
  if (testerComes && message->header.sender == kUi) {
    account.keep(message);
    return {};
  }
  Routing routing = refuse(messageLabel(message->header) + " for " + toolName(NELKV) +
                           ", which is not connected");
  if (message->header.sender == kUi) {
    giveBack(message, kNoTester, routing);
  } else {
    routing.deliveries.push_back(
        {client, ownMessage(MSG_TOOL_LEFT, message->header.sender,
                            numbers({NELKV, static_cast<int>(LeaveReason::kHungUp)}))});
  }
  return routing;
}

/// A command that came to nothing: the log tells `why`, and the list of commands has it.
void Router::giveBack(const Message& command, const char* why, Routing& routing) const {
  const ClientId* ui = clientOf(kUi);
  if (ui == nullptr) {
    return;
  }
  constexpr std::size_t kMaxShown = 120;
  const std::string text = frames::parametersOf(*command).text(0);
  const std::string notice = "< \"" + text.substr(0, kMaxShown) + "\"" + why;
  for (const auto& [tag, content] : {std::pair{MSG_T_TEXT, &notice}, {MSG_T_PROMPT, &text}}) {
    const ToolMessage parameters = ToolMessage().setText(0, content->c_str());
    routing.deliveries.push_back({*ui, ownMessage(tag, kUi, parameters)});
  }
}

Routing Router::awaitTester(bool comes) {
  testerComes = comes;
  Routing routing;
  if (!comes) {
    for (const Message& command : account.takeKept()) {
      giveBack(command, kNoTester, routing);
    }
  }
  return routing;
}

Routing Router::shutDown(ShutdownReason reason, int graceMilliseconds) {
  shuttingDown = true;
  Routing routing;
  const ToolMessage order =
      numbers({static_cast<int>(reason), self.pid, self.port, graceMilliseconds});
  for (const auto& [client, tool] : tools) {
    routing.deliveries.push_back({client, ownMessage(MSG_SHUTDOWN, tool.type, order)});
  }
  return routing;
}

Routing Router::shutDownNow(Targets targets) const {
  Routing routing;
  for (const auto& [client, tool] : tools) {
    if (targets == Targets::kAll || !tool.answered) {
      routing.deliveries.push_back({client, ownMessage(MSG_SHUTDOWN_NOW, tool.type)});
    }
  }
  return routing;
}

bool Router::allAnswered() const {
  return std::all_of(tools.begin(), tools.end(),
                     [](const auto& entry) { return entry.second.answered; });
}

int Router::toolTypeOf(ClientId client) const {
  const auto tool = tools.find(client);
  return tool != tools.end() ? tool->second.type : 0;
}

bool Router::isThere(int toolType) const {
  return clientOf(toolType) != nullptr || played.contains(toolType);
}

const ClientId* Router::clientOf(int toolType) const {
  for (const auto& [client, tool] : tools) {
    if (tool.type == toolType) {
      return &client;
    }
  }
  return nullptr;
}

}  // namespace postmaster
