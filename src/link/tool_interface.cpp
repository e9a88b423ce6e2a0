// The link's state machine, sending and receiving. The state decides what may go out: everything
// when connected, only messages to the Postmaster before and after, nothing once it closed the
// link. Nothing is allocated, and entering again is harmless: the one buffer of what is received is
// done with before the tool's handler can receive again.

#include "link/tool_interface.h"

#include <unistd.h>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "link/message_codec.h"
#include "link/message_numbers.h"

int g_OwnToolType = -1;
int g_ToolState = LINK_IDLE;
int g_ToolSocket = -1;
int g_BrokenReported = 0;
std::unique_ptr<SocketControlClient> g_SocketClient;
std::unique_ptr<CatchSignalsClient> g_SignalClient;

namespace {

// Intended: 4 less than the header has, so a header without its last word draws no text.
constexpr int kShortFrameBytes = 16;
constexpr int kHandshakeSeconds = 20;

MessageHandlerFunction messageHandler = nullptr;
WaitHook waitHook = nullptr;

// Not on the stack: handlers nest as deep as there are boxes on the screen.
std::array<char, kMaxFrameText> receivedText;
std::array<char, kPayloadBufferBytes> receivedPayload;

void handToTool(int sender, int tag, int length, const char* payload) {
  if (messageHandler != nullptr) {
    messageHandler(sender, tag, length, payload);
  }
}

bool isSendAllowed(int dest) {
  switch (g_ToolState) {
    case LINK_CONNECTED:
      return true;
    case LINK_IDLE:
    case LINK_CONNECTING:
    case LINK_LEAVING:
      return dest == NELMPM;
    default:
      return false;
  }
}

void unlinkSocketFile() {
  if (g_SocketClient != nullptr) {
    g_SocketClient->unlinkSocketFile();
  }
}

// Intended: any flag counts, a dead child or an interrupt as much as a broken pipe, and only once
// in a run.
bool isBreakToReport() {
  return g_BrokenReported == 0 && g_SignalClient != nullptr &&
         g_SignalClient->GetSignalFlags() != 0;
}

// True for the first signal that says that the link is gone.
bool isNewlyBroken() {
  if (!isBreakToReport()) {
    return false;
  }
  g_BrokenReported = 1;
  // The name is the same for every type of tool.
  std::fprintf(stderr, "%s:**ERR:Broken MPM connection.\n", "NELKVUI");
  g_ToolState = LINK_LEAVING;
  return true;
}

// The frame of `textLength` characters, NUL included, in receivedText.
int dispatchFrame(int textLength) {
  int tag = 0;
  int sender = 0;
  int length = 0;
  int dest = 0;
  ToolFrameDecode(receivedText.data(), textLength, &tag, &sender, receivedPayload.data(), &length,
                  &dest);
  const bool isWhole = length <= (textLength - 1) / 2 - kFrameHeaderBytes;
  const char* const payload = length <= 0 || isWhole ? receivedPayload.data() : nullptr;
  switch (tag) {
    case MSG_CONNECT_OK:
      handToTool(sender, tag, length, payload);
      return ToolSystemMessage(tag);
    case MSG_CONNECT_DENIED:
    case MSG_SHUTDOWN:
    case MSG_SHUTDOWN_NOW:
      return ToolSystemMessage(tag);
    default:
      handToTool(sender, tag, length, payload);
      // What comes from outside must not read as a lost link.
      return tag != -1 ? tag : 0;
  }
}

}  // namespace

void setMessageHandler(MessageHandlerFunction handler) {
  messageHandler = handler;
}

void setWaitHook(WaitHook hook) {
  waitHook = hook;
}

