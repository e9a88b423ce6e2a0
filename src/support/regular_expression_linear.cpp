// The matcher whose time grows with the subject's length and no faster. A pattern is a sequence of
// items without alternatives, so all that its items leave open is how much each of them takes. From
// the last item to the first, one pass backwards over the subject each tells for every place
// whether the pattern from this item on matches there. With that, the match needs no trying: it
// starts at the first place where the whole pattern matches, and each item takes the most behind
// which the rest does.
//
// An item of a fixed length needs no choice, so only the passes behind the others are kept.
//
// The numbers of a repetition cost nothing: an item matches at a place when the nearest place, not
// closer than its lower number, where the rest matches, is no further than its upper number and the
// run of its characters reach.

#include <algorithm>
#include <cstring>
#include <utility>

#include "support/regular_expression_matchers.h"

namespace regexp {

namespace {

// What looking at a place costs, in the units of LongWork.
constexpr std::size_t kUnitsAPlace = 2;

/// The places of a subject, its end included, at which something holds.
using PlaceSet = std::vector<bool>;

class LinearMatcher {
 public:
  LinearMatcher(const char* text, const std::vector<Element>& pattern)
      : subject(text), length(std::strlen(text)), elements(pattern) {}

  /// What match takes.
  std::size_t bytesNeeded() const;
  /// Nothing when the longer work ended.
  std::optional<bool> match(Start start, LongWork& longWork);

 private:
  bool isTaken(const Element& item, std::size_t place) const {
    return item.takes[static_cast<Byte>(subject[place])];
  }
  PlaceSet placesBefore(const Element& item, const PlaceSet& after) const;
  std::size_t endOf(const Element& item, std::size_t from, const PlaceSet& after) const;
  void setPlaces(std::size_t from);

  const char* subject;
  std::size_t length;
  const std::vector<Element>& elements;
  /// Where the rest of the pattern behind each item of open length matches, the last item's first.
  std::vector<PlaceSet> matchingBehind;
};

bool isOpen(const Element& element) {
  return element.kind == Element::Kind::kItem && element.low != element.high;
}

std::size_t LinearMatcher::bytesNeeded() const {
  constexpr std::size_t kPlacesPerByte = 8;
  constexpr std::size_t kInWork = 2;
  const auto kept = std::count_if(elements.begin(), elements.end(), isOpen);
  return (static_cast<std::size_t>(kept) + kInWork) * (length / kPlacesPerByte + 1);
}

PlaceSet LinearMatcher::placesBefore(const Element& item, const PlaceSet& after) const {
  PlaceSet before(length + 1);
  std::size_t run = 0;
  std::size_t nearest = kAnyNumber;
  for (std::size_t place = length + 1; place-- > 0;) {
    run = place < length && isTaken(item, place) ? run + 1 : 0;
    if (item.low <= length - place && after[place + item.low]) {
      nearest = place + item.low;
    }
    before[place] = nearest != kAnyNumber && nearest - place <= std::min(run, item.high);
  }
  return before;
}

/// The furthest place up to which an item can go from one where it matches.
std::size_t LinearMatcher::endOf(const Element& item, std::size_t from,
                                 const PlaceSet& after) const {
  std::size_t end = from;
  while (end < length && end - from < item.high && isTaken(item, end)) {
    ++end;
  }
  while (!after[end]) {
    --end;
  }
  return end;
}

void LinearMatcher::setPlaces(std::size_t from) {
  loc1 = subject + from;
  auto behind = matchingBehind.rbegin();
  for (const Element& element : elements) {
    const auto group = static_cast<std::size_t>(element.group);
    if (element.kind == Element::Kind::kGroupStart) {
      braslist[group] = subject + from;
    } else if (element.kind == Element::Kind::kGroupEnd) {
      braelist[group] = subject + from;
    } else if (element.kind == Element::Kind::kItem) {
      from = isOpen(element) ? endOf(element, from, *behind++) : from + element.low;
    }
  }
  loc2 = subject + from;
}

std::optional<bool> LinearMatcher::match(Start start, LongWork& longWork) {
  const bool isEndGiven = !elements.empty() && elements.back().kind == Element::Kind::kSubjectEnd;
  PlaceSet starts(length + 1, !isEndGiven);
  starts[length] = true;
  for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
    if (element->kind != Element::Kind::kItem) {
      continue;
    }
    PlaceSet before = placesBefore(*element, starts);
    if (isOpen(*element)) {
      matchingBehind.push_back(std::move(starts));
    }
    starts = std::move(before);
    if (!longWork.goOn(kUnitsAPlace * length)) {
      return std::nullopt;
    }
  }
  const auto last = start == Start::kAtSubject ? starts.begin() + 1 : starts.end();
  const auto first = std::find(starts.begin(), last, true);
  if (first == last) {
    return false;
  }
  setPlaces(static_cast<std::size_t>(first - starts.begin()));
  return true;
}

}  // namespace

std::optional<bool> matchLinearly(const char* subject, const std::vector<Element>& elements,
                                  Start start, LongWork& longWork) {
  LinearMatcher matcher(subject, elements);
  return matcher.bytesNeeded() > kMemoryLimit ? std::nullopt : matcher.match(start, longWork);
}

}  // namespace regexp
