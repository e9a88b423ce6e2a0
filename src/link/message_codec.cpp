// One walk over a message's row for each of encoding, decoding and release. Words that hold
// pointers are null from the start of decoding on, so that release is safe after any result. The
// three kinds of parameters are laid end to end without alignment: a 32-bit word, a counted string
// without terminator, a counted list of such strings.

#include "link/message_codec.h"

#include <algorithm>
#include <bit>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <limits>

std::array<char, kEncodeBufferBytes> g_EncodeBuffer;

namespace {

std::string_view viewOf(const char* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

std::string_view shapeOf(MessageDirection direction, int tag) {
  const MessageRow* const row = findMessage(tag, direction);
  return row != nullptr ? row->shape : std::string_view();
}

bool writeParameter(EncodeCursor& cursor, char letter, const ToolMessage& message, int index) {
  switch (letter) {
    case kIntegerParameter:
      return cursor.writeInteger(message.number(index));
    case kListParameter:
      return cursor.writeList(message.list(index));
    default:
      return cursor.writeString(message.text(index));
  }
}

// A NUL would cut the text for all who read it.
void blankNuls(char* text, std::int64_t length) {
  std::replace(text, text + length, '\0', ' ');
}

ReadResult readParameter(DecodeCursor& cursor, char letter, std::intptr_t& word) {
  ReadResult result = ReadResult::kRead;
  if (letter == kIntegerParameter) {
    std::int32_t value = 0;
    result = cursor.readInteger(value);
    if (result == ReadResult::kRead) {
      word = value;
    }
  } else if (letter == kListParameter) {
    StringListNode* head = nullptr;
    result = cursor.readList(head);
    word = std::bit_cast<std::intptr_t>(head);
    for (StringListNode* node = head; node != nullptr; node = node->next) {
      blankNuls(node->text, node->length);
    }
  } else {
    const std::int64_t textAt = cursor.at() + kWordBytes;
    char* text = nullptr;
    result = cursor.readString(text);
    word = std::bit_cast<std::intptr_t>(text);
    if (result == ReadResult::kRead) {
      blankNuls(text, cursor.at() - textAt);
    }
  }
  return result;
}

void freeShape(std::string_view shape, ToolMessage& message) {
  for (int i = 0; i < static_cast<int>(shape.size()); ++i) {
    const char letter = shape[static_cast<std::size_t>(i)];
    std::intptr_t& word = message.word(i);
    if (letter == kIntegerParameter) {
      continue;
    }
    if (letter == kListParameter) {
      freeStringList(std::bit_cast<StringListNode*>(word));
    } else {
      delete[] std::bit_cast<char*>(word);
    }
    word = 0;
  }
}

void clearPointers(std::string_view shape, ToolMessage& message) {
  for (int i = 0; i < static_cast<int>(shape.size()); ++i) {
    if (shape[static_cast<std::size_t>(i)] != kIntegerParameter) {
      message.word(i) = 0;
    }
  }
}

}  // namespace

int EncodeMessage(int tag, const ToolMessage& message, std::span<char> buffer,
                  MessageDirection direction) {
  EncodeCursor cursor(buffer);
  int index = 0;
  for (const char letter : shapeOf(direction, tag)) {
    if (!writeParameter(cursor, letter, message, index)) {
      return kEncodeFailed;
    }
    ++index;
  }
  return static_cast<int>(cursor.written());
}

int DecodeMessage(int tag, const char* payload, int length, ToolMessage* out,
                  MessageDirection direction) {
  const std::string_view shape = shapeOf(direction, tag);
  clearPointers(shape, *out);
  const int readable = payload == nullptr ? 0 : std::clamp(length, 0, kPayloadBufferBytes);
  DecodeCursor cursor(std::span(payload, static_cast<std::size_t>(readable)));
  ReadResult result = ReadResult::kRead;
  for (int i = 0; result == ReadResult::kRead && i < static_cast<int>(shape.size()); ++i) {
    result = readParameter(cursor, shape[static_cast<std::size_t>(i)], out->word(i));
  }
  if (result == ReadResult::kNoMemory) {
    return kDecodeNoMemory;
  }
  if (result == ReadResult::kPastEnd || cursor.at() != length) {
    std::fprintf(stderr,
                 "**ERR:Message Decoder : Expected BufferLength=%" PRId64 ", Got Length=%d\n",
                 cursor.at(), length);
    freeShape(shape, *out);
    return kDecodeLengthWrong;
  }
  return kDecodeOk;
}

void FreeMessage(int tag, ToolMessage* message, MessageDirection direction) {
  freeShape(shapeOf(direction, tag), *message);
}

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
