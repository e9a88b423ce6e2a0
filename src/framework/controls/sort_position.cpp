#include "framework/controls/sort_position.h"

#include <algorithm>
#include <cctype>
#include <compare>

namespace {

int upperCase(char c) {
  return std::toupper(static_cast<unsigned char>(c));
}

}  // namespace

bool sortsBefore(std::string_view text, std::string_view other) {
  const auto order = std::lexicographical_compare_three_way(
      text.begin(), text.end(), other.begin(), other.end(),
      [](char a, char b) { return upperCase(a) <=> upperCase(b); });
  return std::is_eq(order) ? text < other : std::is_lt(order);
}

int sortedPosition(std::string_view text, int count, const ziRowText& row, ziRowOrder order) {
  int first = 0;
  if (order == ziRowOrder::kUnknown) {
    while (first < count && !sortsBefore(text, row(first))) {
      ++first;
    }
    return first;
  }
  for (int end = count; first < end;) {
    const int middle = first + (end - first) / 2;
    if (sortsBefore(text, row(middle))) {
      end = middle;
    } else {
      first = middle + 1;
    }
  }
  return first;
}
