#include "support/dbl_list.h"

#include <memory>
#include <vector>

#include <gmock/gmock.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using IntList = zTypedDlist<int>;

int values[] = {0, 1, 2, 3, 4};

int* item(int value) {
  return &values[value];
}

std::vector<int> contents(IntList& list) {
  std::vector<int> seen;
  IntList::Iter walk(list);
  while (const int* value = walk.next()) {
    seen.push_back(*value);
  }
  return seen;
}

IntList& fill(IntList& list, std::initializer_list<int> wanted) {
  for (const int value : wanted) {
    list.append(item(value));
  }
  return list;
}

TEST(DblList, NewestComesFirstWhenAddedAndLastWhenAppended) {
  IntList list;
  list.add(item(1));
  list.add(item(2));
  list.append(item(3));
  EXPECT_THAT(contents(list), ElementsAre(2, 1, 3));
  EXPECT_EQ(list.popFront(), item(2));
  EXPECT_EQ(list.popBack(), item(3));
  EXPECT_EQ(list.popBack(), item(1));
  EXPECT_EQ(list.popBack(), nullptr);
  EXPECT_TRUE(list.isEmpty());
}

TEST(DblList, AnItemRemovedUnderAWalkLetsItGoOnWithTheNext) {
  IntList list;
  fill(list, {1, 2, 3});
  IntList::Iter walk(list);
  walk.next();
  walk.removeCurrent();
  EXPECT_EQ(walk.next(), item(2));
  EXPECT_THAT(contents(list), ElementsAre(2, 3));
}

TEST(DblList, RemovingTheNextItemInAWalkSkipsIt) {
  IntList list;
  fill(list, {1, 2, 3});
  IntList::Iter walk(list);
  walk.next();
  EXPECT_TRUE(list.remove(item(2)));
  EXPECT_FALSE(list.remove(item(2)));
  EXPECT_EQ(walk.next(), item(3));
  EXPECT_EQ(walk.next(), nullptr);
}

TEST(DblList, TwoWalksOnOneNodeSurviveItsRemovalAndItIsGoneForBoth) {
  IntList list;
  fill(list, {1, 2, 3});
  IntList::Iter first(list);
  IntList::Iter second(list);
  first.next();
  second.next();
  first.removeCurrent();
  EXPECT_EQ(second.next(), item(2));
  EXPECT_EQ(first.next(), item(2));
  EXPECT_THAT(contents(list), ElementsAre(2, 3));
}

TEST(DblList, ANodePoppedUnderAWalkIsNotMetAgain) {
  IntList list;
  fill(list, {1, 2});
  IntList::Iter walk(list);
  walk.next();
  EXPECT_EQ(list.popFront(), item(1));
  EXPECT_EQ(list.popFront(), item(2));
  EXPECT_TRUE(list.isEmpty());
  EXPECT_EQ(walk.next(), nullptr);
}

TEST(DblList, ItemsPutInDuringAWalkAreMetOnlyAtTheEnd) {
  IntList list;
  fill(list, {1, 2});
  IntList::Iter walk(list);
  walk.next();
  list.add(item(3));
  list.append(item(4));
  EXPECT_EQ(walk.next(), item(2));
  EXPECT_EQ(walk.next(), item(4));
  EXPECT_EQ(walk.next(), nullptr);
  EXPECT_EQ(walk.next(), item(3)) << "a walk that has ended starts anew";
}

TEST(DblList, RemovingWithAWalkThatStandsOnNothingChangesNothing) {
  IntList list;
  fill(list, {1});
  IntList::Iter walk(list);
  walk.removeCurrent();
  walk.next();
  walk.next();
  walk.removeCurrent();
  walk.next();
  walk.reset();
  walk.removeCurrent();
  EXPECT_THAT(contents(list), ElementsAre(1));
}

TEST(DblList, AWalkEndsWhenTheListIsDestroyedUnderIt) {
  auto list = std::make_unique<IntList>();
  fill(*list, {1, 2});
  IntList::Iter outer(*list);
  IntList::Iter inner(*list);
  outer.next();
  inner.next();
  inner.removeCurrent();
  list.reset();
  EXPECT_EQ(outer.next(), nullptr);
  inner.removeCurrent();
  EXPECT_EQ(inner.next(), nullptr);
}

TEST(DblList, ReplacementTakesTheSamePlace) {
  IntList list;
  fill(list, {1, 2, 3});
  EXPECT_TRUE(list.replace(item(2), item(4)));
  EXPECT_FALSE(list.replace(item(2), item(0)));
  EXPECT_THAT(contents(list), ElementsAre(1, 4, 3));
}

}  // namespace
