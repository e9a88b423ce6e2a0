#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "support/regular_expression.h"

/// The compiled form read back as a list, for the parts of the module that look at a pattern as a
/// whole.
namespace regexp {

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

}  // namespace regexp