int ToolInit(int toolType) {
  g_SignalClient = std::make_unique<CatchSignalsClient>();
  g_SocketClient = std::make_unique<SocketControlClient>();
  g_OwnToolType = toolType;
  if (!mayConnectAs(toolType)) {
    std::fputs("**ERR:Unrecognized tooltype\n", stderr);
    return -1;
  }
  g_ToolSocket = g_SocketClient->descriptor();
  g_ToolState = LINK_CONNECTING;
  ToolSend(NELMPM, MSG_CONNECT, nullptr, 0);
  g_SignalClient->ArmTimer(kHandshakeSeconds);
  // Intended order: the alarm is a flag, so ToolReceive, which comes first, as a rule reports a
  // broken link; the timeout below is reached only when the alarm falls between the two tests.
  while (true) {
    if (ToolReceive(kReceivePoll) == -1) {
      return -1;
    }
    // A poll nested in the handler or the hook may have read the answer.
    if (g_ToolState == LINK_CONNECTED) {
      g_SignalClient->CancelTimer();
      return 0;
    }
    if (g_SignalClient->TimerFired() != 0) {
      break;
    }
    if (waitHook != nullptr && !waitHook(g_ToolSocket)) {
      g_SignalClient->CancelTimer();
      return -1;
    }
  }
  std::fprintf(stderr, "PROCESS(PID=%d):**ERR Connection timeout. Exiting.\n", getpid());
  std::exit(kExitTimeout);
}

int ToolExit(int /*toolType*/) {
  // Intended: in every state a leaving tool removes the name on which its parent listens.
  unlinkSocketFile();
  switch (g_ToolState) {
    case LINK_IDLE:
    case LINK_CLOSED:
    case LINK_SHUTDOWN:
      std::exit(kExitLeft);
    case LINK_CONNECTING:
    case LINK_CONNECTED:
      ToolSend(NELMPM, MSG_DISCONNECT, nullptr, 0);
      g_ToolState = LINK_LEAVING;
      return 0;
    default:
      return 0;
  }
}

int ToolSend(int dest, int tag, const void* data, int length) {
  return ToolPut(kFrameDirected, dest, tag, data, length);
}

int ToolBroadcast(int tag, const void* data, int length) {
  return ToolPut(kFrameUndirected, 0, tag, data, length);
}

int ToolPut(int kind, int dest, int tag, const void* data, int length) {
  if (!isSendAllowed(dest)) {
    return -1;
  }
  std::array<char, kMaxSentFrameText> text;
  const FrameHeader header{kind, tag, g_OwnToolType, dest, length};
  const int textLength = length < 0 ? -1 : encodeFrame(header, data, text);
  if (textLength < 0) {
    std::fprintf(stderr,
                 "PROCESS(PID=%d):**ERR:Message %d with %d bytes does not fit a frame. Not sent.\n",
                 getpid(), tag, length);
    return -1;
  }
  if (g_SocketClient != nullptr) {
    // Intended: the result is not looked at; a broken connection shows at the next poll.
    g_SocketClient->SockSend(g_ToolSocket, text.data(), textLength);
  }
  return 0;
}

int ToolReceive(int mode) {
  if (g_SocketClient == nullptr) {
    return 0;
  }
  const int wait = mode == kReceiveBlock ? kWaitForever : kWaitBriefly;
  while (true) {
    const int count =
        g_SocketClient->SockRead(g_ToolSocket, receivedText.data(), kMaxFrameText, wait);
    if (count > 0) {
      return dispatchFrame(count);
    }
    if (isNewlyBroken()) {
      return -1;
    }
    if (mode == kReceivePoll) {
      return 0;
    }
  }
}

SocketInput ToolInput() {
  // Before the flags are looked at: a signal from here on wakes whoever sleeps.
  CatchSignalsClient::muteWake();
  const SocketInput input = g_SocketClient == nullptr
                                ? SocketInput::kNone
                                : g_SocketClient->pendingInput(g_ToolSocket, kMaxFrameText);
  return input != SocketInput::kThere && isBreakToReport() ? SocketInput::kThere : input;
}

std::array<int, 2> ToolWakeDescriptors() {
  return {g_SocketClient == nullptr ? -1 : g_SocketClient->awaitable(g_ToolSocket),
          CatchSignalsClient::wakeDescriptor()};
}

