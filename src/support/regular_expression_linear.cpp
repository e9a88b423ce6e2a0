// The matcher whose time grows with the subject's length and no faster. A pattern is a sequence of
// items without alternatives, so all that its items leave open is how much each of them takes. From
// the last item to the first, one pass backwards over the subject each tells for every place
// whether the pattern from this item on matches there. With that, the match needs no trying: it
// starts at the first place where the whole pattern matches, and each item takes the most behind
// which the rest does.
//
// The numbers of a repetition cost nothing: an item matches at a place when the nearest place, not
// closer than its lower number, where the rest matches, is no further than its upper number and the
// run of its characters reach.

#include <algorithm>
#include <cstring>

#include "support/regular_expression_matchers.h"

namespace regexp {

namespace {

/// The places of a subject, its end included, at which something holds.
using PlaceSet = std::vector<bool>;

class LinearMatcher {
 public:
  LinearMatcher(const char* text, const std::vector<Element>& pattern)
      : subject(text), length(std::strlen(text)), elements(pattern) {}

  bool match(Start start);

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
  /// Where the pattern from each item on matches: the last item's first, in front of it where the
  /// pattern may end.
  std::vector<PlaceSet> matching;
};

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
  auto after = matching.rbegin();
  for (const Element& element : elements) {
    const auto group = static_cast<std::size_t>(element.group);
    if (element.kind == Element::Kind::kGroupStart) {
      braslist[group] = subject + from;
    } else if (element.kind == Element::Kind::kGroupEnd) {
      braelist[group] = subject + from;
    } else if (element.kind == Element::Kind::kItem) {
      from = endOf(element, from, *++after);
    }
  }
  loc2 = subject + from;
}

bool LinearMatcher::match(Start start) {
  const bool isEndGiven = !elements.empty() && elements.back().kind == Element::Kind::kSubjectEnd;
  matching.assign(1, PlaceSet(length + 1, !isEndGiven));
  matching.back()[length] = true;
  for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
    if (element->kind == Element::Kind::kItem) {
      matching.push_back(placesBefore(*element, matching.back()));
    }
  }
  const PlaceSet& starts = matching.back();
  const auto last = start == Start::kAtSubject ? starts.begin() + 1 : starts.end();
  const auto first = std::find(starts.begin(), last, true);
  if (first == last) {
    return false;
  }
  setPlaces(static_cast<std::size_t>(first - starts.begin()));
  return true;
}

}  // namespace

bool matchLinearly(const char* subject, const std::vector<Element>& elements, Start start) {
  return LinearMatcher(subject, elements).match(start);
}

}  // namespace regexp
