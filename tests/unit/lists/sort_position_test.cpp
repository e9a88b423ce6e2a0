// The order of sorted lists.

#include "framework/controls/list_rows.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;

using Texts = std::vector<RWCString>;

Texts sorted(const Texts& texts, ziRowOrder order) {
  Texts rows;
  for (const RWCString& text : texts) {
    rows.insert(rows.begin() + sortedPosition(text.view(), rows, order), text);
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
  EXPECT_EQ(sortedPosition("b", {"a", "b", "b", "c"}, ziRowOrder::kUnknown), 3);
  EXPECT_EQ(sortedPosition("n", {"m", "z", "a", "b"}, ziRowOrder::kUnknown), 1);
  EXPECT_EQ(sortedPosition("zz", {"m", "z", "a", "b"}, ziRowOrder::kUnknown), 4);
}

TEST(SortPosition, HalvingGivesWhatTheWalkGivesForEveryListThatWasKeptInOrder) {
  std::mt19937 random(4711);
  for (int round = 0; round < 200; ++round) {
    Texts texts(random() % 20);
    for (RWCString& text : texts) {
      std::string made;
      std::generate_n(std::back_inserter(made), random() % 4,
                      [&] { return "aAbB_"[random() % 5]; });
      text = made;
    }
    ASSERT_EQ(sorted(texts, ziRowOrder::kSorted), sorted(texts, ziRowOrder::kUnknown))
        << "round " << round;
  }
}

}  // namespace
