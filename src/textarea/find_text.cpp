// The search of the log. Where a search starts follows from formulas that skip a few characters;
// that is intended and marked below.

#include "textarea/find_text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "support/regular_expression.h"
#include "support/text.h"

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;
constexpr std::size_t kCompiledSize = 256;

// Not string_view::find: that stops at each occurrence of the first character.
std::size_t findExact(std::string_view log, std::string_view text) {
  if (text.empty()) {
    return 0;
  }
  const void* hit = memmem(log.data(), log.size(), text.data(), text.size());
  return hit == nullptr ? kNowhere
                        : static_cast<std::size_t>(static_cast<const char*>(hit) - log.data());
}

// Looks through the log from `start` on by windows of about `size` bytes, which overlap by what of
// a hit can lie in the earlier one.
template <class FindInWindow>
std::size_t findByWindows(std::string_view log, std::size_t start, std::size_t textSize,
                          std::size_t size, LongWork& work, FindInWindow findInWindow) {
  while (start <= log.size() && textSize <= log.size() - start) {
    const std::string_view window = log.substr(start, size + 2 * textSize);
    const std::size_t hit = findInWindow(window);
    if (hit != kNowhere) {
      return start + hit;
    }
    if (!work.goOn(window.size())) {
      break;
    }
    start += window.size() - textSize + 1;
  }
  return kNowhere;
}

void foldCase(std::string_view from, char* to) {
  std::transform(from.begin(), from.end(), to, lowerCase);
}

std::size_t findWithCase(std::string_view log, std::string_view text, std::size_t start,
                         LongWork& work) {
  constexpr std::size_t kWindow = std::size_t{1} << 20;
  return findByWindows(log, start, text.size(), kWindow, work,
                       [&](std::string_view window) { return findExact(window, text); });
}

// A window stays in the processor's cache while it is folded and looked through.
std::size_t findWithoutCase(std::string_view log, std::string_view text, std::size_t start,
                            LongWork& work) {
  constexpr std::size_t kWindow = 16384;
  std::string wanted(text.size(), '\0');
  foldCase(text, wanted.data());
  std::string folded(std::min(kWindow + 2 * text.size(), log.size()), '\0');
  return findByWindows(log, start, text.size(), kWindow, work, [&](std::string_view window) {
    foldCase(window, folded.data());
    return findExact({folded.data(), window.size()}, wanted);
  });
}

FindResult findPlain(std::string_view log, const FindRequest& request, FindState& state,
                     LongWork& work) {
  // By the length of what is looked for, not of what was found, and from the start too: a hit
  // closer to the start than that is missed. Intended.
  const std::size_t start = state.lastFindOffset + request.text.size();
  const std::size_t hit = request.matchCase ? findWithCase(log, request.text, start, work)
                                            : findWithoutCase(log, request.text, start, work);
  if (hit == kNowhere) {
    return FindResult::kNotFound;
  }
  state = {hit, request.text.size()};
  return FindResult::kFound;
}

// Looks through the lines that begin behind `before`. The rest of a line behind the last hit counts
// as a line of its own, so "^" matches there. Intended.
FindResult findInLines(std::string_view log, const char* compiled, std::size_t before,
                       FindState& state, LongWork& longWork) {
  std::int64_t work = kFindWork + kFindWorkPerCharacter * static_cast<std::int64_t>(log.size());
  regexp::LineFilter filter(compiled, log);
  std::string line;
  while (before < log.size()) {
    const std::size_t start = filter.nextLine(before + 1, longWork);
    if (start == regexp::LineFilter::kNoLine) {
      break;
    }
    const std::size_t end = std::min(log.find('\n', start), log.size());
    line.assign(log, start, end - start);
    if (regexp::step(line.c_str(), compiled, longWork) != 0) {
      int length = 0;
      const char* hit = regexp::matchLength(&length);
      state.lastFindOffset = start + static_cast<std::size_t>(hit - line.c_str());
      state.lastFindLength = static_cast<std::size_t>(length);
      return FindResult::kFound;
    }
    work -= regexp::workSpent();
    // A line that was not looked through to its end is not passed over: it may hold the hit.
    if (regexp::gaveUp() || work <= 0) {
      return FindResult::kGaveUp;
    }
    before = end;
  }
  return FindResult::kNotFound;
}

FindResult findRegexp(std::string_view log, const FindRequest& request, FindState& state,
                      LongWork& work) {
  const std::string pattern(request.text.substr(0, kPatternLength));
  std::array<char, kCompiledSize> compiled{};
  char* end = compiled.data() + compiled.size();
  if (regexp::compile(pattern.c_str(), compiled.data(), end, '\0') == nullptr) {
    return FindResult::kPatternError;
  }
  // A line begins behind a character that is not looked at: the log's first one, the last one of a
  // hit, or, after a hit of one character, the one that follows it. Intended.
  const std::size_t length = state.lastFindLength;
  const std::size_t before = state.lastFindOffset + (length >= 2 ? length - 1 : length);
  return findInLines(log, compiled.data(), before, state, work);
}

}  // namespace

FindResult findInLog(std::string_view log, const FindRequest& request, FindState& state,
                     const std::function<bool()>& mayGoOn) {
  if (!request.goOn) {
    state = {};
  }
  LongWork work(mayGoOn);
  const FindResult result =
      request.regexp ? findRegexp(log, request, state, work) : findPlain(log, request, state, work);
  return result != FindResult::kFound && work.hasEnded() ? FindResult::kStopped : result;
}
