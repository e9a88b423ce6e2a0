// Numbers under a picture, without a field.

#include "support/number_formatter.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

constexpr const char* kPicture = "-##########";

using enum zNumFormatter::Edit;

/// What a key makes of a text in which "[" and "]" stand round the selection: the text with "|" at
/// the caret, "swallowed" or "left".
std::string afterKey(std::string text, long key, zNumFormatter::Edit edit = insert) {
  const std::size_t from = text.find('[');
  text.erase(from, 1);
  const std::size_t to = text.find(']');
  text.erase(to, 1);
  zTextRange selection{static_cast<int>(from), static_cast<int>(to)};
  const std::string before = text;
  const int result = zNumFormatter(kNumShow, kPicture).editKey(text, key, edit, selection);
  if (result != kNumKeyReplaced) {
    return text != before ? "changed" : result == kNumKeyDefault ? "left" : "swallowed";
  }
  return selection.isEmpty() ? text.insert(static_cast<std::size_t>(selection.from), "|") : "?";
}

/// The text with brackets round what is wrong.
std::string checked(std::string text) {
  zTextRange bad;
  if (zNumFormatter(kNumShow, kPicture).checkText(text, bad) == 0) {
    text.insert(static_cast<std::size_t>(bad.to), "]")
        .insert(static_cast<std::size_t>(bad.from), "[");
  }
  return text;
}

/// Behind the text "!" when something was dropped.
std::string formatted(const char* picture, const char* in, int flags = 0) {
  std::string out = "old";
  const int isWhole = zNumFormatter(kNumShow, picture).format(out, in, flags);
  return isWhole == 1 ? out : out + "!";
}

TEST(NumberFormatter, TakesKeysThatLeaveASignAndTenDigits) {
  constexpr long kBackspace = 8;
  constexpr long kDelete = 0x7F;
  constexpr long kLeftKey = 0xFF51;
  EXPECT_EQ(afterKey("12[345]67890", '7'), "127|67890");
  EXPECT_EQ(afterKey("[]", '-'), "-|");
  EXPECT_EQ(afterKey("-[]123456789", '0'), "-0|123456789");
  EXPECT_EQ(afterKey("-1234567890[]", '1'), "swallowed");
  EXPECT_EQ(afterKey("1[]2", '-'), "swallowed");
  EXPECT_EQ(afterKey("[]-5", '3'), "swallowed");
  for (const char key : std::string_view("+a:/. \xE4")) {
    EXPECT_EQ(afterKey("[]5", key), "swallowed") << key;
  }
  for (const long key : {0L, kBackspace, kDelete, kLeftKey}) {
    EXPECT_EQ(afterKey("[]5", key), "left") << key;
    EXPECT_EQ(afterKey("-[12]3", key, remove), "-|3");
  }
  EXPECT_EQ(afterKey("5[]", kBackspace, remove), "left");

  std::string text = "-123";
  zTextRange outside{-4, 900};
  zNumFormatter(kNumShow, kPicture).editKey(text, '8', insert, outside);
  EXPECT_EQ(text, "8");
}

TEST(NumberFormatter, FindsWhatIsWrongInAText) {
  for (const char* good : {"", "0", "-1", "-9876543210"}) {
    EXPECT_EQ(checked(good), good);
  }
  EXPECT_EQ(checked("12x4"), "12[x4]");
  EXPECT_EQ(checked("12345678901"), "1234567890[1]");
  EXPECT_EQ(checked("-"), "[-]") << "the beginning of a number, but none yet";
}

TEST(NumberFormatter, DropsBlanksAndThePlusSignUnlessThePictureShowsIt) {
  EXPECT_EQ(formatted(kPicture, " +4 2 "), "42");
  EXPECT_EQ(formatted(kPicture, "-1+7x8"), "-178!");
  EXPECT_EQ(formatted("+###", "+7"), "+7");
  EXPECT_EQ(formatted("+###", "+7", kNumRead), "7");
}

TEST(NumberFormatter, LetsEverythingPassUnderAPictureThatCannotBeRead) {
  const zNumFormatter formatter(0, "what?");
  std::string text = "a";
  zTextRange caret{1, 1};
  EXPECT_EQ(formatter.editKey(text, 'b', insert, caret), kNumKeyDefault);
  EXPECT_EQ(formatter.checkText("any", caret), 1);
  EXPECT_EQ(formatted("what?", "+x y"), "+x y");
}

TEST(NumberPicture, ReadsThePrefixLetters) {
  const auto picture = zNumPicture::parse(" +L*T F R2###");
  ASSERT_TRUE(picture);
  EXPECT_TRUE(picture->signAllowed && picture->plusShown && !picture->isCurrency &&
              picture->hasForm && picture->keepsFill);
  EXPECT_EQ(std::tuple(picture->leftFill, picture->rounding, picture->digits),
            std::tuple('*', 2, 3));
  EXPECT_TRUE(zNumPicture::parse("$R1#")->isCurrency && zNumPicture::parse("$R3#")->signAllowed);
  EXPECT_FALSE(zNumPicture::parse("##")->signAllowed);
  for (const char* wrong : {"", "-", "x##", "#,#", "R0#", "R4#", "R", "L"}) {
    EXPECT_FALSE(zNumPicture::parse(wrong)) << wrong;
  }
}

}  // namespace
