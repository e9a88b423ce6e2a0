// One walk over a message's row for each of encoding, decoding and release. Words that hold
// pointers are null from the start of decoding on, so that release is safe after any result.

#include "link/message_codec.h"

#include <algorithm>
#include <bit>
#include <cinttypes>
#include <cstdio>

#include "link/message_cursor.h"

std::array<char, kEncodeBufferBytes> g_EncodeBuffer;

namespace {

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
