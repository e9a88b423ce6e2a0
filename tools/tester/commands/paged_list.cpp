#include "tester/commands/paged_list.h"

#include <algorithm>
#include <utility>

#include "tester/commands/numbers.h"

namespace tester {

PagedList::PagedList(std::string listLines, std::size_t linesOfPage)
    : lines(std::move(listLines)),
      total(static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n'))) {
  pageLength = linesOfPage == 0 ? total : linesOfPage;
}

std::string PagedList::takePage() {
  const std::size_t count = std::min(pageLength, total - shown);
  const std::size_t begin = position;
  for (std::size_t i = 0; i < count; ++i) {
    position = lines.find('\n', position) + 1;
  }
  shown += count;
  return lines.substr(begin, position - begin);
}

std::string PagedList::progressText() const {
  return groupedNumber(shown) + " of " + groupedNumber(total) + " lines shown.";
}

std::string PagedList::stoppedText() const {
  return "Stopped; " + groupedNumber(total - shown) + " of " + groupedNumber(total) +
         " lines not shown.";
}

}  // namespace tester
