#pragma once

#include <string>
#include <vector>

namespace tester {

/// Lines of text columns, each as wide as its widest cell. Empty without rows.
class Columns {
 public:
  void add(std::vector<std::string> row) { rows.push_back(std::move(row)); }
  bool isEmpty() const { return rows.empty(); }

  /// All lines, with their ends and without blanks before these, each after `indent`.
  std::string text(const std::string& indent = "") const;

 private:
  std::vector<std::vector<std::string>> rows;
};

}  // namespace tester
