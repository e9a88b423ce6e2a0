// What the Postmaster writes for people: complaints on standard error, and frames as lines.
#include "postmaster/reports.h"

#include "link/message_codec.h"
#include "link/message_numbers.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <memory>
#include <utility>

namespace postmaster {

namespace {

constexpr std::chrono::seconds kQuietTime{1};
constexpr std::size_t kMaxRemembered = 64;
constexpr std::size_t kMaxShownText = 120;
constexpr int kMaxShownItems = 16;

std::string escape(char c) {
  switch (c) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    case '"':
    case '\\':
      return std::string("\\") + c;
    default:
      break;
  }
  if (c >= ' ' && c <= '~') {
    return {c};
  }
  std::array<char, 5> code{};
  std::snprintf(code.data(), code.size(), "\\x%02x", static_cast<unsigned char>(c));
  return code.data();
}

/// Describes the parameters of a payload one after the other. Each step returns false when the
/// payload does not hold the parameter.
class ParameterWriter {
 public:
  ParameterWriter(std::string_view payload, std::string& output) : cursor(payload), line(output) {}

  bool write(char letter) {
    switch (letter) {
      case kIntegerParameter:
        return writeInteger();
      case kListParameter:
        return writeList();
      default:
        return writeText();
    }
  }
  std::int64_t at() const { return cursor.at(); }

 private:
  bool writeInteger() {
    std::int32_t value = 0;
    const bool held = cursor.readInteger(value) == ReadResult::kRead;
    line += held ? std::to_string(value) : "";
    return held;
  }

  bool writeText() {
    const std::int64_t start = cursor.at() + kCountBytes;
    char* text = nullptr;
    const bool held = cursor.readString(text) == ReadResult::kRead;
    const std::unique_ptr<char[]> owner(text);
    // The copy may hold NULs of its own: its size is what the cursor has moved.
    line += held ? quoteText({text, static_cast<std::size_t>(cursor.at() - start)}) : "";
    return held;
  }

  bool writeList() {
    StringListNode* head = nullptr;
    const bool held = cursor.readList(head) == ReadResult::kRead;
    const std::unique_ptr<StringListNode, decltype(&freeStringList)> owner(head, &freeStringList);
    line += '[';
    int items = 0;
    for (const StringListNode* node = head; node != nullptr; node = node->next, ++items) {
      if (items < kMaxShownItems) {
        line += items > 0 ? ", " : "";
        line += quoteText({node->text, static_cast<std::size_t>(node->length)});
      }
    }
    line += items > kMaxShownItems ? "... " + std::to_string(items) + " items]" : "]";
    return held;
  }

  static constexpr int kCountBytes = 4;

  DecodeCursor cursor;
  std::string& line;
};

}  // namespace

Complaints::Complaints(std::ostream& stream, Clock timeSource)
    : output(stream), clock(std::move(timeSource)) {}

Complaints::~Complaints() {
  flush();
}

void Complaints::say(const std::string& line) {
  const TimePoint now = clock();
  const auto known = recent.find(line);
  if (known == recent.end()) {
    if (recent.size() >= kMaxRemembered) {
      flush();
    }
    write(line, 0);
    recent[line] = {now, 0};
    return;
  }
  Entry& entry = known->second;
  if (now - entry.written < kQuietTime) {
    ++entry.repetitions;
    return;
  }
  write(line, entry.repetitions);
  entry = {now, 0};
}

void Complaints::flush() {
  for (const auto& [line, entry] : recent) {
    if (entry.repetitions > 0) {
      write(line, entry.repetitions);
    }
  }
  recent.clear();
}

void Complaints::write(const std::string& line, int repetitions) {
  output << "nelmpm: " << line;
  if (repetitions > 0) {
    output << " [" << repetitions << " more since the last]";
  }
  output << std::endl;
}

std::string quoteText(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text.substr(0, kMaxShownText)) {
    quoted += escape(c);
  }
  quoted += '"';
  if (text.size() > kMaxShownText) {
    quoted += "... " + std::to_string(text.size()) + " bytes";
  }
  return quoted;
}

std::string describeMessage(const Envelope& message) {
  const FrameHeader& header = message.header;
  const bool directed = header.kind == kFrameDirected;
  std::string line = toolName(header.sender) + " -> " + (directed ? toolName(header.dest) : "*") +
                     " " + messageLabel(header);
  ParameterWriter writer(message.payload, line);
  const MessageRow* row = rowOf(header);
  for (const char letter : row != nullptr ? row->shape : std::string_view{}) {
    line += ' ';
    if (!writer.write(letter)) {
      return line + "<malformed, " + std::to_string(message.payload.size()) + " bytes in all>";
    }
  }
  const std::int64_t rest = static_cast<std::int64_t>(message.payload.size()) - writer.at();
  if (rest > 0) {
    line += " <" + std::to_string(rest) + " bytes more>";
  }
  return line;
}

std::string formatTime(std::chrono::system_clock::time_point time) {
  using std::chrono::duration_cast;
  using std::chrono::milliseconds;
  const auto second = std::chrono::floor<std::chrono::seconds>(time);
  const std::time_t whole = std::chrono::system_clock::to_time_t(second);
  std::tm local{};
  localtime_r(&whole, &local);
  std::array<char, 32> text{};
  const std::size_t used = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
  const auto rest = static_cast<int>(duration_cast<milliseconds>(time - second).count());
  std::snprintf(text.data() + used, text.size() - used, ".%03d", rest);
  return text.data();
}

}  // namespace postmaster
