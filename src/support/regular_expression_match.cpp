// Runs a pattern through a subject. Most patterns are matched soonest by trying, which gets as much
// work to spend as the subject is long. Where that is not enough, a pattern without references goes
// to the linear matcher. References have no such matcher: what they match depends on how the
// subject was cut before. So they are tried on, up to the limit of work.
//
// In the matcher that tries, items are greedy: they take what they can and give back one
// character at a time until the rest of the pattern matches. Each retry of the rest is one
// recursion, so the depth is bounded by the number of repetitions in the pattern. The time is not:
// it can grow by a power of the subject's length for each repetition, which is what the limit of
// work is for. No item matches the NUL, so nothing runs over the subject's end.

#include <algorithm>
#include <cstring>

#include "support/regular_expression_parts.h"

namespace regexp {

const char* loc1 = nullptr;
const char* loc2 = nullptr;
const char* locs = nullptr;
std::array<const char*, kMaxGroups> braslist{};
std::array<const char*, kMaxGroups> braelist{};

namespace {

constexpr int kNoCharacter = -1;

// Beside the characters that it takes.
constexpr int kWorkOfRepetition = 8;

std::int64_t work = 0;
std::int64_t workLimit = 0;

// The longer work hears of this one slice by slice.
std::int64_t sliceStart = 0;
std::int64_t sliceEnd = 0;
LongWork* wholeWork = nullptr;

/// At a slice's end: begins the next one, or false when there is no more work to spend.
bool beginSlice() {
  constexpr std::int64_t kSlice = 1 << 14;
  constexpr std::int64_t kUnitsOfLongWork = 8;
  wholeWork->goOn(static_cast<std::size_t>(kUnitsOfLongWork * (work - sliceStart)));
  sliceStart = work;
  if (work > workLimit || wholeWork->hasEnded()) {
    return false;
  }
  sliceEnd = std::min(workLimit, work + kSlice);
  return true;
}

bool isSpent() {
  return work > sliceEnd && !beginSlice();
}

Byte byteAt(const char* place) {
  return static_cast<Byte>(*place);
}

/// The end of the longest stretch of at most `limit` characters of the kind.
template <class IsOfKind>
const char* takeWhile(const char* from, std::size_t limit, IsOfKind isOfKind) {
  for (; limit != 0 && *from != '\0' && isOfKind(byteAt(from)); --limit) {
    ++from;
  }
  return from;
}

/// The same for the characters that an item matches.
const char* takeItem(int kind, const char* operand, const char* from, std::size_t limit) {
  // Each kind has a loop of its own, in which the test of the kind is folded away.
  switch (kind) {
    case CDOT:
      return from + strnlen(from, limit);
    case CCHR:
      return takeWhile(from, limit, [=](Byte b) { return takesCharacter(CCHR, operand, b); });
    case CCL:
      return takeWhile(from, limit, [=](Byte b) { return takesCharacter(CCL, operand, b); });
    case NCCL:
      return takeWhile(from, limit, [=](Byte b) { return takesCharacter(NCCL, operand, b); });
    case CXCL:
      return takeWhile(from, limit, [=](Byte b) { return takesCharacter(CXCL, operand, b); });
    default:
      return from;
  }
}

bool isItem(int kind) {
  return kind == CCHR || kind == CDOT || kind == CCL || kind == CXCL || kind == CBACK ||
         kind == NCCL;
}

/// The character that a match of the rest of the pattern starts with, where there is but one.
int firstCharacter(const char* compiled) {
  while (*compiled == CBRA || *compiled == CKET) {
    compiled += 2;
  }
  return *compiled == CCHR ? byteAt(compiled + 1) : kNoCharacter;
}

/// Charges for characters that a loop of this module looked at.
void spendOn(const char* from, const char* to) {
  constexpr int kCharactersPerUnit = 8;
  work += (to - from) / kCharactersPerUnit;
}

/// The same for a search or comparison by the C library, which is faster.
void spendOnLibrary(std::ptrdiff_t characters) {
  constexpr int kCharactersPerUnit = 64;
  work += characters / kCharactersPerUnit;
}

int matchHere(const char* subject, const char* compiled);

bool isBelowBound(const char* place) {
  return locs != nullptr && place < locs;
}

/// Tries the rest of the pattern behind the longest stretch, then behind ever shorter ones.
int backUp(const char* least, const char* most, std::ptrdiff_t stride, const char* rest) {
  const int first = stride == 1 ? firstCharacter(rest) : kNoCharacter;
  for (const char* at = most;; at -= stride) {
    if (first != kNoCharacter) {
      const void* next = memrchr(least, first, static_cast<std::size_t>(at - least) + 1);
      spendOnLibrary(at - (next == nullptr ? least : static_cast<const char*>(next)));
      if (next == nullptr) {
        return 0;
      }
      at = static_cast<const char*>(next);
    }
    if (isBelowBound(at)) {
      return 0;
    }
    if (matchHere(at, rest) != 0) {
      return 1;
    }
    if (at == least || isSpent()) {
      return 0;
    }
  }
}

/// Matches a repeated item and the rest of the pattern.
int matchRepeated(int kind, const char* operand, Times times, const char* subject,
                  const char* rest) {
  const char* least = takeItem(kind, operand, subject, times.low);
  const bool isEnough = static_cast<std::size_t>(least - subject) == times.low;
  const char* most = isEnough ? takeItem(kind, operand, least, times.high - times.low) : least;
  if (kind == CDOT) {
    spendOnLibrary(most - subject);
  } else {
    spendOn(subject, most);
  }
  return isEnough ? backUp(least, most, 1, rest) : 0;
}

/// The same for what a group matched, which is repeated as a whole.
int matchRepeatedGroup(int group, Times times, const char* subject, const char* rest) {
  const char* text = braslist[static_cast<std::size_t>(group)];
  const std::ptrdiff_t length = braelist[static_cast<std::size_t>(group)] - text;
  if (length == 0) {
    return matchHere(subject, rest);  // nothing, however often
  }
  const auto copies = [&](const char* from, std::size_t limit) {
    std::size_t count = 0;
    while (count < limit && std::strncmp(text, from, static_cast<std::size_t>(length)) == 0) {
      from += length;
      ++count;
    }
    spendOnLibrary(static_cast<std::ptrdiff_t>(count + 1) * length);
    return count;
  };
  const std::size_t low = copies(subject, times.low);
  if (low < times.low) {
    return 0;
  }
  const char* least = subject + static_cast<std::ptrdiff_t>(low) * length;
  const char* most =
      least + static_cast<std::ptrdiff_t>(copies(least, times.high - times.low)) * length;
  return backUp(least, most, length, rest);
}

/// Moves the subject over a back-reference; false when it is not there.
bool passGroup(int group, const char*& subject) {
  const char* text = braslist[static_cast<std::size_t>(group)];
  const std::ptrdiff_t length = braelist[static_cast<std::size_t>(group)] - text;
  spendOnLibrary(length);
  if (std::strncmp(text, subject, static_cast<std::size_t>(length)) != 0) {
    return false;
  }
  subject += length;
  return true;
}

/// Matches an item that `code` begins. Nothing when it matched once and the rest is left to the
/// caller; the answer for all of the pattern when the item is repeated or not there.
std::optional<int> matchItem(int code, const char*& subject, const char*& compiled) {
  const int kind = code & ~kRepetitionBits;
  if (!isItem(kind)) {
    return 0;
  }
  const char* operand = compiled;
  compiled += operandLength(kind);
  const bool isRepeated = (code & kRepetitionBits) != 0;
  if (isRepeated) {
    work += kWorkOfRepetition;
    const Times times = takeTimes(code, compiled);
    return kind == CBACK ? matchRepeatedGroup(byteAt(operand), times, subject, compiled)
                         : matchRepeated(kind, operand, times, subject, compiled);
  }
  const char* before = subject;
  if (kind == CBACK) {
    return passGroup(byteAt(operand), subject) ? std::nullopt : std::optional<int>(0);
  }
  subject = takeItem(kind, operand, before, 1);
  return subject != before ? std::nullopt : std::optional<int>(0);
}

int matchHere(const char* subject, const char* compiled) {
  while (++work <= sliceEnd || beginSlice()) {
    const int code = byteAt(compiled++);
    switch (code) {
      case CBRA:
        braslist[byteAt(compiled++)] = subject;
        continue;
      case CKET:
        braelist[byteAt(compiled++)] = subject;
        continue;
      case CCHR:
        if (*subject != *compiled++) {
          return 0;
        }
        ++subject;
        continue;
      case CDOL:
        if (*subject != '\0') {
          return 0;
        }
        continue;
      case CCEOF:
        loc2 = subject;
        return 1;
      default:
        break;
    }
    if (code >= kFirstSkippedCode) {
      continue;
    }
    if (const std::optional<int> answer = matchItem(code, subject, compiled)) {
      return *answer;
    }
  }
  return 0;
}

bool matchFromStart(const char* subject, const char* compiled) {
  loc1 = subject;
  return matchHere(subject, compiled) != 0;
}

/// Tries a match at each occurrence of the character that it must start with.
bool matchAtCharacter(const char* subject, int first, const char* compiled) {
  for (; (subject = std::strchr(subject, first)) != nullptr; ++subject) {
    if (isSpent()) {
      return false;
    }
    if (matchFromStart(subject, compiled)) {
      return true;
    }
  }
  return false;
}

/// Tries a match at each place.
bool matchAnywhere(const char* subject, const char* compiled) {
  const int first = firstCharacter(compiled);
  if (first != kNoCharacter) {
    return matchAtCharacter(subject, first, compiled);
  }
  // What starts with any characters at a later place starts with more of them at this one.
  const bool isFirstTheOnly = *compiled == (CDOT | STAR);
  for (;; ++subject) {
    if (matchFromStart(subject, compiled)) {
      return true;
    }
    if (*subject == '\0' || isFirstTheOnly || isSpent()) {
      return false;
    }
  }
}

}  // namespace

std::optional<bool> matchByBacktracking(const char* subject, const char* compiled, Start start,
                                        std::int64_t limit, std::int64_t& spent,
                                        LongWork& longWork) {
  work = 0;
  workLimit = limit;
  sliceStart = 0;
  sliceEnd = 0;
  wholeWork = &longWork;
  const bool isFound = start == Start::kAtSubject ? matchFromStart(subject, compiled)
                                                  : matchAnywhere(subject, compiled);
  spent = work;
  return isFound || beginSlice() ? std::optional(isFound) : std::nullopt;
}

namespace {

std::int64_t lastWork = 0;
bool hasGivenUp = false;

bool isReference(const Element& element) {
  return element.kind == Element::Kind::kReference;
}

int match(const char* subject, const char* compiled, Start start, LongWork& longWork) {
  constexpr std::int64_t kFirstWork = 256;
  hasGivenUp = false;
  lastWork = 0;
  std::int64_t firstWork = 0;
  const auto length = static_cast<std::int64_t>(std::strlen(subject));
  std::optional<bool> found =
      matchByBacktracking(subject, compiled, start, kFirstWork + length, firstWork, longWork);
  if (found) {
    return *found ? 1 : 0;
  }
  const auto elements = locs == nullptr ? elementsOf(compiled) : std::nullopt;
  if (elements && std::none_of(elements->begin(), elements->end(), isReference)) {
    found = matchLinearly(subject, *elements, start, longWork);
  } else {
    found = matchByBacktracking(subject, compiled, start, kWorkLimit, lastWork, longWork);
  }
  hasGivenUp = !found;
  return found.value_or(false) ? 1 : 0;
}

}  // namespace

int step(const char* subject, const char* compiled) {
  LongWork unending;
  return step(subject, compiled, unending);
}

int step(const char* subject, const char* compiled, LongWork& longWork) {
  return match(subject, compiled, circf ? Start::kAtSubject : Start::kAnywhere, longWork);
}

int advance(const char* subject, const char* compiled) {
  const char* const start = loc1;
  LongWork unending;
  const int found = match(subject, compiled, Start::kAtSubject, unending);
  loc1 = start;
  return found;
}

std::int64_t workSpent() {
  return lastWork;
}

bool gaveUp() {
  return hasGivenUp;
}

const char* matchLength(int* length) {
  *length = static_cast<int>(loc2 - loc1);
  return loc1;
}

}  // namespace regexp
