// The order of sorted lists, and where a drop-down list goes.

#include <gmock/gmock.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "framework/controls/combo_box.h"

static std::ostream& operator<<(std::ostream& out, const zRect& rect) {
  return out << rect.left << "," << rect.top << " " << rect.width() << "x" << rect.height();
}

namespace {

using testing::ElementsAre;
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
  // Bytes above 127 are no negative numbers.
  EXPECT_THAT(sorted({"\xE4", "a_b", "aab", "azb"}, ziRowOrder::kUnknown),
              ElementsAre("aab", "azb", "a_b", "\xE4"));
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
    ASSERT_EQ(sorted(texts, ziRowOrder::kSorted), sorted(texts, ziRowOrder::kUnknown)) << round;
  }
}

TEST(DropDownPlace, StaysOnTheScreen) {
  const auto at = [](int x, int y, int width, int height) {
    return zRect(zPoint{x, y}, zDimension{width, height});
  };
  const std::tuple<const char*, zRect, zDimension, zRect> rows[] = {
      {"room below", at(100, 100, 200, 20), {220, 120}, at(100, 120, 220, 120)},
      {"just room below", at(100, 660, 200, 20), {220, 120}, at(100, 680, 220, 120)},
      {"room only above", at(100, 661, 200, 20), {220, 120}, at(100, 541, 220, 120)},
      {"no room, more below", at(100, 300, 200, 20), {220, 700}, at(100, 320, 220, 480)},
      {"no room, as much above", at(100, 390, 200, 20), {220, 700}, at(100, 410, 220, 390)},
      {"no room, more above", at(100, 600, 200, 20), {220, 700}, at(100, 0, 220, 600)},
      {"no room at all", at(100, -20, 200, 820), {220, 700}, at(100, 800, 220, 1)},
      {"cut at the right", at(900, 100, 200, 20), {220, 120}, at(780, 120, 220, 120)},
      {"cut at the left", at(-50, 100, 200, 20), {220, 120}, at(0, 120, 220, 120)},
      {"wider than the screen", at(10, 100, 2000, 20), {2020, 120}, at(0, 120, 2020, 120)},
      {"entry below the screen", at(100, 900, 200, 20), {220, 1200}, at(100, 0, 220, 900)},
  };
  for (const auto& [situation, entry, list, expected] : rows) {
    EXPECT_EQ(dropDownRect(entry, list, {1000, 800}), expected) << situation;
  }
}

}  // namespace
