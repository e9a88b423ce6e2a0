#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/regular_expression_automaton.h"

namespace regexp {

/// Finds the lines of a text that the last compiled pattern can match. It passes some that the
/// pattern does not match, such as with references, so step has the last word on a line.
class LineFilter {
 public:
  static constexpr std::size_t kNoLine = std::string_view::npos;

  /// The text must outlive the filter.
  LineFilter(const char* compiled, std::string_view searched);

  /// Start of the first such line at or behind `from`, which counts as a line's start itself; or
  /// kNoLine, also when the work is to end. A line feed at the end of the text has an empty line
  /// behind it.
  std::size_t nextLine(std::size_t from, LongWork& work);

 private:
  void recognise(bool roughly);
  void chooseWord(std::string_view sample);
  std::size_t lineWithWord(std::size_t from);

  std::string_view text;
  std::vector<Element> elements;
  std::vector<Place> places;
  bool isRough = false;
  std::unique_ptr<Automaton> automaton;  ///< null to pass all lines
  std::string word;                      ///< in all lines to pass; empty when it saves no time
  std::size_t window = 1;                ///< bytes to read at once, and on to the end of a line
};

}  // namespace regexp
