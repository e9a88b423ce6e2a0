// Frames and times as people read them.
#include "frames/description.h"

#include "link/message_numbers.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace frames {

namespace {

constexpr std::size_t kMaxShownText = 120;
constexpr std::size_t kMaxShownItems = 16;

/// Since 1900: what the clock's type can hold.
constexpr int kLastYear = 300;
constexpr std::size_t kTimeLength = std::string_view("2024-03-01 12:34:56.789").size();

std::string escape(char c, Style style) {
  switch (c) {
    case '\n':
      return "\\n";
    case '"':
    case '\\':
      return std::string("\\") + c;
    default:
      break;
  }
  if (style == Style::kRaw) {
    return {c != '\0' ? c : ' '};
  }
  if (c >= ' ' && c <= '~') {
    return {c};
  }
  if (c == '\r' || c == '\t') {
    return c == '\r' ? "\\r" : "\\t";
  }
  std::array<char, 5> code{};
  std::snprintf(code.data(), code.size(), "\\x%02x", static_cast<unsigned char>(c));
  return code.data();
}

std::string quoteText(std::string_view text, Style style) {
  const bool isCut = style == Style::kCut && text.size() > kMaxShownText;
  std::string quoted = "\"";
  for (const char c : isCut ? text.substr(0, kMaxShownText) : text) {
    quoted += escape(c, style);
  }
  quoted += '"';
  return isCut ? quoted + "... " + std::to_string(text.size()) + " bytes" : quoted;
}

struct ValueText {
  Style style;

  std::string operator()(std::int32_t number) const { return std::to_string(number); }
  std::string operator()(const std::string& text) const { return quoteText(text, style); }
  std::string operator()(const std::vector<std::string>& items) const {
    const bool isCut = style == Style::kCut && items.size() > kMaxShownItems;
    std::string list = "[";
    for (std::size_t i = 0; i < (isCut ? kMaxShownItems : items.size()); ++i) {
      list += (i > 0 ? ", " : "") + quoteText(items[i], style);
    }
    return list + (isCut ? "... " + std::to_string(items.size()) + " items]" : "]");
  }
};

}  // namespace

std::string describeValue(const Value& value, Style style) {
  return std::visit(ValueText{style}, value);
}

std::string describeMessage(const Envelope& message, Style style) {
  const FrameHeader& header = message.header;
  const bool directed = header.kind == kFrameDirected;
  std::string line = toolName(header.sender) + " -> " + (directed ? toolName(header.dest) : "*") +
                     " " + messageLabel(header);
  const Parameters parameters = parametersOf(message);
  for (const Value& value : parameters.values) {
    line += ' ' + describeValue(value, style);
  }
  if (!parameters.isComplete) {
    return line + (parameters.endsInPart ? "" : " ") + "<malformed, " +
           std::to_string(message.payload.size()) + " bytes in all>";
  }
  if (parameters.bytesLeft > 0) {
    line += " <" + std::to_string(parameters.bytesLeft) + " bytes more>";
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

std::optional<std::chrono::system_clock::time_point> parseTime(std::string_view text) {
  const std::string whole(text);
  std::tm local{};
  local.tm_isdst = -1;
  const char* const rest = strptime(whole.c_str(), "%Y-%m-%d %H:%M:%S.", &local);
  if (rest == nullptr || whole.size() != kTimeLength || local.tm_year < 0 ||
      local.tm_year > kLastYear ||
      std::string_view(rest).find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  return std::chrono::system_clock::from_time_t(std::mktime(&local)) +
         std::chrono::milliseconds(std::atoi(rest));
}

}  // namespace frames
