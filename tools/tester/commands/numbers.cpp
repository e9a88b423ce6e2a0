#include "tester/commands/numbers.h"

namespace tester {

std::string groupedNumber(std::size_t number) {
  constexpr std::size_t kGroup = 3;
  std::string text = std::to_string(number);
  for (std::size_t position = text.size(); position > kGroup;) {
    position -= kGroup;
    text.insert(position, ",");
  }
  return text;
}

std::string countedThings(std::size_t count, std::string_view thing) {
  return groupedNumber(count) + ' ' + std::string(thing) + (count == 1 ? "" : "s");
}

}  // namespace tester
