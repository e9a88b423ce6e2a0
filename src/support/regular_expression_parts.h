#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "support/regular_expression.h"

/// What the sources of this module share: the compiled form, the same read back as a list, and the
/// two matchers behind step and advance.
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
inline constexpr int kNoLimit = 255;  ///< high byte of a range without upper limit

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

using Byte = unsigned char;

constexpr Byte kTopBit = 0x80;
constexpr std::size_t kCharacters = 256;
constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();
/// What a range without upper limit takes beyond its lower number.
constexpr std::size_t kUnlimitedRange = 20000;

/// The characters that an item matches, by their codes.
using CharacterSet = std::array<bool, kCharacters>;

struct Element {
  enum class Kind {
    kItem,  ///< `low` to `high` characters of `takes`
    kGroupStart,
    kGroupEnd,
    kReference,  ///< `low` to `high` times what `group` matched
    kSubjectEnd,
  };

  Kind kind = Kind::kItem;
  int group = 0;
  CharacterSet takes{};
  std::size_t low = 1;
  std::size_t high = 1;
};

/// How often an item is repeated.
struct Times {
  std::size_t low = 1;
  std::size_t high = 1;
};
/// Reads the repetition of a code whose operands end at `compiled`, and moves on to the next code.
Times takeTimes(int code, const char*& compiled);

/// Whether an item of this code, its repetition left out, matches a character, which is not NUL.
inline bool takesCharacter(int kind, const char* operand, Byte c) {
  const auto isInTable = [&] { return (static_cast<Byte>(operand[c >> 3]) >> (c & 7) & 1) != 0; };
  switch (kind) {
    case CCHR:
      return c == static_cast<Byte>(*operand);
    case CDOT:
      return true;
    case CCL:
      return c < kTopBit && isInTable();
    case NCCL:
      return c >= kTopBit || !isInTable();
    default:
      return kind == CXCL && isInTable();
  }
}

/// The elements of a pattern in their order. None for a form with a code that the compiler does not
/// write, or not at that place.
std::optional<std::vector<Element>> elementsOf(const char* compiled);

/// A character of a pattern.
struct Place {
  const CharacterSet* takes = nullptr;
  bool isOptional = false;
  bool isRepeated = false;
};

/// The elements as a row of places, for the filter. Roughly means fewer places, which match more.
std::vector<Place> placesOf(const std::vector<Element>& elements, bool roughly);

/// The matchers find the same match: the leftmost one, in which each item takes as much as the rest
/// of the pattern allows. Both set loc1, loc2, braslist and braelist. Both answer nothing when they
/// gave up, which they do when the longer work is to end.
enum class Start {
  kAnywhere,
  kAtSubject,  ///< the match starts where the subject does
};

/// Matches any pattern within a limit of work and tells what it `spent`.
std::optional<bool> matchByBacktracking(const char* subject, const char* compiled, Start start,
                                        std::int64_t limit, std::int64_t& spent,
                                        LongWork& longWork);

/// Matches a pattern without references in a time that is the product of the lengths of subject and
/// pattern, and within kMemoryLimit.
std::optional<bool> matchLinearly(const char* subject, const std::vector<Element>& elements,
                                  Start start, LongWork& longWork);

}  // namespace regexp
