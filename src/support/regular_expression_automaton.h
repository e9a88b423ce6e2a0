#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "support/long_work.h"
#include "support/regular_expression_elements.h"

namespace regexp {

/// A character of a pattern.
struct Place {
  const CharacterSet* takes = nullptr;
  bool isOptional = false;
  bool isRepeated = false;
};

/// Recognises the lines that match a row of places.
class Automaton {
 public:
  static constexpr std::size_t kMaxPlaces = 1023;
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
  using Places = std::bitset<kMaxPlaces + 1>;
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

}  // namespace regexp
