#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "support/regular_expression_elements.h"

namespace regexp {

/// Finds the lines of a text that the last compiled pattern can match. It passes some that the
/// pattern does not match, such as with references, so step has the last word on a line.
class LineFilter {
 public:
  static constexpr std::size_t kNoLine = std::string_view::npos;

  explicit LineFilter(const char* compiled);
  LineFilter(const LineFilter&) = delete;
  LineFilter& operator=(const LineFilter&) = delete;

  /// Start of the first such line at or behind `from`, which counts as a line's start itself; or
  /// kNoLine. A line feed at the end of the text has an empty line behind it.
  std::size_t nextLine(std::string_view text, std::size_t from);

 private:
  static constexpr std::size_t kMaxPlaces = 512;
  using Places = std::bitset<kMaxPlaces>;
  using State = std::uint32_t;

  /// A character of the pattern.
  struct Place {
    const CharacterSet* takes;
    bool isOptional;
    bool isRepeated;
  };

  // What the automaton recognises.
  void build(bool roughly);
  void addPlaces(bool roughly);
  void addItem(const Element& item, bool roughly);
  void addCopy(std::size_t first, std::size_t last);
  void sortCharacters();
  void chooseWord();

  // Its states.
  void forgetStates();
  void close(Places& reached) const;
  State stateOf(const Places& reached);
  State makeTransition(State state, std::size_t kind);
  std::size_t endOfMatch(std::string_view text, std::size_t from, std::size_t to);

  std::vector<Element> elements;
  bool isAnchored;
  bool passesAll = false;
  bool isRough = false;
  std::vector<Place> places;
  bool isEndGiven = false;
  std::string word;

  std::array<std::uint16_t, kCharacters> kindOf{};
  std::vector<Places> takenBy;
  Places firstPlaces;
  std::unordered_map<Places, State> states;
  std::vector<Places> reachedIn;
  std::vector<State> transitions;
  bool hasForgotten = false;
};

}  // namespace regexp
