#pragma once

#include <string>
#include <string_view>

/// The log's bookkeeping and the arithmetic of its line numbers, free of widgets.
///
/// A prefix follows a line feed and belongs to the line behind it, so the first line never has one.
/// Every prefix counts as kPrefixWidth characters; a number of seven digits has no room for its
/// closing blank, larger ones lose their end too.
inline constexpr int kPrefixWidth = 8;

struct LogCounters {
  int textEnd = 0;          ///< characters in the log, prefixes included
  int lineCount = 0;        ///< line ends since the start, one more after a Clear
  int firstLineNumber = 1;  ///< number of the first prefix when numbering is switched on later
  bool numbering = false;
};

/// The prefix of a line, kPrefixWidth characters.
std::string linePrefix(int number);

/// `text` as it goes into the log: with prefixes while numbering is on. Advances the counters.
std::string expandForLog(std::string_view text, LogCounters& counters);

/// The whole log `text` with a prefix behind each line feed, numbered from firstLineNumber on.
std::string addLineNumbers(std::string_view text, LogCounters& counters);

/// The whole log `text` without its prefixes: the kPrefixWidth characters behind a line feed where
/// they are one that linePrefix gives for a line of this log.
std::string removeLineNumbers(std::string_view text, LogCounters& counters);
