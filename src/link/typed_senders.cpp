// One way from parameters to the link for all messages that have some.

#include "link/typed_senders.h"

#include <unistd.h>
#include <cstdio>
#include <span>

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/wire.h"

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
