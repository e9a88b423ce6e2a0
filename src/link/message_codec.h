#pragma once

#include <array>
#include <span>

#include "link/message_table.h"
#include "link/tool_message.h"
#include "link/wire.h"

/// Parameters of a message to and from payload bytes, and the release of what decoding allocated.
/// All of it walks the message's row in the table; a tag without a row has no parameters.

/// Results of decoding.
enum DecodeResult : int {
  kDecodeOk = 0,
  kDecodeFailed = -1,  ///< never returned; reported by the message handler
  kDecodeNoMemory = -2,
  kDecodeLengthWrong = -3,
  kDecodeNoMethod = -4,  ///< never returned; reported by the message handler
};

/// Result of encoding when a parameter does not fit.
inline constexpr int kEncodeFailed = -10;

/// The one payload buffer of all encoders. It holds a payload from encoding until the send.
extern std::array<char, kEncodeBufferBytes> g_EncodeBuffer;

/// Writes the parameters of `tag` into `buffer`. The direction tells a number apart that both sides
/// send: a tester encodes what the user interface receives. Returns the bytes written, or
/// kEncodeFailed when they do not fit.
int EncodeMessage(int tag, const ToolMessage& message, std::span<char> buffer,
                  MessageDirection direction = MessageDirection::kSentByUi);

/// Reads the parameters of `tag`. Each string and list is allocated, and a NUL in a text becomes a
/// blank; words that the message does not use stay as they were. The payload holds `length` bytes,
/// but never more than kPayloadBufferBytes: an announced length beyond that is an error, and so is
/// a null payload unless `length` is 0.
///
/// Returns kDecodeOk; kDecodeNoMemory, which leaves what was allocated in its words; or
/// kDecodeLengthWrong, after one line on standard error, when the parameters do not end where the
/// payload does or a count leads out of it. The words are null again then.
int DecodeMessage(int tag, const char* payload, int length, ToolMessage* out,
                  MessageDirection direction = MessageDirection::kReceivedByUi);

/// Releases what decoding `tag` allocated and sets the words to null.
void FreeMessage(int tag, ToolMessage* message,
                 MessageDirection direction = MessageDirection::kReceivedByUi);
