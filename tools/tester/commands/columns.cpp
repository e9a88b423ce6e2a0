#include "tester/commands/columns.h"

#include <algorithm>

namespace tester {

namespace {

constexpr std::size_t kGap = 2;

}  // namespace

std::string Columns::text(const std::string& indent) const {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()), 0);
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], row[i].size());
    }
  }
  std::string lines;
  for (const auto& row : rows) {
    std::string line = indent;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i] + std::string(widths[i] - row[i].size() + kGap, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    lines += line + '\n';
  }
  return lines;
}

}  // namespace tester
