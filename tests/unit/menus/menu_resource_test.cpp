// Reading of menu resources, in memory and as bytes of a file.

#include "framework/menus/menu_resource.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/menus/menu_item.h"

namespace {

constexpr zMenuRecord kEnd{};
constexpr zMenuRecord kSubMenuEnd{0, {}, kMenuRecordSubMenuEnd, 0};

zMenuRecord item(int id, const char* text = "item", unsigned flags = 0) {
  return {id, text, kMenuRecordItem, flags};
}

zMenuRecord subMenu(const char* text) {
  return {0, text, kMenuRecordSubMenu, 0};
}

std::string outline(const std::vector<ziMenuLine>& lines) {
  std::string text;
  for (const ziMenuLine& line : lines) {
    if ((line.flags & kItemSeparator) != 0) {
      text += "- ";
    } else if ((line.flags & kItemSubMenu) != 0) {
      text += line.text + "( " + outline(line.lines) + ") ";
    } else {
      text += std::to_string(line.id) + " ";
    }
  }
  return text;
}

struct Reading {
  std::string lines;
  std::string errors;
  bool operator==(const Reading&) const = default;
};

void PrintTo(const Reading& reading, std::ostream* out) {
  *out << reading.lines << "| " << reading.errors;
}

Reading read(const std::vector<zMenuRecord>& records) {
  const ziMenuReading reading = readMenuRecords(records);
  return {outline(reading.lines), reading.errors};
}

TEST(MenuResource, NestsTheRecordsBetweenStartAndEndOfASubMenu) {
  EXPECT_EQ(read({subMenu("File"),
                  item(1),
                  {0, {}, kMenuRecordSeparator, 0},
                  subMenu("Recent"),
                  item(2),
                  kSubMenuEnd,
                  item(3),
                  kSubMenuEnd,
                  item(4),
                  kEnd,
                  item(5)}),
            (Reading{"File( 1 - Recent( 2 ) 3 ) 4 ", ""}));
  EXPECT_EQ(read({item(1)}), (Reading{"1 ", ""})) << "the array's end is an end";
}

TEST(MenuResource, SkipsUnknownRecordsAndStopsAtASubMenuWithoutAnEnd) {
  EXPECT_EQ(read({item(1), {0, {}, 17, 0}, {0, {}, -1, 0}, item(2), kEnd}),
            (Reading{"1 2 ",
                     "Error: reading menu resource, invalid menuitem type 17\n"
                     "Error: reading menu resource, invalid menuitem type -1\n"}));
  EXPECT_EQ(read({subMenu("A"), subMenu("B"), item(1), kEnd, item(2)}),
            (Reading{"A( B( 1 ) ) ", "Error: decoding menu resource\n"}));
  EXPECT_EQ(missingMenuResource(0x7A8), "Error: unable to find menu resource 7a8\n");
}

TEST(MenuResource, BoundsTheNestingOfSubMenus) {
  const std::vector<zMenuRecord> deep(100000, subMenu("s"));
  EXPECT_EQ(read(deep).errors, "Error: decoding menu resource\n");
}

TEST(MenuResource, HasFlagBitsOfItsOwn) {
  EXPECT_EQ(menuItemFlags(kMenuRecordChecked), unsigned{kItemChecked});
  EXPECT_EQ(menuItemFlags(kMenuRecordGreyed), unsigned{kItemGreyed});
  EXPECT_EQ(menuItemFlags(kMenuRecordHelp), unsigned{kItemHelp});
  EXPECT_EQ(menuItemFlags(kMenuRecordDisabled), unsigned{kItemDisabled});
  EXPECT_EQ(menuItemFlags(0xF), kItemChecked | kItemGreyed | kItemHelp | kItemDisabled);
}

std::string bytes(const char* data, std::size_t size) {
  return std::string(data, size);
}
#define BYTES(literal) bytes(literal, sizeof(literal) - 1)

const std::string kFileForm =
    BYTES(
        "\0\0\x03\xE9\1\0\0\0\5&Open\0\0\0\0\0\0\0\3"  // item 1001, checked and greyed
        "\xFF\xFF\xFF\xFF\0\0\0\0\1\0\0\0\0"           // separator -1, no text
        "\0\0\0\0\0\0\0\0\4\0\0\0\0") +
    "what follows";  // end

TEST(MenuResource, IsReadFromBigEndianBytes) {
  const std::vector<zMenuRecord> records = decodeMenuRecords(kFileForm);
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].id, 1001);
  EXPECT_EQ(records[0].text, "&Open");
  EXPECT_EQ(records[0].flags, 3U);
  EXPECT_EQ(records[1].id, -1);
  EXPECT_EQ(records[1].text, std::nullopt);
  EXPECT_EQ(records[1].type, kMenuRecordSeparator);
  EXPECT_EQ(records[2].type, kMenuRecordEnd);
}

TEST(MenuResource, EndsBeforeARecordThatIsCutOff) {
  constexpr std::size_t kFirst = 22;
  constexpr std::size_t kSecond = kFirst + 13;
  constexpr std::size_t kAll = kSecond + 13;
  for (std::size_t size = 0; size <= kAll; ++size) {
    const std::size_t whole =
        std::size_t{size >= kFirst} + std::size_t{size >= kSecond} + std::size_t{size >= kAll};
    // A copy of just this size, so that a read past its end is noticed.
    const std::vector<char> cut(kFileForm.begin(),
                                kFileForm.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(decodeMenuRecords({cut.data(), cut.size()}).size(), whole) << size;
  }
  EXPECT_TRUE(decodeMenuRecords(BYTES("\0\0\0\1\1\xFF\xFF\xFF\xFFx")).empty());
}

}  // namespace
