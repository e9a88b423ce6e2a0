#include "support/text.h"

#include <algorithm>

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSameLetter);
}

bool isControlCharacter(char c) {
  constexpr unsigned char kDeleteCharacter = 0x7F;
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == kDeleteCharacter;
}

std::string trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n\f\v";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) {
    return "";
  }
  return std::string(text.substr(first, text.find_last_not_of(kBlanks) - first + 1));
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

zLabelText takeMnemonic(std::string_view label) {
  zLabelText result;
  for (std::size_t i = 0; i < label.size(); ++i) {
    if (label[i] != '&' || i + 1 == label.size()) {
      result.text += label[i];
      continue;
    }
    ++i;
    if (label[i] != '&') {
      result.mnemonic = label[i];
    }
    result.text += label[i];
  }
  return result;
}

std::string withoutMnemonics(std::string_view text) {
  std::string label;
  for (const char c : text) {
    label.append(c == '&' ? 2 : 1, c);
  }
  return label;
}

std::string expandTabs(std::string_view text) {
  constexpr std::size_t kTabWidth = 8;
  std::string result;
  std::size_t column = 0;
  for (const char c : text) {
    if (c == '\t') {
      const std::size_t blanks = kTabWidth - column % kTabWidth;
      result.append(blanks, ' ');
      column += blanks;
      continue;
    }
    result += c;
    column = c == '\n' ? 0 : column + 1;
  }
  return result;
}
