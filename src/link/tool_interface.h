#pragma once

#include <array>
#include <memory>

#include "link/signal_client.h"
#include "link/socket_client.h"
#include "link/tool_message.h"

/// The layer between a tool and its socket: connects to the Postmaster, sends to other tools
/// through it, reads one message at a time and keeps the state of the link. Everything runs on one
/// thread; ToolReceive may be entered again from within the message handler.

/// State of the link.
enum LinkState : int {
  LINK_IDLE = 0,        ///< before ToolInit
  LINK_CONNECTING = 1,  ///< connection asked for, no answer yet
  LINK_CONNECTED = 2,   ///< running
  LINK_LEAVING = 3,     ///< left, or broken
  LINK_CLOSED = 4,      ///< refused or shut down
  LINK_SHUTDOWN = 5,    ///< the process is ending
};

/// How ToolReceive waits; any other mode polls until a frame is there.
enum ReceiveMode : int {
  kReceivePoll = 1,   ///< returns 0 when nothing is there
  kReceiveBlock = 2,  ///< sleeps until a frame is there
};

extern int g_OwnToolType;     ///< -1 until ToolInit; the sender in every frame
extern int g_ToolState;       ///< a LinkState
extern int g_ToolSocket;      ///< descriptor of the connection
extern int g_BrokenReported;  ///< 1 once "Broken MPM connection" was reported, for good
extern std::unique_ptr<SocketControlClient> g_SocketClient;  ///< made by ToolInit
extern std::unique_ptr<CatchSignalsClient> g_SignalClient;   ///< made by ToolInit, before it

/// What a tool does with the messages that the link does not keep for itself. `length` is what the
/// frame announces; the payload is null when the frame carried less. It is valid until the handler
/// returns or receives again.
using MessageHandlerFunction = void (*)(int sender, int tag, int length, const char* payload);

/// Sets the tool's handler, before ToolInit. Null drops the messages.
void setMessageHandler(MessageHandlerFunction handler);

/// What a tool does between two polls while ToolInit waits for the Postmaster; it may sleep until
/// `socket` (negative without a connection) can be read. False gives the waiting up.
using WaitHook = bool (*)(int socket);

/// Sets the tool's hook, before ToolInit. Null polls without a pause.
void setWaitHook(WaitHook hook);

/// Connects as a tool of type `toolType` and waits for the Postmaster's answer. 0 on success, -1
/// on failure or when the hook gave up; may end the process on a timeout (kExitTimeout).
int ToolInit(int toolType);

/// Leaves the Postmaster and removes the name of its socket. Returns 0, or ends the process with
/// kExitLeft when there is no link to leave. The argument is not used.
int ToolExit(int toolType);

/// Directed send, see ToolPut.
int ToolSend(int dest, int tag, const void* data, int length);

/// Undirected send, see ToolPut.
int ToolBroadcast(int tag, const void* data, int length);

/// Builds a frame and sends it. Returns 0, also when the socket failed; -1 when the state does not
/// allow the send, or, after a line on standard error, when `length` is negative or above
/// kMaxPayloadBytes. Null `data` leaves the payload out whatever `length` says.
int ToolPut(int kind, int dest, int tag, const void* data, int length);

/// Reads at most one message and hands it to the tool's handler. Returns its tag; 0 when nothing
/// was there and `mode` is kReceivePoll, and for a tag of -1; -1 on a broken, refused or closed
/// link. May end the process, see ToolSystemMessage.
int ToolReceive(int mode);

/// What the next poll would find. A signal that tells of a broken link, and has not been reported,
/// counts as input.
SocketInput ToolInput();

/// Whether a poll would find a frame, bytes of one, or a broken link.
inline bool ToolHasInput() {
  return ToolInput() == SocketInput::kThere;
}

/// While ToolInput() is kNone: it changes only after one of these can be read. Negative ones are
/// none.
std::array<int, 2> ToolWakeDescriptors();

/// Changes the state by a message of the Postmaster's. Ends the process on MSG_SHUTDOWN_NOW
/// (kExitShutdownNow) and in a state without a link (kExitStateError).
int ToolSystemMessage(int tag);

/// Splits the wire form of a frame. `data` must have kPayloadBufferBytes bytes; `length` becomes
/// what the frame announces; only the bytes that it carries are stored. A frame shorter than its
/// header is reported on standard error, and taken all the same. Always returns 1.
int ToolFrameDecode(const char* text, int textLength, int* tag, int* sender, void* data,
                    int* length, int* dest);

/// Display name of a tool, "NELKVUI(PID=%d,TOOLID=%d)" and the like. Made once per process: a later
/// call returns the first name whatever its argument, save that an unknown type's is not kept.
const char* FormatToolName(int toolType);

/// Sends by kind of message, each through g_EncodeBuffer and ToolSend. All return what ToolSend
/// does, or kEncodeFailed after a line on standard error when the parameters do not fit a frame;
/// nothing is sent then. A null text counts as empty, a null list too.

int sendCommand(const char* command);                  ///< 1002 to the tester
int sendFileAnswer(const char* path);                  ///< 1008 to the tester
int sendStringAnswer(const char* text);                ///< 1004 to the tester
int sendValueAnswer(const char* digits);               ///< 1005 to the tester
int sendListAnswer(const char* choice);                ///< 1006 to the tester
int sendDirectoryAnswer(const char* directory);        ///< 1010 to the tester
int sendSignalParameterAnswer(const char* parameter);  ///< 1013 to the tester
int sendBitsAnswer(const StringListNode* bits);        ///< 1009 to the tester
int sendHelpRequest(const char* topic);                ///< 10004 to the link tool

/// Any message of the table, for tools whose messages have more parameters.
int sendMessage(MessageDirection direction, int dest, int tag, const ToolMessage& message);
