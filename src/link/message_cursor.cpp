// Encodings of the three kinds of parameters, laid end to end without alignment: a 32-bit word, a
// counted string without terminator, a counted list of such strings.

#include "link/message_cursor.h"

#include <cstring>
#include <limits>

#include "link/wire.h"

namespace {

std::string_view viewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

}  // namespace

bool EncodeCursor::writeBytes(const void* bytes, std::size_t count) {
  if (count > limit - position) {
    return false;
  }
  if (count > 0) {
    std::memcpy(base + position, bytes, count);
  }
  position += count;
  return true;
}

bool EncodeCursor::writeInteger(std::int32_t value) {
  return writeBytes(&value, kWordBytes);
}

bool EncodeCursor::writeString(const char* text) {
  const std::string_view view = viewOf(text);
  if (view.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    return false;
  }
  return writeInteger(static_cast<std::int32_t>(view.size())) &&
         writeBytes(view.data(), view.size());
}

bool EncodeCursor::writeList(const StringListNode* head) {
  std::int32_t count = 0;
  for (const StringListNode* node = head; node != nullptr; node = node->next) {
    ++count;
  }
  bool written = writeInteger(count);
  for (const StringListNode* node = head; written && node != nullptr; node = node->next) {
    written = writeString(node->text);
  }
  return written;
}

ReadResult DecodeCursor::readInteger(std::int32_t& value) {
  const std::int64_t start = position;
  position += kWordBytes;
  if (position > length) {
    return ReadResult::kPastEnd;
  }
  std::memcpy(&value, base + start, kWordBytes);
  return ReadResult::kRead;
}

ReadResult DecodeCursor::readText(std::string_view& text) {
  std::int32_t count = 0;
  if (const ReadResult result = readInteger(count); result != ReadResult::kRead) {
    return result;
  }
  const std::int64_t start = position;
  position += count;
  if (count < 0 || position > length) {
    return ReadResult::kPastEnd;
  }
  text = std::string_view(base + start, static_cast<std::size_t>(count));
  return ReadResult::kRead;
}

ReadResult DecodeCursor::readString(char*& text) {
  std::string_view view;
  const ReadResult result = readText(view);
  if (result != ReadResult::kRead) {
    return result;
  }
  text = copyText(view);
  return text != nullptr ? ReadResult::kRead : ReadResult::kNoMemory;
}

ReadResult DecodeCursor::readList(StringListNode*& head) {
  std::int32_t count = 0;
  ReadResult result = readInteger(count);
  if (result == ReadResult::kRead && count < 0) {
    position += count;
    return ReadResult::kPastEnd;
  }
  // Each element takes at least its count from the payload, so a false count soon ends the loop.
  StringListNode** tail = &head;
  for (std::int32_t i = 0; result == ReadResult::kRead && i < count; ++i) {
    std::string_view view;
    result = readText(view);
    if (result == ReadResult::kRead) {
      *tail = makeStringListNode(view);
      if (*tail == nullptr) {
        return ReadResult::kNoMemory;
      }
      tail = &(*tail)->next;
    }
  }
  return result;
}
