// A line is read by a descent along the syntax: a mark, a class and its results, or a string. A
// reading function takes what it reads off the front of the rest of the line and returns nothing
// when the rest begins otherwise; the first fault makes the whole line garbage.
//
// More is accepted than the manual states, because GDB writes more: results may lack their names on
// every level, and a list may mix both.

#include "gdb/mi/reader.h"

#include <algorithm>
#include <array>
#include <optional>

namespace gdb::mi {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isOctalDigit(char c) {
  return c >= '0' && c <= '7';
}

/// Letters, digits, "-" and "_", of which classes of records consist.
bool isClassCharacter(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
}

/// An escape of one letter and the byte it stands for.
struct Escape {
  char letter;
  char byte;
};
constexpr std::array kEscapes{Escape{'n', '\n'},   Escape{'t', '\t'}, Escape{'r', '\r'},
                              Escape{'b', '\b'},   Escape{'f', '\f'}, Escape{'a', '\a'},
                              Escape{'e', '\x1b'}, Escape{'v', '\v'}};

class LineReader {
 public:
  explicit LineReader(std::string_view line) : rest(line) {}

  std::optional<Record> read() {
    Record record;
    record.token = take(isDigit);
    const auto kind = kindOf(rest.empty() ? '\0' : rest.front());
    if (!kind) {
      return std::nullopt;
    }
    rest.remove_prefix(1);
    record.kind = *kind;
    const bool isStream = *kind == Record::Kind::kConsole || *kind == Record::Kind::kTarget ||
                          *kind == Record::Kind::kLog;
    return (isStream ? readStream(record) : readClass(record)) && rest.empty()
               ? std::optional(std::move(record))
               : std::nullopt;
  }

 private:
  static std::optional<Record::Kind> kindOf(char mark) {
    switch (mark) {
      case '^':
        return Record::Kind::kResult;
      case '*':
        return Record::Kind::kExec;
      case '+':
        return Record::Kind::kStatus;
      case '=':
        return Record::Kind::kNotify;
      case '~':
        return Record::Kind::kConsole;
      case '@':
        return Record::Kind::kTarget;
      case '&':
        return Record::Kind::kLog;
      default:
        return std::nullopt;
    }
  }

  bool readStream(Record& record) {
    auto string = readString();
    if (string) {
      record.text = std::move(*string);
    }
    return string.has_value();
  }

  bool readClass(Record& record) {
    record.name = take(isClassCharacter);
    std::vector<Value::Element> results;
    while (takeIf(',')) {
      auto element = readElement(0);
      if (!element) {
        return false;
      }
      results.push_back(std::move(*element));
    }
    record.results = Value(Value::Kind::kTuple, std::move(results));
    return !record.name.empty();
  }

  std::optional<Value::Element> readElement(int depth) {
    Value::Element element;
    const auto isNameCharacter = [](char c) {
      return std::string_view("=,\"{}[]").find(c) == std::string_view::npos;
    };
    element.name = take(isNameCharacter);
    if (!element.name.empty() && !takeIf('=')) {
      return std::nullopt;
    }
    auto value = readValue(depth);
    if (!value) {
      return std::nullopt;
    }
    element.value = std::move(*value);
    return element;
  }

  std::optional<Value> readValue(int depth) {
    if (takeIf('{')) {
      return readElements(Value::Kind::kTuple, '}', depth + 1);
    }
    if (takeIf('[')) {
      return readElements(Value::Kind::kList, ']', depth + 1);
    }
    auto string = readString();
    return string ? std::optional(Value(std::move(*string))) : std::nullopt;
  }

  /// What stands behind the opening bracket.
  std::optional<Value> readElements(Value::Kind kind, char end, int depth) {
    std::vector<Value::Element> elements;
    if (depth > Reader::kMaxDepth) {
      return std::nullopt;
    }
    if (!takeIf(end)) {
      do {
        auto element = readElement(depth);
        if (!element) {
          return std::nullopt;
        }
        elements.push_back(std::move(*element));
      } while (takeIf(','));
      if (!takeIf(end)) {
        return std::nullopt;
      }
    }
    return Value(kind, std::move(elements));
  }

  std::optional<std::string> readString() {
    if (!takeIf('"')) {
      return std::nullopt;
    }
    std::string bytes;
    for (;;) {
      const std::size_t plain = rest.find_first_of("\"\\");
      if (plain == std::string_view::npos) {
        return std::nullopt;
      }
      bytes += rest.substr(0, plain);
      rest.remove_prefix(plain);
      if (takeIf('"')) {
        return bytes;
      }
      rest.remove_prefix(1);
      if (rest.empty()) {
        return std::nullopt;
      }
      bytes += readEscape();
    }
  }

  /// What stands behind a backslash, of which there is at least one character.
  char readEscape() {
    constexpr std::size_t kMaxDigits = 3;
    const auto digits = rest.substr(0, kMaxDigits);
    const auto count =
        static_cast<std::size_t>(std::ranges::find_if_not(digits, isOctalDigit) - digits.begin());
    unsigned code = 0;
    for (const char digit : digits.substr(0, count)) {
      code = code * 8 + static_cast<unsigned>(digit - '0');
    }
    const char letter = rest.front();
    rest.remove_prefix(std::max<std::size_t>(count, 1));
    if (count > 0) {
      return static_cast<char>(code);
    }
    const auto found = std::ranges::find(kEscapes, letter, &Escape::letter);
    return found == kEscapes.end() ? letter : found->byte;
  }

  template <class Predicate>
  std::string take(Predicate belongs) {
    const auto end = std::ranges::find_if_not(rest, belongs);
    std::string taken(rest.begin(), end);
    rest.remove_prefix(taken.size());
    return taken;
  }

  bool takeIf(char c) {
    const bool isThere = !rest.empty() && rest.front() == c;
    rest.remove_prefix(isThere ? 1 : 0);
    return isThere;
  }

  std::string_view rest;
};

Record garbage(std::string_view line) {
  return {.kind = Record::Kind::kGarbage, .text = std::string(line)};
}

}  // namespace

Record readLine(std::string_view line) {
  if (line == "(gdb) " || line == "(gdb)") {
    return {.kind = Record::Kind::kPrompt};
  }
  auto record = LineReader(line).read();
  return record ? std::move(*record) : garbage(line);
}

std::vector<Record> Reader::feed(std::string_view bytes) {
  std::vector<Record> records;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    const std::string_view part = bytes.substr(0, end);
    const std::size_t room = kMaxLine - line.size();
    line += part.substr(0, room);
    isTooLong = isTooLong || part.size() > room;
    if (end == std::string_view::npos) {
      break;
    }
    records.push_back(isTooLong ? garbage(line) : readLine(line));
    line.clear();
    isTooLong = false;
    bytes.remove_prefix(end + 1);
  }
  if (line.capacity() > kMaxLine / 4 && line.empty()) {
    line.shrink_to_fit();  // one huge answer does not cost its memory for ever
  }
  return records;
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      result += {'\\', c};
    } else if (c == '\n') {
      result += "\\n";
    } else if (code < 0x20) {
      result += {'\\', static_cast<char>('0' + code / 64), static_cast<char>('0' + code / 8 % 8),
                 static_cast<char>('0' + code % 8)};
    } else {
      result += c;
    }
  }
  return result + '"';
}

}  // namespace gdb::mi
