// A pattern without references is a row of places, each of which takes one character out of a set;
// some may be left out, some may take further ones. A state of the automaton is the set of places
// that the characters read so far can have led to. Its states are made when a text first leads to
// them, and all are forgotten when they become too many, so a text costs one look into a table for
// a character and memory is bounded. Lines are no concern of the loop: a line feed leads to the
// first state from any other.
//
// A pattern that does not fit is recognised roughly: a range counts to one at most, a reference
// takes what its group can match or, when repeated, anything. So does one whose states do not fit,
// since fewer places make fewer states. Rough places pass more lines, never fewer.

#include "support/regular_expression_filter.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace regexp {

namespace {

// Results of a transition; the states follow.
constexpr std::uint32_t kUnknown = 0;
constexpr std::uint32_t kMatched = 1;

// One million of bytes, which the processor's cache holds.
constexpr std::size_t kMaxTransitions = std::size_t{1} << 18;
constexpr std::size_t kMaxStates = std::size_t{1} << 12;

constexpr Byte kLineFeed = '\n';
constexpr std::size_t kLineFeedKind = 0;

constexpr CharacterSet anyCharacter() {
  CharacterSet all{};
  std::fill(all.begin() + 1, all.end(), true);
  return all;
}
constexpr CharacterSet kAnyCharacter = anyCharacter();

std::size_t startOfLine(std::string_view text, std::size_t from, std::size_t place) {
  const std::size_t feed = text.substr(from, place - from).rfind('\n');
  return feed == std::string_view::npos ? from : from + feed + 1;
}

std::size_t endOfLine(std::string_view text, std::size_t place) {
  return std::min(text.find('\n', place), text.size());
}

}  // namespace

LineFilter::LineFilter(const char* compiled) : isAnchored(circf) {
  if (auto read = elementsOf(compiled)) {
    elements = std::move(*read);
    build(false);
  } else {
    passesAll = true;
  }
}

void LineFilter::build(bool roughly) {
  isRough = roughly;
  addPlaces(roughly);
  if (places.size() >= kMaxPlaces) {
    passesAll = roughly;
    return roughly ? void() : build(true);
  }
  sortCharacters();
  chooseWord();
  firstPlaces.reset();
  firstPlaces.set(0);
  close(firstPlaces);
  passesAll = firstPlaces.test(places.size()) && !isEndGiven;
  forgetStates();
}

// ---- places ------------------------------------------------------------------------------------

void LineFilter::addPlaces(bool roughly) {
  struct Extent {
    std::size_t first = 0;
    std::size_t last = 0;
  };
  std::array<Extent, kMaxGroups> groups{};
  places.clear();
  for (const Element& element : elements) {
    Extent& group = groups[static_cast<std::size_t>(element.group)];
    switch (element.kind) {
      case Element::Kind::kGroupStart:
        group.first = places.size();
        break;
      case Element::Kind::kGroupEnd:
        group.last = places.size();
        break;
      case Element::Kind::kSubjectEnd:
        isEndGiven = true;
        break;
      case Element::Kind::kItem:
        addItem(element, roughly);
        break;
      case Element::Kind::kReference:
        if (roughly || element.low != 1 || element.high != 1) {
          places.push_back({&kAnyCharacter, true, true});
        } else {
          addCopy(group.first, group.last);
        }
        break;
    }
    if (places.size() >= kMaxPlaces) {
      return;
    }
  }
}

void LineFilter::addItem(const Element& item, bool roughly) {
  const std::size_t most = roughly ? 1 : kMaxRange;
  const std::size_t low = std::min(item.low, most);
  places.insert(places.end(), low, {&item.takes, false, false});
  if (item.high > most) {
    places.push_back({&item.takes, true, true});
  } else {
    places.insert(places.end(), item.high - low, {&item.takes, true, false});
  }
}

void LineFilter::addCopy(std::size_t first, std::size_t last) {
  for (std::size_t place = first; place < last; ++place) {
    places.push_back(Place(places[place]));
  }
}

/// Gives a common number to the characters that the same places take.
void LineFilter::sortCharacters() {
  std::unordered_map<Places, std::size_t> kinds;
  takenBy.assign(1, Places());
  for (std::size_t c = 0; c < kCharacters; ++c) {
    if (c == kLineFeed) {
      kindOf[c] = kLineFeedKind;
      continue;
    }
    Places taking;
    for (std::size_t place = 0; place < places.size(); ++place) {
      taking[place] = (*places[place].takes)[c];
    }
    const auto [kind, isNew] = kinds.try_emplace(taking, takenBy.size());
    if (isNew) {
      takenBy.push_back(taking);
    }
    kindOf[c] = static_cast<std::uint16_t>(kind->second);
  }
}

