// A user interface without a display: it sends each text back as a command and each list of bits as
// the answer, until it is told to leave.

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/typed_senders.h"

namespace {

bool isLeaving = false;

void handleMessage(int /*sender*/, int tag, int length, const char* payload) {
  ToolMessage message;
  if (DecodeMessage(tag, payload, length, &message) != kDecodeOk) {
    return;
  }
  if (tag == MSG_T_TEXT) {
    sendCommand(message.text(0));
  } else if (tag == MSG_T_ASK_BITS) {
    sendBitsAnswer(message.list(2));
  } else if (tag == MSG_T_EXIT) {
    isLeaving = true;
  }
  FreeMessage(tag, &message);
}

}  // namespace

int main() {
  setMessageHandler(handleMessage);
  if (ToolInit(NELKVUI) != 0) {
    return 1;
  }
  ToolBroadcast(MSG_TOOL_READY, nullptr, 0);
  while (!isLeaving) {
    if (ToolReceive(kReceiveBlock) < 0) {
      return 1;
    }
  }
  return ToolExit(NELKVUI);
}
