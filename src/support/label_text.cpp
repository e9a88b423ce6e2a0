#include "support/label_text.h"

namespace {

constexpr std::size_t kTabWidth = 8;

}  // namespace

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