/// The longest word that each match holds.
void LineFilter::chooseWord() {
  word.clear();
  std::string current;
  for (const Place& place : places) {
    const CharacterSet& takes = *place.takes;
    if (place.isOptional || place.isRepeated || std::count(takes.begin(), takes.end(), true) != 1) {
      current.clear();
      continue;
    }
    current += static_cast<char>(std::find(takes.begin(), takes.end(), true) - takes.begin());
    if (current.size() > word.size()) {
      word = current;
    }
  }
}

// ---- states ------------------------------------------------------------------------------------

/// Adds the places that are reached by leaving out others.
void LineFilter::close(Places& reached) const {
  for (std::size_t place = 0; place < places.size(); ++place) {
    if (places[place].isOptional && reached.test(place)) {
      reached.set(place + 1);
    }
  }
}

// The rows of the table. The first one is that of no state, so kUnknown and kMatched are none.
void LineFilter::forgetStates() {
  states.clear();
  reachedIn.clear();
  transitions.assign(takenBy.size(), kUnknown);
  stateOf(firstPlaces);
}

/// The state, made if it is new; its row's index in the table.
LineFilter::State LineFilter::stateOf(const Places& reached) {
  const auto [state, isNew] = states.try_emplace(reached, static_cast<State>(transitions.size()));
  if (isNew) {
    reachedIn.push_back(reached);
    transitions.resize(transitions.size() + takenBy.size(), kUnknown);
  }
  return state->second;
}

LineFilter::State LineFilter::makeTransition(State state, std::size_t kind) {
  const Places before = reachedIn[state / takenBy.size() - 1];
  if (kind == kLineFeedKind) {
    const bool isMatch = isEndGiven && before.test(places.size());
    return transitions[state] = isMatch ? kMatched : static_cast<State>(takenBy.size());
  }
  const Places taking = before & takenBy[kind];
  Places after = taking << 1;
  for (std::size_t place = 0; place < places.size(); ++place) {
    if (places[place].isRepeated && taking.test(place)) {
      after.set(place);
    }
  }
  close(after);
  if (!isAnchored) {
    after |= firstPlaces;
  }
  if (after.test(places.size()) && !isEndGiven) {
    return transitions[state + kind] = kMatched;
  }
  if (reachedIn.size() >= kMaxStates || transitions.size() >= kMaxTransitions) {
    hasForgotten = true;
    forgetStates();
    return stateOf(after);
  }
  const State made = stateOf(after);
  return transitions[state + kind] = made;
}

/// Where the first match ends of those in the lines of [from, to), which a line's end follows; or
/// kNoLine.
std::size_t LineFilter::endOfMatch(std::string_view text, std::size_t from, std::size_t to) {
  auto state = static_cast<State>(takenBy.size());
  for (std::size_t place = from; place < to; ++place) {
    const std::size_t kind = kindOf[static_cast<Byte>(text[place])];
    State following = transitions[state + kind];
    if (following == kUnknown) {
      following = makeTransition(state, kind);
    }
    if (following == kMatched) {
      return place;
    }
    state = following;
  }
  return makeTransition(state, kLineFeedKind) == kMatched ? to : kNoLine;
}

// Goes by windows of whole lines. A window begins at the next line with the word; it is that line
// alone as long as the word is rare, and grows while there is little to skip.
std::size_t LineFilter::nextLine(std::string_view text, std::size_t from) {
  constexpr std::size_t kMaxWindow = 65536;
  constexpr std::size_t kWorthASkip = 256;
  if (passesAll) {
    return from <= text.size() ? from : kNoLine;
  }
  std::size_t window = word.empty() ? kMaxWindow : 1;
  while (from <= text.size()) {
    if (!word.empty()) {
      const void* found = memmem(text.data() + from, text.size() - from, word.data(), word.size());
      if (found == nullptr) {
        return kNoLine;
      }
      const auto place = static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
      const std::size_t line = startOfLine(text, from, place);
      window = line - from < kWorthASkip ? std::min(2 * window, kMaxWindow) : 1;
      from = line;
    }
    const std::size_t to = endOfLine(text, std::min(from + window - 1, text.size()));
    const std::size_t match = endOfMatch(text, from, to);
    if (match != kNoLine) {
      return startOfLine(text, from, match);
    }
    if (hasForgotten && !isRough) {
      build(true);
    }
    from = to + 1;
  }
  return kNoLine;
}

}  // namespace regexp
