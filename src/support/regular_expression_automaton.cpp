// A state of the automaton is the set of places that the characters read so far can have led to: a
// place is reached when those before it are done. States are made when a text first leads to them,
// and all are forgotten when they become too many. So a character of the text costs one look into a
// table, and memory is bounded. Lines are no concern of the loops: a line feed leads to the first
// state from any other.

#include "support/regular_expression_automaton.h"

#include <algorithm>
#include <string>

namespace regexp {

namespace {

constexpr std::uint32_t kUnknown = 0;
constexpr std::size_t kRowsBeforeStates = 2;

// One million of bytes, which the processor's cache holds.
constexpr std::size_t kMaxTransitions = std::size_t{1} << 18;
constexpr std::size_t kMaxStates = std::size_t{1} << 12;

constexpr std::size_t kLineFeedKind = 0;

}  // namespace

Automaton::Automaton(const std::vector<Place>& row, bool anchored, bool endGiven)
    : places(row), isAnchored(anchored), isEndGiven(endGiven) {
  sortCharacters();
  firstPlaces.set(0);
  close(firstPlaces);
  forgetStates();
}

void Automaton::sortCharacters() {
  std::unordered_map<std::string, Byte> known;
  takenBy.assign(1, Places());
  for (std::size_t c = 0; c < kCharacters; ++c) {
    if (c == '\n') {
      kinds[c] = kLineFeedKind;
      continue;
    }
    std::string takers;  // a repeated place counts once
    for (std::size_t place = 0; place < places.size(); ++place) {
      if (place == 0 || places[place].takes != places[place - 1].takes) {
        takers += (*places[place].takes)[c] ? '+' : '-';
      }
    }
    const auto [kind, isNew] = known.try_emplace(takers, static_cast<Byte>(takenBy.size()));
    if (isNew) {
      takenBy.push_back(placesTaking(c));
    }
    kinds[c] = kind->second;
  }
}

Automaton::Places Automaton::placesTaking(std::size_t character) const {
  Places taking;
  for (std::size_t place = 0; place < places.size(); ++place) {
    taking[place] = (*places[place].takes)[character];
  }
  return taking;
}

/// Adds the places that are reached by leaving out others.
void Automaton::close(Places& reached) const {
  for (std::size_t place = 0; place < places.size(); ++place) {
    if (places[place].isOptional && reached.test(place)) {
      reached.set(place + 1);
    }
  }
}

void Automaton::forgetStates() {
  states.clear();
  reachedIn.clear();
  transitions.assign(takenBy.size(), kUnknown);
  transitions.insert(transitions.end(), takenBy.size(), matched());
  stateOf(firstPlaces);
}

Automaton::State Automaton::stateOf(const Places& reached) {
  const auto [state, isNew] = states.try_emplace(reached, static_cast<State>(transitions.size()));
  if (isNew) {
    reachedIn.push_back(reached);
    transitions.resize(transitions.size() + takenBy.size(), kUnknown);
  }
  return state->second;
}

Automaton::State Automaton::afterLineFeed(const Places& reached) const {
  return isEndGiven && reached.test(places.size()) ? matched() : firstState();
}

Automaton::Places Automaton::afterCharacter(const Places& reached, std::size_t kind) const {
  const Places taking = reached & takenBy[kind];
  Places after = taking << 1;
  for (std::size_t place = 0; place < places.size(); ++place) {
    if (places[place].isRepeated && taking.test(place)) {
      after.set(place);
    }
  }
  close(after);
  return isAnchored ? after : after | firstPlaces;
}

Automaton::State Automaton::makeTransition(State state, std::size_t kind) {
  const Places& reached = reachedIn[state / takenBy.size() - kRowsBeforeStates];
  if (kind == kLineFeedKind) {
    return transitions[state + kind] = afterLineFeed(reached);
  }
  const Places after = afterCharacter(reached, kind);
  if (!isEndGiven && after.test(places.size())) {
    return transitions[state + kind] = matched();
  }
  if (reachedIn.size() >= kMaxStates || transitions.size() >= kMaxTransitions) {
    hasForgotten = true;
    forgetStates();
    return stateOf(after);
  }
  const State made = stateOf(after);
  return transitions[state + kind] = made;
}

/// Whether the known states refuse all lines of [from, to). Each look into the table waits for the
/// one before it, so four parts of the text are read side by side.
bool Automaton::isRefused(std::string_view text, std::size_t from, std::size_t to) const {
  constexpr std::size_t kParts = 4;
  struct Part {
    const char* at;
    const char* end;
    State state;
  };
  std::array<Part, kParts> parts{};
  auto shortest = static_cast<std::ptrdiff_t>(to - from);
  for (std::size_t i = 0, start = from; i < kParts; ++i) {
    const std::size_t wanted = std::max(start, from + (to - from) * (i + 1) / kParts);
    const std::size_t end = std::min(text.find('\n', wanted), to);
    parts[i] = {text.data() + std::min(start, to), text.data() + end, firstState()};
    shortest = std::min(shortest, parts[i].end - parts[i].at);
    start = end + 1;
  }
  const State* const table = transitions.data();
  auto [a, b, c, d] = parts;
  for (; shortest > 0; --shortest) {
    a.state = table[a.state + kindOf(*a.at++)];
    b.state = table[b.state + kindOf(*b.at++)];
    c.state = table[c.state + kindOf(*c.at++)];
    d.state = table[d.state + kindOf(*d.at++)];
  }
  return std::ranges::all_of(std::array{a, b, c, d}, [&](Part part) {
    while (part.at < part.end) {
      part.state = table[part.state + kindOf(*part.at++)];
    }
    return table[part.state + kLineFeedKind] > matched();
  });
}

std::size_t Automaton::findMatch(std::string_view text, std::size_t from, std::size_t to,
                                 LongWork& work) {
  constexpr std::size_t kManyCharacters = 1024;
  constexpr std::size_t kWorkOfTransition = 1024;
  if (to - from >= kManyCharacters && isRefused(text, from, to)) {
    return kNowhere;
  }
  State state = firstState();
  for (std::size_t place = from; place < to; ++place) {
    const std::size_t kind = kindOf(text[place]);
    const State next = transitions[state + kind];
    if (next == kUnknown && !work.goOn(kWorkOfTransition)) {
      return kNowhere;
    }
    state = next == kUnknown ? makeTransition(state, kind) : next;
    if (state == matched()) {
      return place;
    }
  }
  return makeTransition(state, kLineFeedKind) == matched() ? to : kNowhere;
}

}  // namespace regexp
