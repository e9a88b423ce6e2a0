#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "support/regular_expression_parts.h"

/// What one of the matchers finds; nothing when it finds no match.
using FoundPlaces = std::optional<std::vector<const char*>>;

inline FoundPlaces foundPlaces(bool isFound, int groups) {
  if (!isFound) {
    return std::nullopt;
  }
  std::vector<const char*> places = {regexp::loc1, regexp::loc2};
  places.insert(places.end(), regexp::braslist.begin(), regexp::braslist.begin() + groups);
  places.insert(places.end(), regexp::braelist.begin(), regexp::braelist.begin() + groups);
  return places;
}

/// Whether all that looks for the last compiled pattern in a subject finds what the backtracking
/// matcher finds: the linear matcher the same match; the filter, which may pass too much, leaves
/// out no line with one. Nothing when backtracking gave up.
inline std::optional<bool> matchersAgree(const std::string& subject, const char* form) {
  using regexp::Start;
  constexpr std::int64_t kLimit = 1 << 20;
  const Start start = regexp::circf ? Start::kAtSubject : Start::kAnywhere;
  LongWork unending;
  const auto backtrack = [&](const std::string& text) {
    std::int64_t spent = 0;
    return regexp::matchByBacktracking(text.c_str(), form, start, kLimit, spent, unending);
  };
  const auto elements = regexp::elementsOf(form);
  const bool hasReference = std::any_of(elements->begin(), elements->end(), [](const auto& e) {
    return e.kind == regexp::Element::Kind::kReference;
  });
  const std::optional<bool> whole = backtrack(subject);
  const FoundPlaces expected = foundPlaces(whole.value_or(false), regexp::nbra);
  if (whole && !hasReference &&
      foundPlaces(*matchLinearly(subject.c_str(), *elements, start, unending), regexp::nbra) !=
          expected) {
    return false;
  }
  const std::size_t passed = regexp::LineFilter(form, subject).nextLine(0, unending);
  for (std::size_t from = 0; from < std::min(passed, subject.size() + 1);) {
    const std::size_t end = std::min(subject.find('\n', from), subject.size());
    const std::optional<bool> line = backtrack(subject.substr(from, end - from));
    if (!line || *line) {
      return line ? std::optional(false) : std::nullopt;
    }
    from = end + 1;
  }
  return true;
}
