#pragma once

#include <cstddef>
#include <string>

namespace tester {

/// Whole lines that are shown a page at a time.
class PagedList {
 public:
  /// Each line has its end. `linesOfPage` 0 makes one page of them all.
  PagedList(std::string listLines, std::size_t linesOfPage);

  /// The lines of the next page, in order. Only while there are some.
  std::string takePage();
  bool isAtEnd() const { return position == lines.size(); }

  /// "200 of 1,234 lines shown."
  std::string progressText() const;
  /// What is said when the rest is not to be shown.
  std::string stoppedText() const;

 private:
  std::string lines;
  std::size_t pageLength = 0;
  std::size_t position = 0;  ///< of the first byte that was not taken yet
  std::size_t shown = 0;
  std::size_t total = 0;
};

}  // namespace tester
