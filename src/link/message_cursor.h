#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "link/tool_message.h"

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
