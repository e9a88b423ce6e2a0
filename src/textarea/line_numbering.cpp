#include "textarea/line_numbering.h"

#include <algorithm>
#include <array>
#include <cstdio>

std::string linePrefix(int number) {
  std::array<char, 32> formatted{};
  std::snprintf(formatted.data(), formatted.size(), "%6d: ", number);
  return std::string(formatted.data(), kPrefixWidth);
}

namespace {

constexpr int kNumberWidth = 6;
constexpr int kLargestNumber = 999999;  // the largest that leaves room for the colon and the blank

// Numbering a large log is bound by this.
void appendPrefix(std::string& text, int number) {
  if (number < 0 || number > kLargestNumber) {
    text += linePrefix(number);
    return;
  }
  std::array<char, kPrefixWidth> prefix = {' ', ' ', ' ', ' ', ' ', ' ', ':', ' '};
  int place = kNumberWidth;
  do {
    prefix[--place] = static_cast<char>('0' + number % 10);
    number /= 10;
  } while (number > 0);
  text.append(prefix.data(), prefix.size());
}

}  // namespace

std::string expandForLog(std::string_view text, LogCounters& counters) {
  std::string expanded;
  expanded.reserve(text.size());
  for (const char c : text) {
    expanded += c;
    ++counters.textEnd;
    if (c != '\n') {
      continue;
    }
    ++counters.lineCount;
    if (counters.numbering) {
      counters.textEnd += kPrefixWidth;
      appendPrefix(expanded, counters.lineCount);
    }
  }
  return expanded;
}

std::string addLineNumbers(std::string_view text, LogCounters& counters) {
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  std::string numbered;
  numbered.reserve(text.size() + lines * kPrefixWidth);
  // This counter starts at firstLineNumber and expandForLog counts on from lineCount: after a Clear
  // the two give different numbers to the same line. Intended.
  int number = counters.firstLineNumber;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t feed = text.find('\n', start);
    const std::size_t end = feed == std::string_view::npos ? text.size() : feed + 1;
    numbered += text.substr(start, end - start);
    start = end;
    if (feed != std::string_view::npos) {
      appendPrefix(numbered, number++);
      counters.textEnd += kPrefixWidth;
    }
  }
  return numbered;
}

std::string removeLineNumbers(std::string_view text, LogCounters& counters) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t feed = text.find('\n', start);
    if (feed == std::string_view::npos) {
      plain += text.substr(start);
      break;
    }
    plain += text.substr(start, feed + 1 - start);
    start = feed + 1 + kPrefixWidth;
    counters.textEnd -= kPrefixWidth;
  }
  return plain;
}
