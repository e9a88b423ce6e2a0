// A pattern without references is a row of places, each of which takes one character out of a set;
// some may be left out, some may take further ones. Such a row is what the automaton recognises. A
// pattern with too many places is recognised roughly: a range counts to one at most, a reference
// takes anything. So is one that needs too many states, since fewer places make fewer states. Rough
// places pass more lines, never fewer.
//
// A state of the automaton is the set of places that the characters read so far can have led to: a
// place is reached when those before it are done. States are made when a text first leads to them,
// and all are forgotten when they become too many. So a character of the text costs one look into a
// table, and memory is bounded. Lines are no concern of the loops: a line feed leads to the first
// state from any other.

#include <algorithm>
#include <array>
#include <bitset>
#include <cstring>
#include <string>
#include <unordered_map>
#include <utility>

#include "support/regular_expression_parts.h"

namespace regexp {

/// Recognises the lines that match a row of places.
class Automaton {
 public:
  static constexpr std::size_t kNowhere = std::string_view::npos;

  /// The places' sets must outlive the automaton. A match starts at a line's start when the row is
  /// anchored, and goes to its end when that is given.
  Automaton(const std::vector<Place>& row, bool isAnchored, bool isEndGiven);

  /// Whether any line matches, the empty one too.
  bool matchesAll() const { return !isEndGiven && firstPlaces.test(places.size()); }
  /// A place in the first of the lines [from, to) that matches; or kNowhere, also when the work is
  /// to end. `from` is a line's start and `to` a line's end.
  std::size_t findMatch(std::string_view text, std::size_t from, std::size_t to, LongWork& work);
  /// Whether there have been more states than there is room for.
  bool hasOverflowed() const { return hasForgotten; }

 private:
  using Places = std::bitset<LineFilter::kMaxPlaces + 1>;
  using State = std::uint32_t;

  void sortCharacters();
  Places placesTaking(std::size_t character) const;
  void close(Places& reached) const;
  void forgetStates();
  State stateOf(const Places& reached);
  State makeTransition(State state, std::size_t kind);
  State afterLineFeed(const Places& reached) const;
  Places afterCharacter(const Places& reached, std::size_t kind) const;
  bool isRefused(std::string_view text, std::size_t from, std::size_t to) const;

  std::size_t kindOf(char c) const { return kinds[static_cast<Byte>(c)]; }
  State matched() const { return static_cast<State>(takenBy.size()); }
  State firstState() const { return 2 * matched(); }

  std::vector<Place> places;
  bool isAnchored;
  bool isEndGiven;

  std::array<Byte, kCharacters> kinds{};  ///< of characters that the same places take
  std::vector<Places> takenBy;            ///< the places that take each kind
  Places firstPlaces;                     ///< what is reached before any character

  /// The rows of all states, with the state that each kind of character leads to. A state's number
  /// is the index of its row. The first two rows are kUnknown and matched(), which nothing leaves.
  std::vector<State> transitions;
  std::vector<Places> reachedIn;  ///< the places reached in each state
  std::unordered_map<Places, State> states;
  bool hasForgotten = false;
};

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

namespace {

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

LineFilter::~LineFilter() = default;

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
  if (places.size() > kMaxPlaces) {
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
