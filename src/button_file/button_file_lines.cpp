// Lines as a read into a buffer of fixed size and C strings would give them. That is a property of
// the file format: files exist whose meaning depends on it.

#include "button_file/button_file_lines.h"

#include <algorithm>
#include <cstdio>

namespace {

std::string_view withoutBack(std::string_view text, char unwanted) {
  return text.substr(0, text.find_last_not_of(unwanted) + 1);
}

std::string_view withoutFront(std::string_view text, char unwanted) {
  return text.substr(std::min(text.find_first_not_of(unwanted), text.size()));
}

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

}  // namespace

std::string normaliseLine(std::string_view line) {
  line = line.substr(0, line.find('\0'));
  line = withoutBack(withoutBack(line, '\n'), '\r');
  // One pass each is intended: a blank behind a tab stays in front, and so does all at the end.
  return std::string(withoutFront(withoutFront(line, ' '), '\t'));
}

bool ButtonFileLines::next() {
  const std::string raw = readRaw();
  if (raw.empty()) {
    return false;
  }
  rest = unfinished;
  if (!rest) {
    ++lineNumber;
    longLineTold = false;
  }
  unfinished = raw.back() != '\n';
  line = normaliseLine(raw);
  if (observer) {
    noteLosses(raw);
  }
  return true;
}

void ButtonFileLines::note(ButtonFileRemark remark, std::size_t number,
                           std::string_view text) const {
  if (observer) {
    observer({remark, number, text});
  }
}

std::string ButtonFileLines::readRaw() {
  std::string raw;
  while (raw.size() < kMaxButtonFileLine) {
    const int byte = bytes();
    if (byte == EOF) {
      break;
    }
    raw += static_cast<char>(byte);
    if (byte == '\n') {
      break;
    }
  }
  return raw;
}

void ButtonFileLines::noteLosses(std::string_view raw) {
  if (raw.find('\0') != std::string_view::npos) {
    note(ButtonFileRemark::kNulByte);
  }
  const bool isMoreThanLineEnd = raw.find_first_not_of("\r\n") != std::string_view::npos;
  if (rest && isMoreThanLineEnd && !longLineTold) {
    longLineTold = true;
    note(ButtonFileRemark::kLongLine);
  }
  const bool isComment = line.substr(0, 1) == "#";
  if (!rest && isBlank(raw.front()) && !line.empty() && !isComment) {
    note(ButtonFileRemark::kBlanksLost);
  }
}
