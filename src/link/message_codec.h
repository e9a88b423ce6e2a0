#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

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

/// Writes parameters end to end. Each write returns false, and writes nothing, once the parameter
/// would pass the end of the buffer.
class EncodeCursor {
 public:
  explicit EncodeCursor(std::span<char> buffer) : base(buffer.data()), limit(buffer.size()) {}

  bool writeInteger(std::int32_t value);
  bool writeString(const char* text);          ///< null counts as empty
  bool writeList(const StringListNode* head);  ///< lengths are taken from the texts

  /// Bytes written so far.
  std::size_t written() const { return position; }

 private:
  bool writeBytes(const void* bytes, std::size_t count);

  char* base;
  std::size_t position = 0;
  std::size_t limit;
};

/// What a read came to.
enum class ReadResult { kRead, kNoMemory, kPastEnd };

/// Reads parameters end to end, never outside `readable`. After kPastEnd the position stands where
/// following the count or reading the word would have led.
class DecodeCursor {
 public:
  explicit DecodeCursor(std::span<const char> readable)
      : base(readable.data()), length(static_cast<std::int64_t>(readable.size())) {}

  ReadResult readInteger(std::int32_t& value);
  /// Stores a copy made by copyText.
  ReadResult readString(char*& text);
  /// Stores the first node, null for an empty list. What was read before a failure is stored too.
  ReadResult readList(StringListNode*& head);

  std::int64_t at() const { return position; }

 private:
  ReadResult readText(std::string_view& text);

  const char* base;
  std::int64_t position = 0;
  std::int64_t length;
};
