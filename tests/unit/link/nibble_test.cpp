#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "link/wire.h"

namespace {

std::string encoded(const std::string& bytes) {
  std::string text(2 * bytes.size() + 1, 'x');
  EXPECT_EQ(NibbleEncode(bytes.data(), text.data(), static_cast<int>(bytes.size())),
            static_cast<int>(2 * bytes.size()));
  EXPECT_EQ(text.back(), '\0');
  text.pop_back();
  return text;
}

std::string decoded(const std::string& text) {
  std::string bytes(text.size() / 2 + 1, '!');
  EXPECT_EQ(NibbleDecode(text.data(), bytes.data(), static_cast<int>(text.size())),
            static_cast<int>(text.size() / 2));
  EXPECT_EQ(bytes.back(), '!') << "wrote past the end";
  bytes.pop_back();
  return bytes;
}

TEST(Nibble, writesHighNibbleFirstWithTheSixCharactersAfterNine) {
  EXPECT_EQ(encoded("\xAF"), ":?");
  EXPECT_EQ(encoded("\x01\x23\x45\x67\x89\xab\xcd\xef"), "0123456789:;<=>?");
  EXPECT_EQ(encoded(std::string(4, '\0')), "00000000");
  EXPECT_EQ(encoded(""), "");
}

TEST(Nibble, givesBackEveryByteAtEveryLength) {
  std::string bytes;
  for (int length = 0; length < 300; ++length) {
    ASSERT_EQ(decoded(encoded(bytes)), bytes) << "length " << length;
    bytes.push_back(static_cast<char>(length * 5 + length / 256));
  }
}

TEST(Nibble, decodesAnyTwoCharactersByEightBitArithmetic) {
  std::string text;
  std::string expected;
  for (int high = 0; high < 256; ++high) {
    for (int low = 0; low < 256; ++low) {
      text += {static_cast<char>(high), static_cast<char>(low)};
      expected.push_back(static_cast<char>((high - '0') * 16 + (low - '0')));
    }
  }
  EXPECT_EQ(decoded(text), expected);
  for (std::size_t i = 0; i < text.size(); i += 2) {
    ASSERT_EQ(decoded(text.substr(i, 2)), expected.substr(i / 2, 1)) << "pair " << i / 2;
  }
}

TEST(Nibble, ignoresAnOddLastCharacter) {
  EXPECT_EQ(decoded("41429"), "AB");
  EXPECT_EQ(decoded("4"), "");
}

}  // namespace
