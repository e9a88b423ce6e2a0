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

int sortedPosition(std::string_view text, const std::vector<RWCString>& rows, ziRowOrder order) {
  const auto isNotGreater = [&](const RWCString& row) { return !sortsBefore(text, row.view()); };
  const auto place = order == ziRowOrder::kSorted
                         ? std::partition_point(rows.begin(), rows.end(), isNotGreater)
                         : std::find_if_not(rows.begin(), rows.end(), isNotGreater);
  return static_cast<int>(place - rows.begin());
}
