// The compiled form read back as a list of elements, and the matcher that works on the list.
//
// The time of the matcher grows with the subject's length and no faster. A pattern is a sequence of
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

#include "support/regular_expression_parts.h"

namespace regexp {

namespace {

std::optional<Element> simpleElement(int code) {
  switch (code) {
    case CBRA:
      return Element{.kind = Element::Kind::kGroupStart};
    case CKET:
      return Element{.kind = Element::Kind::kGroupEnd};
    case CDOL:
      return Element{.kind = Element::Kind::kSubjectEnd};
    default:
      break;
  }
  switch (code & ~kRepetitionBits) {
    case CBACK:
      return Element{.kind = Element::Kind::kReference};
    case CCHR:
    case CDOT:
    case CCL:
    case CXCL:
    case NCCL:
      return Element{};
    default:
      return std::nullopt;
  }
}

/// Reads an element and moves on to the next code.
std::optional<Element> takeElement(const char*& compiled) {
  const int code = static_cast<Byte>(*compiled++);
  std::optional<Element> element = simpleElement(code);
  if (!element) {
    return std::nullopt;
  }
  const int kind = code & ~kRepetitionBits;
  const char* operand = compiled;
  compiled += operandLength(code);
  if (element->kind == Element::Kind::kItem) {
    for (std::size_t c = 1; c < kCharacters; ++c) {
      element->takes[c] = takesCharacter(kind, operand, static_cast<Byte>(c));
    }
  } else if (element->kind != Element::Kind::kSubjectEnd) {
    element->group = static_cast<Byte>(*operand);
  }
  const bool isMark = code == CBRA || code == CKET || code == CDOL;
  const Times times = isMark ? Times{} : takeTimes(code, compiled);
  element->low = times.low;
  element->high = times.high;
  return element;
}

}  // namespace

Times takeTimes(int code, const char*& compiled) {
  switch (code & kRepetitionBits) {
    case STAR:
      return {0, kAnyNumber};
    case RNGE: {
      const std::size_t low = static_cast<Byte>(*compiled++);
      const std::size_t high = static_cast<Byte>(*compiled++);
      return {low, high == kNoLimit ? low + kUnlimitedRange : high};
    }
    default:
      return {};
  }
}

std::optional<std::vector<Element>> elementsOf(const char* compiled) {
  std::vector<Element> elements;
  bool isBehindEnd = false;
  while (*compiled != CCEOF) {
    std::optional<Element> element = takeElement(compiled);
    if (!element || isBehindEnd) {
      return std::nullopt;
    }
    isBehindEnd = element->kind == Element::Kind::kSubjectEnd;
    elements.push_back(*element);
  }
  return elements;
}

namespace {

constexpr CharacterSet anyCharacter() {
  CharacterSet all{};
  std::fill(all.begin() + 1, all.end(), true);
  return all;
}
constexpr CharacterSet kAnyCharacter = anyCharacter();

void addItem(const Element& item, bool roughly, std::vector<Place>& places) {
  const std::size_t most = roughly ? 1 : kMaxRange;
  const std::size_t low = std::min(item.low, most);
  places.insert(places.end(), low, {&item.takes, false, false});
  if (item.high > most) {
    places.push_back({&item.takes, true, true});
  } else {
    places.insert(places.end(), item.high - low, {&item.takes, true, false});
  }
}

/// A reference takes what its group can match, or anything when repeated.
void addReference(const Element& reference, std::size_t groupStart, std::size_t groupEnd,
                  std::vector<Place>& places) {
  if (reference.low != 1 || reference.high != 1) {
    places.push_back({&kAnyCharacter, true, true});
    return;
  }
  for (std::size_t place = groupStart; place < groupEnd; ++place) {
    places.push_back(Place(places[place]));
  }
}

}  // namespace

std::vector<Place> placesOf(const std::vector<Element>& elements, bool roughly) {
  std::vector<Place> places;
  std::array<std::size_t, kMaxGroups> starts{};
  std::array<std::size_t, kMaxGroups> ends{};
  for (const Element& element : elements) {
    const auto group = static_cast<std::size_t>(element.group);
    if (element.kind == Element::Kind::kGroupStart) {
      starts[group] = places.size();
    } else if (element.kind == Element::Kind::kGroupEnd) {
      ends[group] = places.size();
    } else if (element.kind == Element::Kind::kItem) {
      addItem(element, roughly, places);
    } else if (element.kind == Element::Kind::kReference) {
      addReference(roughly ? Element{.low = 0} : element, starts[group], ends[group], places);
    }
    if (places.size() > LineFilter::kMaxPlaces) {
      break;
    }
  }
  return places;
}

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
