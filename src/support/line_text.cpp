#include "support/line_text.h"

bool isControlCharacter(char c) {
  constexpr unsigned char kDelete = 0x7F;
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == kDelete;
}

std::string joinLines(std::string_view text, const std::function<void(std::string&)>& join) {
  text = text.substr(0, text.find_last_not_of("\r\n") + 1);
  std::string joined;
  joined.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n') {
      join(joined);
    } else if (c != '\r' || text[i + 1] != '\n') {
      joined += isControlCharacter(c) && c != '\t' ? ' ' : c;
    }
  }
  return joined;
}

std::string singleLine(std::string_view text) {
  return joinLines(text, [](std::string& joined) { joined += ' '; });
}
