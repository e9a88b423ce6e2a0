// The order of sorted lists.

#include "framework/controls/sort_position.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

using Texts = std::vector<std::string>;

int positionIn(const Texts& rows, const std::string& text, ziRowOrder order) {
  return sortedPosition(
      text, static_cast<int>(rows.size()), [&](int row) { return rows.at(row); }, order);
}

Texts sorted(const Texts& texts, ziRowOrder order) {
  Texts rows;
  for (const std::string& text : texts) {
    rows.insert(rows.begin() + positionIn(rows, text, order), text);
  }
  return rows;
}

TEST(SortPosition, OrdersByUpperCaseAndThenByBytes) {
  EXPECT_THAT(sorted({"beta", "Alpha", "alpha", "ALPHA", "Beta", "alp", ""}, ziRowOrder::kUnknown),
              ElementsAre("", "alp", "ALPHA", "Alpha", "alpha", "Beta", "beta"));
  // '_' stands behind the capitals and before the small letters; the latter count as capitals.
  EXPECT_THAT(sorted({"a_b", "aab", "azb"}, ziRowOrder::kUnknown),
              ElementsAre("aab", "azb", "a_b"));
  // Bytes above 127 are no negative numbers.
  EXPECT_THAT(sorted({"\xE4", "z", "a"}, ziRowOrder::kUnknown), ElementsAre("a", "z", "\xE4"));
}

TEST(SortPosition, PassesEqualTextsAndStopsAtTheFirstGreaterOneEvenInAListOutOfOrder) {
  EXPECT_EQ(positionIn({"a", "b", "b", "c"}, "b", ziRowOrder::kUnknown), 3);
  EXPECT_EQ(positionIn({"m", "z", "a", "b"}, "n", ziRowOrder::kUnknown), 1);
  EXPECT_EQ(positionIn({"m", "z", "a", "b"}, "zz", ziRowOrder::kUnknown), 4);
}

TEST(SortPosition, HalvingGivesWhatTheWalkGivesForEveryListThatWasKeptInOrder) {
  std::mt19937 random(4711);
  for (int round = 0; round < 200; ++round) {
    Texts texts(random() % 20);
    for (std::string& text : texts) {
      std::generate_n(std::back_inserter(text), random() % 4,
                      [&] { return "aAbB_"[random() % 5]; });
    }
    ASSERT_EQ(sorted(texts, ziRowOrder::kSorted), sorted(texts, ziRowOrder::kUnknown))
        << ::testing::PrintToString(texts);
  }
}

}  // namespace
