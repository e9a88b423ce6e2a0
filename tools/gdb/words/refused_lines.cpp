// Lines that GDB must not get.

#include <algorithm>
#include <array>
#include <cctype>
#include <sstream>

#include "gdb/words/word_table.h"
#include "support/text.h"

namespace gdb {

namespace {

/// What has to follow a command to make it one of those.
enum class When {
  kAlways,
  kAlone,    ///< nothing
  kTurned,   ///< nothing, or a value that turns it on
  kNotZero,  ///< anything but a zero
};

struct RefusedRow {
  std::string_view command;  ///< words; behind a bar is what an abbreviation may leave out
  When when = When::kAlways;
  std::string_view sentence;
};

constexpr std::string_view kScreen = "This window is no terminal that GDB could draw on.";
constexpr std::string_view kPrompt = "nelgdb knows by the prompt when a command has ended.";
constexpr std::string_view kPager =
    "GDB's own pages are off here; \"set-page-length\" tells when the window asks to go on.";
constexpr std::string_view kShell =
    "A shell of its own needs a terminal; \"shell COMMAND\" runs one command.";
constexpr std::string_view kPython =
    "Python's own prompt needs a terminal; \"python\" takes lines up to \"end\", and "
    "\"python-interactive COMMAND\" one.";

constexpr std::array kRows = {
    RefusedRow{"she|ll", When::kAlone, kShell},
    RefusedRow{"!", When::kAlone, kShell},
    RefusedRow{"ed|it", When::kAlways, "An editor needs a terminal; edit the file beside this."},
    RefusedRow{"python-|interactive", When::kAlone, kPython},
    RefusedRow{"pi", When::kAlone, kPython},
    RefusedRow{"guile-|repl", When::kAlways, "Guile's own prompt needs a terminal."},
    RefusedRow{"gr", When::kAlways, "Guile's own prompt needs a terminal."},
    RefusedRow{"tu|i", When::kAlways, kScreen},
    RefusedRow{"la|yout", When::kAlways, kScreen},
    RefusedRow{"new|-ui", When::kAlways, "nelgdb has GDB's other interface to itself."},
    RefusedRow{"set prom|pt", When::kAlways, kPrompt},
    RefusedRow{"set extend|ed-prompt", When::kAlways, kPrompt},
    RefusedRow{"set an|notate", When::kNotZero, "Annotations would stand in the log as text."},
    RefusedRow{"set ed|iting", When::kTurned, "Lines are edited in the window, not by GDB."},
    RefusedRow{"set pa|gination", When::kTurned, kPager},
    RefusedRow{"set he|ight", When::kNotZero, kPager},
    RefusedRow{"set log|ging red|irect", When::kTurned,
               "GDB's answers would go to the file alone; without this the log has them too."},
};

/// The next word as GDB cuts it: letters, digits and some marks, or one character of another kind.
std::string_view takeWordOf(std::string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  const auto isPart = [](unsigned char c) {
    return std::isalnum(c) != 0 || c == '-' || c == '_' || c == '.';
  };
  const auto end = std::find_if_not(line.begin(), line.end(), isPart);
  const std::size_t size = std::max<std::size_t>(end - line.begin(), line.empty() ? 0 : 1);
  const std::string_view word = line.substr(0, size);
  line.remove_prefix(size);
  return word;
}

bool isAbbreviation(std::string_view word, std::string_view marked) {
  const std::size_t bar = marked.find('|');
  std::string whole(marked);
  if (bar != std::string_view::npos) {
    whole.erase(bar, 1);
  }
  return whole.starts_with(word) && word.size() >= std::min(bar, whole.size());
}

bool isRefusedWith(When when, const std::string& value) {
  switch (when) {
    case When::kAlways:
      return true;
    case When::kAlone:
      return value.empty();
    case When::kTurned:
      return value != "off" && value != "0" && value != "no" && value != "disable";
    case When::kNotZero:
      return value != "0" && value != "unlimited";
  }
  return true;
}

}  // namespace

std::string refusalOf(std::string_view line) {
  for (const RefusedRow& row : kRows) {
    std::istringstream words{std::string(row.command)};
    std::string_view rest = line;
    bool isIt = true;
    for (std::string marked; isIt && words >> marked;) {
      isIt = isAbbreviation(takeWordOf(rest), marked);
    }
    if (isIt && isRefusedWith(row.when, trimmed(rest))) {
      return std::string(row.sentence);
    }
  }
  return "";
}

}  // namespace gdb
