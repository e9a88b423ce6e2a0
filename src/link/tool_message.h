#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

/// Name of a tool type, such as "NELKV"; null for an unknown one.
const char* toolTypeName(int toolType);

/// Whether a process may connect as `toolType`: every known type but the Postmaster's own.
bool mayConnectAs(int toolType);

/// One row a message and direction: the only place that says which parameters a message has. The
/// encoder, the decoder, the release of decoded data and the Postmaster's trace all walk it.

/// Which side of the user interface a row belongs to. A number may stand in both (9001).
enum class MessageDirection { kSentByUi, kReceivedByUi };

/// Letters of a row's shape.
enum ParameterLetter : char {
  kStringParameter = 'S',
  kIntegerParameter = 'I',
  kListParameter = 'L',
};

/// A message has no more parameters than a decoded message has words.
inline constexpr int kMaxParameters = 5;

struct MessageRow {
  int tag;
  MessageDirection direction;
  std::string_view name;
  std::string_view shape;  ///< one letter a parameter: S string, I integer, L string list
};

/// All rows, those sent by the user interface first, ascending by tag within a direction.
std::span<const MessageRow> messageTable();

/// The row of `tag` in `direction`; null for an unknown one.
const MessageRow* findMessage(int tag, MessageDirection direction);

/// Node of a string list in a message.
struct StringListNode {
  StringListNode* next = nullptr;
  std::int32_t length = 0;  ///< bytes of `text` without its NUL; not read when a list is encoded
  char* text = nullptr;     ///< NUL-terminated; null counts as empty when a list is encoded
};

/// Parameters of one message in their order: an integer by value, a string as the pointer to its
/// NUL-terminated text, a string list as the pointer to its first node (null when empty).
///
/// A decoded record owns what its words point to until FreeMessage; dialogs copy what they keep.
/// A record that is to be sent only refers to texts and lists of its maker.
struct ToolMessage {
  std::intptr_t w0 = 0;
  std::intptr_t w1 = 0;
  std::intptr_t w2 = 0;
  std::intptr_t w3 = 0;
  std::intptr_t w4 = 0;

  /// Word number `index`, 0 to 4; another index ends the process.
  std::intptr_t& word(int index) { return this->*kWords[checked(index)]; }
  std::intptr_t word(int index) const { return this->*kWords[checked(index)]; }

  /// The words by kind. text() and list() may be null; the caller knows the message's shape.
  const char* text(int index) const { return std::bit_cast<const char*>(word(index)); }
  std::int32_t number(int index) const { return static_cast<std::int32_t>(word(index)); }
  const StringListNode* list(int index) const {
    return std::bit_cast<const StringListNode*>(word(index));
  }

  /// Fill a record that is to be sent. Texts and lists stay the caller's and must outlive the
  /// encoding; null is an empty text, an empty list.
  ToolMessage& setText(int index, const char* text) {
    word(index) = std::bit_cast<std::intptr_t>(text);
    return *this;
  }
  ToolMessage& setNumber(int index, std::int32_t number) {
    word(index) = number;
    return *this;
  }
  ToolMessage& setList(int index, const StringListNode* head) {
    word(index) = std::bit_cast<std::intptr_t>(head);
    return *this;
  }

 private:
  static const std::array<std::intptr_t ToolMessage::*, kMaxParameters> kWords;

  static std::size_t checked(int index) {
    if (index < 0 || index >= kMaxParameters) {
      std::abort();
    }
    return static_cast<std::size_t>(index);
  }
};

inline constexpr std::array<std::intptr_t ToolMessage::*, kMaxParameters> ToolMessage::kWords = {
    &ToolMessage::w0, &ToolMessage::w1, &ToolMessage::w2, &ToolMessage::w3, &ToolMessage::w4};

/// Owns a string list that is built to be sent.
class StringList {
 public:
  StringList() = default;
  StringList(const StringList&) = delete;
  StringList& operator=(const StringList&) = delete;
  ~StringList();

  /// Adds a copy of `text` at the end.
  void append(std::string_view text);

  /// First node, null while the list is empty. Stays the list's own.
  const StringListNode* head() const { return first; }

 private:
  StringListNode* first = nullptr;
  StringListNode* last = nullptr;
};

/// Makes a node of its own with a copy of `text`; null when memory ran out.
StringListNode* makeStringListNode(std::string_view text);

/// Makes a NUL-terminated copy of `text` with new[]; null when memory ran out.
char* copyText(std::string_view text);

/// Deletes all nodes from `head` on with their texts. Null is allowed.
void freeStringList(StringListNode* head);
