#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Work that may take long. It tells what it has done, and every so much work asks whether it may
/// go on.
class LongWork {
 public:
  /// Work that nobody ends.
  LongWork() = default;
  /// Work that goes on while `asked` returns true; empty for to its end.
  explicit LongWork(std::function<bool()> asked) : mayGoOn(std::move(asked)) {}

  /// Tells of work done since the last call, in units of about a nanosecond: a character looked at
  /// is one. False when the work is to end, from then on always.
  bool goOn(std::size_t units) {
    unasked += units;
    if (unasked >= kUnitsBetween && !ended) {
      unasked = 0;
      ended = mayGoOn && !mayGoOn();
    }
    return !ended;
  }
  bool hasEnded() const { return ended; }

 private:
  static constexpr std::size_t kUnitsBetween = std::size_t{1} << 20;

  std::function<bool()> mayGoOn;
  std::size_t unasked = 0;
  bool ended = false;
};

/// Basic regular expressions: a pattern is compiled into a byte code, and the byte code is stepped
/// through a text. Both work on bytes and keep what they find in the variables below, so there is
/// one pattern and one match at a time.
///
/// A pattern knows: `.`, `*`, `[...]`, `[^...]`, `^` at its start, `$` at its end, groups
/// `\(...\)`, references to closed groups `\1` to `\9`, repetition `\{m\}`, `\{m,\}`, `\{m,n\}`,
/// and `\n` for a line feed. A backslash takes the meaning from any other character. There is no
/// alternation, and `+` and `?` are plain characters. A repetition behind a repetition replaces it.
/// A `*` or `\{` with no single-character item before it, also one right behind `\(` or `\)`, is
/// plain.
namespace regexp {

inline constexpr int kMaxGroups = 9;
inline constexpr int kMaxRange = 254;  ///< largest number in a range

enum Error : int {
  kNoError = 0,
  kRangeTooLarge = 11,     ///< number in a range above kMaxRange
  kNotADigit = 16,         ///< in a range
  kGroupNotClosed = 25,    ///< reference to a group that is not closed
  kMisplacedEnd = 36,      ///< line feed in the pattern, or line feed or nothing behind a backslash
  kEmptyPattern = 41,      ///< with nothing compiled before
  kUnbalancedGroups = 42,  ///< a group is left open, or closed without having been opened
  kTooManyGroups = 43,     ///< more than kMaxGroups
  kTooManyNumbers = 44,    ///< more than two in a range
  kRangeEndExpected = 45,  ///< a backslash in a range without the brace
  kRangeReversed = 46,     ///< first number of a range above the second
  kClassNotClosed = 49,    ///< `[` without `]`
  kPatternTooLong = 50,    ///< the compiled form does not fit
};

// The last match and the last pattern. The pointers lead into the subject of the last match.
extern const char* loc1;  ///< start of the match
extern const char* loc2;  ///< end of the match
extern const char* locs;  ///< lower bound for backing up; null, as the program leaves it, for none
extern bool circf;        ///< the pattern began with `^`
extern int nbra;          ///< groups opened in the pattern
extern std::array<const char*, kMaxGroups> braslist;  ///< starts of the groups
extern std::array<const char*, kMaxGroups> braelist;  ///< ends of the groups

/// Units of work that one call of step or advance may spend on a pattern with references; then it
/// gives up and finds nothing. A unit is one code executed or a few characters taken, five to ten
/// nanoseconds of an ordinary machine. Other patterns need no limit: the time for them grows with
/// the subject's length and the pattern's.
inline constexpr std::int64_t kWorkLimit = std::int64_t{1} << 24;
/// Bytes that one call may take for other patterns, an eighth of the subject's length for each item
/// that is repeated; then it gives up too.
inline constexpr std::size_t kMemoryLimit = std::size_t{1} << 26;

/// Compiles the pattern that ends at `endChar` or NUL into [buffer, bufferEnd), never past it, and
/// returns the end of the compiled form. Null for an error, which compileError then tells; the
/// buffer is then as with nothing compiled. An empty pattern leaves the buffer's earlier pattern in
/// use; nothing compiled in a buffer is a first byte of 0.
char* compile(const char* pattern, char* buffer, char* bufferEnd, int endChar);
/// The error of the last compile.
Error compileError();

/// Looks for the leftmost match in the NUL-terminated subject and sets loc1 and loc2. 1 for a
/// match, 0 for none.
int step(const char* subject, const char* compiled);
/// The same as a part of longer work; gives up when that is to end.
int step(const char* subject, const char* compiled, LongWork& longWork);
/// The same for a match that starts where the subject does; sets loc2 alone.
int advance(const char* subject, const char* compiled);
/// Units of work that the last step or advance spent of the limit; 0 when it did not come to need
/// one.
std::int64_t workSpent();
/// Whether the last step or advance gave up.
bool gaveUp();
/// Stores the length of the last match of step and returns its start.
const char* matchLength(int* length);

class Automaton;
struct Element;
struct Place;

/// Finds the lines of a text that the last compiled pattern can match. It passes some that the
/// pattern does not match, such as with references, so step has the last word on a line.
class LineFilter {
 public:
  static constexpr std::size_t kNoLine = std::string_view::npos;
  /// With more places for characters than these a pattern is looked for roughly.
  static constexpr std::size_t kMaxPlaces = 1023;

  /// The text must outlive the filter.
  LineFilter(const char* compiled, std::string_view searched);
  LineFilter(const LineFilter&) = delete;
  LineFilter& operator=(const LineFilter&) = delete;
  ~LineFilter();

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
