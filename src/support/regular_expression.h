#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

class LongWork;

/// Basic regular expressions: a pattern is compiled into a byte code, and the byte code is stepped
/// through a text. Both work on bytes and keep what they find in the variables below, so there is
/// one pattern and one match at a time.
///
/// A pattern knows: `.`, `*`, `[...]`, `[^...]`, `^` at its start, `$` at its end, groups
/// `\(...\)`, references to closed groups `\1` to `\9`, repetition `\{m\}`, `\{m,\}`, `\{m,n\}`,
/// and `\n` for a line feed. A backslash takes the meaning from any other character. There is no
/// alternation, and
/// `+` and `?` are plain characters. A repetition behind a repetition replaces it. A `*` or `\{`
/// with no single-character item before it, also one right behind `\(` or `\)`, is plain.
namespace regexp {

/// Codes of the compiled form, each with its operands.
enum Code : std::uint8_t {
  CBRA = 2,    ///< start of a group; its number, from 0
  CCHR = 4,    ///< one character; the character
  CDOT = 8,    ///< any character but NUL
  CCL = 12,    ///< class of 7-bit characters; a table of kNarrowTable bytes
  CXCL = 16,   ///< class of 8-bit characters; a table of kWideTable bytes
  CDOL = 20,   ///< end of the subject
  CCEOF = 22,  ///< end of the pattern
  CKET = 24,   ///< end of a group; its number
  CBACK = 36,  ///< what a group matched; its number
  NCCL = 40,   ///< all but a class of 7-bit characters; a table of kNarrowTable bytes
  kFirstSkippedCode = 44,

  // Added to the code of an item that can be repeated.
  STAR = 1,  ///< any number of times
  RNGE = 3,  ///< as often as two bytes behind the operands say, low and high
  kRepetitionBits = 3,
};

inline constexpr int kNarrowTable = 16;
inline constexpr int kWideTable = 32;
inline constexpr int kRangeBytes = 2;
inline constexpr int kMaxGroups = 9;
inline constexpr int kMaxRange = 254;  ///< largest number in a range
inline constexpr int kNoLimit = 255;   ///< high byte of a range without upper limit

/// Bytes of operands behind a code, a range not counted.
constexpr int operandLength(int code) {
  switch (code & ~kRepetitionBits) {
    case CCL:
    case NCCL:
      return kNarrowTable;
    case CXCL:
      return kWideTable;
    case CDOT:
      return 0;
    default:
      return code == CDOL || code == CCEOF ? 0 : 1;
  }
}

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

}  // namespace regexp
