// The order of sorted lists, and where a drop-down list goes.

#include <gmock/gmock.h>

#include <vector>

#include "framework/controls/combo_box.h"

namespace {

using Texts = std::vector<RWCString>;

Texts sorted(const Texts& texts, ziRowOrder order) {
  Texts rows;
  for (const RWCString& text : texts) {
    rows.insert(rows.begin() + sortedPosition(text.view(), rows, order), text);
  }
  return rows;
}

TEST(SortPosition, OrdersByUpperCaseAndThenByBytes) {
  // '_' stands behind the capitals and before the small letters; the latter count as capitals.
  // Bytes above 127 are no negative numbers.
  EXPECT_THAT(sorted({"\xE4", "a_b", "azb", "beta", "Alpha", "alpha", "ALPHA", "Beta", "alp", ""},
                     ziRowOrder::kUnknown),
              testing::ElementsAre("", "alp", "ALPHA", "Alpha", "alpha", "azb", "a_b", "Beta",
                                   "beta", "\xE4"));
  EXPECT_EQ(sortedPosition("b", {"a", "b", "b", "c"}, ziRowOrder::kUnknown), 3);
  EXPECT_EQ(sortedPosition("n", {"m", "z", "a", "b"}, ziRowOrder::kUnknown), 1)
      << "before the first greater one even in a list out of order";
}

TEST(DropDownPlace, StaysOnTheScreen) {
  const auto place = [](zPoint entryPos, zDimension entry, zDimension list) {
    const zRect rect = dropDownRect({entryPos, entry}, list, {1000, 800});
    return (testing::Message() << rect.left << "," << rect.top << " " << rect.width() << "x"
                               << rect.height())
        .GetString();
  };
  EXPECT_EQ(place({100, 660}, {200, 20}, {220, 120}), "100,680 220x120") << "just room below";
  EXPECT_EQ(place({100, 661}, {200, 20}, {220, 120}), "100,541 220x120") << "room above only";
  EXPECT_EQ(place({100, 300}, {200, 20}, {220, 700}), "100,320 220x480") << "more room below";
  EXPECT_EQ(place({100, 390}, {200, 20}, {220, 700}), "100,410 220x390") << "as much above";
  EXPECT_EQ(place({100, 600}, {200, 20}, {220, 700}), "100,0 220x600") << "more room above";
  EXPECT_EQ(place({100, -20}, {200, 820}, {220, 700}), "100,800 220x1") << "no room at all";
  EXPECT_EQ(place({900, 100}, {200, 20}, {220, 120}), "780,120 220x120") << "cut at the right";
  EXPECT_EQ(place({-50, 100}, {200, 20}, {2020, 120}), "0,120 2020x120") << "wider than all";
}

}  // namespace
