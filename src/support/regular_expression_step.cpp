// Runs a pattern through a subject. Most patterns are matched soonest by backtracking, which gets
// as much work to spend as the subject is long. Where that is not enough, a pattern without
// references goes to the linear matcher. References have no such matcher: what they match depends
// on how the subject was cut before. So they backtrack on, up to the limit of work.

#include <algorithm>
#include <cstring>

#include "support/regular_expression_matchers.h"

namespace regexp {

const char* loc1 = nullptr;
const char* loc2 = nullptr;
const char* locs = nullptr;
std::array<const char*, kMaxGroups> braslist{};
std::array<const char*, kMaxGroups> braelist{};

namespace {

std::int64_t work = 0;
bool hasGivenUp = false;

bool isReference(const Element& element) {
  return element.kind == Element::Kind::kReference;
}

int match(const char* subject, const char* compiled, Start start, LongWork& longWork) {
  constexpr std::int64_t kFirstWork = 256;
  hasGivenUp = false;
  work = 0;
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
    found = matchByBacktracking(subject, compiled, start, kWorkLimit, work, longWork);
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
  return work;
}

bool gaveUp() {
  return hasGivenUp;
}

const char* matchLength(int* length) {
  *length = static_cast<int>(loc2 - loc1);
  return loc1;
}

}  // namespace regexp
