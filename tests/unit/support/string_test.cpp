#include "support/rwc_string.h"
#include "support/singly_list.h"

#include <gtest/gtest.h>

namespace {

TEST(RWCString, ACopySharesTheCharactersUntilOneSideChanges) {
  RWCString first("log");
  const RWCString copy = first;
  EXPECT_EQ(first.c_str(), copy.c_str());
  first += "ged";
  EXPECT_EQ(first, RWCString("logged"));
  EXPECT_EQ(copy, RWCString("log"));
  RWCString third = copy;
  third.setAt(0, 'f');
  EXPECT_EQ(copy, RWCString("log"));
  EXPECT_EQ(third, RWCString("fog"));
}

TEST(RWCString, NullIsEmptyAndEmptyStringsStaySeparate) {
  RWCString a(static_cast<const char*>(nullptr));
  const RWCString b;
  EXPECT_TRUE(a.isEmpty());
  a += "x";
  EXPECT_TRUE(b.isEmpty());
}

TEST(RWCString, AppendsItsOwnCharacters) {
  RWCString text("ab");
  text += text;
  text += text;
  EXPECT_EQ(text, RWCString("abababab"));
  text.append(text.view().substr(0, 3));
  EXPECT_EQ(text, RWCString("ababababab").append("a"));
}

TEST(RWCString, OrderIsThatOfUnsignedBytes) {
  EXPECT_LT(RWCString("a"), RWCString("b"));
  EXPECT_LT(RWCString("z"), RWCString("\xE4"));
  EXPECT_LT(RWCString("a"), RWCString("aa"));
}

TEST(SinglyList, IsAStack) {
  int one = 1;
  int two = 2;
  zTypedSlist<int> stack;
  EXPECT_EQ(stack.pop(), nullptr);
  stack.push(&one);
  stack.push(&two);
  EXPECT_EQ(stack.top(), &two);
  EXPECT_EQ(stack.pop(), &two);
  EXPECT_EQ(stack.pop(), &one);
  EXPECT_EQ(stack.top(), nullptr);
  EXPECT_TRUE(stack.isEmpty());
}

}  // namespace
