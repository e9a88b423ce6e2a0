#include "resources/resource_file.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "bytes.h"
#include "resources/builtin_table.h"
#include "resources/resource_ids.h"

namespace {

/// The data of the records of type 10, from 1 to 4, as letters; "-" for one that is not found.
std::string foundIn(const Bytes& bytes) {
  ResourceFile file(std::make_unique<std::istringstream>(std::string(bytes.begin(), bytes.end())));
  std::string found = file.isValid() ? "" : "invalid ";
  for (std::uint32_t id = 1; id <= 4; ++id) {
    const auto data = file.find(10, id);
    found += data ? std::string(data->begin(), data->end()) : "-";
  }
  return found;
}

TEST(ResourceFile, FindsTheFirstRecordOfATypeAndIdAsFarAsItsIndexGoes) {
  // The signature, the version, the offset of the index (all offsets are five too low), the data
  // and for each record in the index its type, id, offset and size.
  const Bytes good = fromHex("7A536967343438383232 0000 0100" + std::string(164, '0') +
                             "00000065 61 78 6262 63 64"
                             "0000000A 00000001 0000005F 00000001"
                             "00000002 00000003 00000060 00000001"
                             "0000000A 00000002 00000061 00000002"
                             "0000000A 00000003 00000063 00000001"
                             "0000000A 00000003 00000064 00000001"
                             "0000000A 00000004 00000065 00000000"
                             "00000063 00000000 00000000 00000000");
  EXPECT_EQ(foundIn(good), "abbc");
  EXPECT_EQ(foundIn(Bytes(good.begin(), good.end() - 16)), "abbc") << "the end is not needed";
  EXPECT_EQ(foundIn(Bytes(good.begin(), good.begin() + 99)), "invalid ----");
  const std::size_t second = good.size() - 5 * 16;  // the index row of record 2
  const auto foundWith = [&good](std::size_t place, std::uint8_t value) {
    Bytes changed = good;
    changed.at(place) = value;
    return foundIn(changed);
  };
  EXPECT_EQ(foundWith(14, 0xFF), "abbc");
  EXPECT_EQ(foundWith(second + 3, 99), "a---") << "the type that ends the index";
  EXPECT_EQ(foundWith(second + 11, 0), "a---") << "no offset";
  EXPECT_EQ(foundWith(second + 12, 0xFF), "a-c") << "more data than there are";
  EXPECT_EQ(foundWith(96, 0xFF), "----") << "an index beyond the end";
  for (const std::size_t at : {0U, 9U, 10U, 12U, 13U}) {
    EXPECT_EQ(foundWith(at, good[at] ^ 0x10), "invalid ----") << at;
  }
}

// Intended: the first and the last character of a text are dropped, whatever they are.
TEST(ResourceFile, HoldsTextsInQuotationMarks) {
  EXPECT_EQ(readStringResource(fromHex("01 00000004 226F6B22")), "ok");
  EXPECT_EQ(readStringResource(fromHex("01 00000001 22")), "");
  EXPECT_EQ(readStringResource(fromHex("01 FF000000 226F6B")), "o") << "as far as it goes";
}

TEST(BuiltInTable, KnowsItsResourcesByTypeAndId) {
  EXPECT_NE(builtInResource(kResourceAccelerators, kAcceleratorsMain), nullptr);
  EXPECT_EQ(builtInResource(kResourceAccelerators, 0xFFFFFFFF), nullptr);
  EXPECT_NE(builtInResource(kResourceBitmap, kBitmapOpen), nullptr);
  EXPECT_EQ(builtInResource(kResourceIcon, kBitmapOpen), nullptr);
}

}  // namespace
