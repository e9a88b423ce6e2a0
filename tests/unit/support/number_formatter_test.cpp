// Numbers under a picture, without a field.

#include "support/number_formatter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr const char* kPicture = "-##########";

// Types `keys` one after the other into an empty field.
std::string typed(const zNumFormatter& formatter, std::string_view keys) {
  std::string text;
  zTextRange caret;
  for (const char key : keys) {
    formatter.editKey(text, key, zNumFormatter::Edit::insert, caret);
  }
  return text;
}

std::string formatted(const zNumFormatter& formatter, std::string_view in, int flags = 0) {
  std::string out;
  formatter.format(out, in, flags);
  return out;
}

TEST(NumberFormatter, TakesASignInFirstPlaceAndTenDigits) {
  const zNumFormatter formatter(kNumShow, kPicture);
  struct Row {
    const char* keys;
    const char* text;
  };
  for (const Row& row : {Row{"12", "12"}, Row{"-12", "-12"}, Row{"1-2", "12"}, Row{"--1", "-1"},
                         Row{"+5", "5"}, Row{"1a2.b", "12"}, Row{"12345678901", "1234567890"},
                         Row{"-12345678901", "-1234567890"}, Row{"\xe4 7", "7"}}) {
    EXPECT_EQ(typed(formatter, row.keys), row.text) << row.keys;
  }
}

TEST(NumberFormatter, PutsAKeyWhereTheSelectionIs) {
  const zNumFormatter formatter(kNumShow, kPicture);
  std::string text = "1234567890";
  zTextRange selection{2, 5};
  EXPECT_EQ(formatter.editKey(text, '7', zNumFormatter::Edit::insert, selection), kNumKeyReplaced);
  EXPECT_EQ(text, "12767890");
  EXPECT_EQ(selection, (zTextRange{3, 3}));

  selection = {0, 8};
  EXPECT_EQ(formatter.editKey(text, '-', zNumFormatter::Edit::insert, selection), kNumKeyReplaced);
  EXPECT_EQ(text, "-");

  text = "-5";
  selection = {0, 0};
  EXPECT_EQ(formatter.editKey(text, '3', zNumFormatter::Edit::insert, selection), kNumKeySwallowed)
      << "a digit before the sign";
  EXPECT_EQ(text, "-5");
}

TEST(NumberFormatter, RemovesASelectionAndLeavesOtherEditingKeysToTheField) {
  constexpr long kBackspace = 8;
  constexpr long kDelete = 0x7F;
  constexpr long kLeftKey = 0xFF51;
  const zNumFormatter formatter(kNumShow, kPicture);
  std::string text = "-123";
  zTextRange selection{1, 3};
  EXPECT_EQ(formatter.editKey(text, kBackspace, zNumFormatter::Edit::remove, selection),
            kNumKeyReplaced);
  EXPECT_EQ(text, "-3");
  EXPECT_EQ(selection, (zTextRange{1, 1}));
  for (const long key : {kBackspace, kDelete, kLeftKey}) {
    EXPECT_EQ(formatter.editKey(text, key, zNumFormatter::Edit::insert, selection), kNumKeyDefault)
        << key;
  }
  selection = {-4, 900};
  EXPECT_EQ(formatter.editKey(text, '8', zNumFormatter::Edit::insert, selection), kNumKeyReplaced);
  EXPECT_EQ(text, "8") << "a range outside the text is cut to it";
}

TEST(NumberFormatter, FindsWhatIsWrongInAText) {
  const zNumFormatter formatter(kNumShow, kPicture);
  zTextRange bad;
  for (const char* good : {"", "0", "-1", "1234567890"}) {
    EXPECT_EQ(formatter.checkText(good, bad), 1) << good;
  }
  EXPECT_EQ(formatter.checkText("12x4", bad), 0);
  EXPECT_EQ(bad, (zTextRange{2, 4}));
  EXPECT_EQ(formatter.checkText("12345678901", bad), 0);
  EXPECT_EQ(bad, (zTextRange{10, 11}));
  EXPECT_TRUE(formatter.fits("-")) << "the beginning of a number";
  EXPECT_EQ(formatter.checkText("-", bad), 0) << "but none yet";
  EXPECT_EQ(bad, (zTextRange{0, 1}));
}

TEST(NumberFormatter, DropsThePlusSignUnlessThePictureShowsIt) {
  const zNumFormatter formatter(kNumShow, kPicture);
  EXPECT_EQ(formatted(formatter, "+0"), "0");
  EXPECT_EQ(formatted(formatter, "-17"), "-17");
  EXPECT_EQ(formatted(formatter, " 4 2 "), "42");
  std::string out;
  EXPECT_EQ(formatter.format(out, "+42"), 1);
  EXPECT_EQ(formatter.format(out, "4x2"), 0);
  EXPECT_EQ(out, "42");

  const zNumFormatter signs(kNumShow, "+###");
  EXPECT_EQ(formatted(signs, "+7"), "+7");
  EXPECT_EQ(formatted(signs, "+7", kNumRead), "7");
}

TEST(NumberPicture, ReadsThePrefixLetters) {
  const auto picture = zNumPicture::parse(" +L*T F R2$###");
  ASSERT_TRUE(picture);
  EXPECT_TRUE(picture->signAllowed && picture->plusShown && picture->isCurrency &&
              picture->hasForm && picture->keepsFill);
  EXPECT_EQ(picture->leftFill, '*');
  EXPECT_EQ(picture->rounding, 2);
  EXPECT_EQ(picture->digits, 3);
  EXPECT_EQ(zNumPicture::parse("##")->rounding, zNumPicture::kDefaultRounding);
  EXPECT_FALSE(zNumPicture::parse("##")->signAllowed);
  for (const char* wrong : {"", "-", "x##", "#,#", "R4#", "R", "L"}) {
    EXPECT_FALSE(zNumPicture::parse(wrong)) << wrong;
  }
}

TEST(NumberPicture, OneThatCannotBeReadLetsEverythingPass) {
  const zNumFormatter formatter(0, "what?");
  std::string text = "a";
  zTextRange caret{1, 1};
  EXPECT_EQ(formatter.editKey(text, 'b', zNumFormatter::Edit::insert, caret), kNumKeyDefault);
  EXPECT_EQ(formatter.checkText("any", caret), 1);
  EXPECT_EQ(formatted(formatter, "+x y"), "+x y");
}

}  // namespace
