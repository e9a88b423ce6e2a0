// A pattern without references is a row of places, each of which takes one character out of a set;
// some may be left out, some may take further ones. Such a row is what the automaton recognises. A
// pattern with too many places is recognised roughly: a range counts to one at most, a reference
// takes anything. So is one that needs too many states, since fewer places make fewer states. Rough
// places pass more lines, never fewer.

#include "support/regular_expression_filter.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace regexp {

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
    if (places.size() > Automaton::kMaxPlaces) {
      break;
    }
  }
  return places;
}

/// The one character that a place takes, once; NUL when there are others.
char onlyCharacter(const Place& place) {
  const CharacterSet& takes = *place.takes;
  const bool isOnly =
      !place.isOptional && !place.isRepeated && std::count(takes.begin(), takes.end(), true) == 1;
  return isOnly ? static_cast<char>(std::find(takes.begin(), takes.end(), true) - takes.begin())
                : '\0';
}

std::size_t startOfLine(std::string_view text, std::size_t from, std::size_t place) {
  const std::size_t feed = text.substr(from, place - from).rfind('\n');
  return feed == std::string_view::npos ? from : from + feed + 1;
}

}  // namespace

LineFilter::LineFilter(const char* compiled, std::string_view searched) : text(searched) {
  constexpr std::size_t kSample = 16384;
  if (auto read = elementsOf(compiled)) {
    elements = std::move(*read);
    recognise(false);
    chooseWord(text.substr(0, kSample));
  }
}

void LineFilter::recognise(bool roughly) {
  isRough = roughly;
  automaton.reset();
  places = placesOf(elements, roughly);
  if (places.size() > Automaton::kMaxPlaces) {
    if (!roughly) {
      recognise(true);
    }
    return;
  }
  const bool isEndGiven = !elements.empty() && elements.back().kind == Element::Kind::kSubjectEnd;
  automaton = std::make_unique<Automaton>(places, circf, isEndGiven);
  if (automaton->matchesAll()) {
    automaton.reset();
  }
}

/// Chooses what is looked for first, by far faster than the automaton is: of the characters and
/// words that each match holds one that is rare in the sample, or else the longest word.
void LineFilter::chooseWord(std::string_view sample) {
  constexpr std::size_t kRare = 256;
  constexpr std::size_t kLongWord = 4;
  std::array<std::size_t, kCharacters> counts{};
  for (const char c : sample) {
    ++counts[static_cast<Byte>(c)];
  }
  std::string longest;
  std::string current;
  std::size_t least = sample.size() / kRare + 1;
  word.clear();
  for (const Place& place : places) {
    const char c = onlyCharacter(place);
    if (c == '\0') {
      current.clear();
      continue;
    }
    current += c;
    longest = std::max(longest, current,
                       [](const auto& a, const auto& b) { return a.size() < b.size(); });
    if (const std::size_t count = counts[static_cast<Byte>(c)]; count < least) {
      least = count;
      word = c;
    }
  }
  if (word.empty() && longest.size() >= kLongWord) {
    word = longest;
  }
}

/// The next line with the word. While the word is rare the window is that line alone.
std::size_t LineFilter::lineWithWord(std::size_t from) {
  constexpr std::size_t kWorthASkip = 256;
  const void* found = memmem(text.data() + from, text.size() - from, word.data(), word.size());
  if (found == nullptr) {
    return kNoLine;
  }
  const auto place = static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
  const std::size_t line = startOfLine(text, from, place);
  window = line - from < kWorthASkip ? window : 1;
  return line;
}

// Goes by windows of whole lines, which grow while they are refused.
std::size_t LineFilter::nextLine(std::size_t from, LongWork& work) {
  constexpr std::size_t kMaxWindow = 65536;
  while (from <= text.size()) {
    if (automaton == nullptr) {
      return from;
    }
    if (!word.empty() && (from = lineWithWord(from)) == kNoLine) {
      break;
    }
    const std::size_t to = text.find('\n', std::min(from + window - 1, text.size()));
    const std::size_t end = std::min(to, text.size());
    const std::size_t match = automaton->findMatch(text, from, end, work);
    if (match != Automaton::kNowhere) {
      window = 1;
      return startOfLine(text, from, match);
    }
    if (!work.goOn(end - from)) {
      break;
    }
    if (automaton->hasOverflowed() && !isRough) {
      recognise(true);
    }
    window = std::min(2 * window, kMaxWindow);
    from = end + 1;
  }
  return kNoLine;
}

}  // namespace regexp
