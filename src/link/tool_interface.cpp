// The link's state machine, sending and receiving. The state decides what may go out: everything
// when connected, only messages to the Postmaster before and after, nothing once it closed the
// link. Nothing is allocated, and entering again is harmless: the one buffer of what is received is
// done with before the tool's handler can receive again.

#include "link/tool_interface.h"

#include <unistd.h>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "link/link_exit.h"
#include "link/link_settings.h"
#include "link/message_numbers.h"
#include "link/wire.h"

int g_OwnToolType = -1;
int g_ToolState = LINK_IDLE;
int g_ToolSocket = -1;
int g_BrokenReported = 0;
std::unique_ptr<SocketControlClient> g_SocketClient;
std::unique_ptr<CatchSignalsClient> g_SignalClient;

namespace {

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
  g_SignalClient->ArmTimer(linkSettings().handshakeSeconds);
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