int ToolSystemMessage(int tag) {
  if (g_ToolState < LINK_CONNECTING || g_ToolState > LINK_CLOSED) {
    unlinkSocketFile();
    std::fprintf(stderr, "PROCESS(%d):**ERR:INTERNAL ERROR #101\n", getpid());
    std::exit(kExitStateError);
  }
  switch (tag) {
    case MSG_CONNECT_OK:
      g_ToolState = LINK_CONNECTED;
      return tag;
    case MSG_CONNECT_DENIED:
      g_ToolState = LINK_CLOSED;
      return -1;
    case MSG_SHUTDOWN:
      ToolSend(NELMPM, MSG_SHUTDOWN_ACK, nullptr, 0);
      unlinkSocketFile();
      g_ToolState = LINK_CLOSED;
      return -1;
    case MSG_SHUTDOWN_NOW:
      g_ToolState = LINK_SHUTDOWN;
      std::exit(kExitShutdownNow);
    default:
      std::fprintf(stderr, "PROCESS(%d):**ERR:INTERNAL ERROR #140:Unreachable code reached.\n",
                   getpid());
      return tag;
  }
}

int ToolFrameDecode(const char* text, int textLength, int* tag, int* sender, void* data,
                    int* length, int* dest) {
  const Frame frame =
      decodeFrame(text, textLength, {static_cast<char*>(data), kPayloadBufferBytes});
  if (frame.binaryBytes < kShortFrameBytes) {
    // Intended: not a rejection, as the text says.
    std::fprintf(stderr,
                 "%s:**ERR:Message received with illegal length information (len=%d). NOT !!! "
                 "Ignored.\n",
                 FormatToolName(g_OwnToolType), frame.binaryBytes);
  }
  *tag = frame.header.tag;
  *sender = frame.header.sender;
  *dest = frame.header.dest;
  *length = frame.header.length;
  return 1;
}

const char* FormatToolName(int toolType) {
  constexpr std::size_t kNameBytes = 80;
  static std::array<char, kNameBytes> name;
  static bool made = false;
  // Intended: the first known name stays for the process, whatever type is asked for later.
  if (!made) {
    const char* const known = toolTypeName(toolType);
    std::snprintf(name.data(), name.size(), "%s(PID=%d,TOOLID=%d)",
                  known != nullptr ? known : "-Unknown toolname-", static_cast<int>(getpid()),
                  toolType);
    made = known != nullptr;
  }
  return name.data();
}

namespace {

int sendText(int dest, int tag, const char* text) {
  return sendMessage(MessageDirection::kSentByUi, dest, tag, ToolMessage().setText(0, text));
}

}  // namespace

int sendMessage(MessageDirection direction, int dest, int tag, const ToolMessage& message) {
  const auto payload = std::span(g_EncodeBuffer).first<kMaxPayloadBytes>();
  const int length = EncodeMessage(tag, message, payload, direction);
  if (length < 0) {
    std::fprintf(stderr, "PROCESS(PID=%d):**ERR:Message %d does not fit a frame. Not sent.\n",
                 getpid(), tag);
    return length;
  }
  return ToolSend(dest, tag, g_EncodeBuffer.data(), length);
}

int sendCommand(const char* command) {
  return sendText(NELKV, MSG_UI_COMMAND, command);
}

int sendFileAnswer(const char* path) {
  return sendText(NELKV, MSG_UI_FILE, path);
}

int sendStringAnswer(const char* text) {
  return sendText(NELKV, MSG_UI_STRING, text);
}

int sendValueAnswer(const char* digits) {
  return sendText(NELKV, MSG_UI_VALUE, digits);
}

int sendListAnswer(const char* choice) {
  return sendText(NELKV, MSG_UI_LIST_CHOICE, choice);
}

int sendDirectoryAnswer(const char* directory) {
  return sendText(NELKV, MSG_UI_DIRECTORY, directory);
}

int sendSignalParameterAnswer(const char* parameter) {
  return sendText(NELKV, MSG_UI_SIGNAL_PARAM, parameter);
}

int sendBitsAnswer(const StringListNode* bits) {
  return sendMessage(MessageDirection::kSentByUi, NELKV, MSG_UI_BITS,
                     ToolMessage().setList(0, bits));
}

int sendHelpRequest(const char* topic) {
  return sendText(NELLINK, MSG_HELP_REQUEST, topic);
}
