#include "resources/resource_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "image_data.h"
#include "resource_file_data.h"
#include "resources/builtin_table.h"
#include "resources/resource_ids.h"

namespace {

using testing::Optional;

constexpr std::size_t kIndexRecordSize = 16;

ResourceFile fileOf(const Bytes& bytes) {
  return ResourceFile(
      std::make_unique<std::istringstream>(std::string(bytes.begin(), bytes.end())));
}

/// Which of the records of type 10, from 1 to 3, a file has that was changed at a place.
std::string foundIn(Bytes bytes, std::size_t place, std::uint8_t value) {
  bytes.at(place) = value;
  ResourceFile file = fileOf(bytes);
  std::string found = file.isValid() ? "" : "invalid";
  for (std::uint32_t id = 1; id <= 3; ++id) {
    found += file.find(10, id).has_value() ? std::to_string(id) : "";
  }
  return found;
}

TEST(ResourceFile, FindsTheFirstRecordOfATypeAndIdAsFarAsItsIndexGoes) {
  ResourceFile file =
      fileOf(resourceFileOf({{10, 1, {1}}, {2, 1, {2, 3}}, {2, 1, {4}}, {10, 7, {}}}));
  EXPECT_THAT(file.find(2, 1), Optional(Bytes{2, 3}));
  EXPECT_THAT(file.find(10, 1), Optional(Bytes{1}));
  EXPECT_THAT(file.find(10, 7), Optional(Bytes{}));
  EXPECT_EQ(file.find(2, 7), std::nullopt);

  const Bytes good = resourceFileOf({{10, 1, {1}}, {10, 2, {2}}, {10, 3, {3}}});
  const std::size_t second = good.size() - 3 * kIndexRecordSize;
  EXPECT_EQ(foundIn(good, 14, 0xFF), "123");
  EXPECT_EQ(foundIn(good, second + 3, 99), "1") << "the type that ends the index";
  EXPECT_EQ(foundIn(good, second + 11, 0), "1") << "no offset";
  EXPECT_EQ(foundIn(good, second + 12, 0xFF), "13") << "more data than there are";
  EXPECT_EQ(foundIn(good, 96, 0xFF), "") << "an index beyond the end";
  for (const std::size_t at : {0U, 9U, 10U, 12U, 13U}) {
    EXPECT_EQ(foundIn(good, at, good[at] ^ 0x10), "invalid");
  }
  EXPECT_FALSE(fileOf(Bytes(good.begin(), good.begin() + 99)).isValid());
  const Bytes cut(good.begin(), good.end() - 16);
  EXPECT_EQ(foundIn(cut, 14, 0), "123") << "the end record is not needed";
}

// Intended: the first and the last character are dropped.
TEST(StringResource, LosesItsQuotationMarks) {
  EXPECT_EQ(readStringResource({{1, 0, 0, 0, 4, '"', 'o', 'k', '"'}}), "ok");
  EXPECT_EQ(readStringResource({{1, 0, 0, 0, 1, '"'}}), "");
  EXPECT_EQ(readStringResource({{1, 0xFF, 0, 0, 0, '"', 'o', 'k'}}), "o");
  EXPECT_EQ(readStringResource({{0, 0, 0, 0, 4, '"', 'o', 'k', '"'}}), std::nullopt);
}

TEST(AcceleratorResource, IsReadUpToItsEnd) {
  ByteWriter out(ByteWriter::Order::kBig);
  out.words({65, 1001}).number(1, 1).words({1}).number('o', 1).words({0, 3});
  out.words({65470, 1002}).number(0, 1).words({1, 0});
  out.words({0, 0}).number(0, 1).words({kAccelEnd, 0}).words({1, 1});
  const auto read = [](const Bytes& bytes) {
    std::ostringstream rows;
    const auto table = readAcceleratorResource(bytes);
    for (const auto& row : table->rows) {
      rows << row.key << '/' << row.command << (row.name == nullptr ? "-" : row.name) << row.flags
           << (row.kind == kAccelEnd ? " end" : ", ");
    }
    return rows.str();
  };
  EXPECT_EQ(read(out.bytes), "65/1001o3, 65470/1002-0, 0/0-0 end");
  out.bytes.resize(38);
  EXPECT_EQ(read(out.bytes), "65/1001o3, 0/0-0 end") << "a row that breaks off is none";
}

TEST(DialogResource, IsReadWholeOrNotAtAll) {
  ByteWriter out(ByteWriter::Order::kBig);
  out.words({1, 503, 0x80C80080, 1, 2, 152, 166}).number(0, 1);
  out.number(1, 1).words({4}).append({'H', 'e', 'l', 'v'}).words({11, kNoDialogIcon});
  out.words({kControlButton, 0, 2}).number(1, 1).words({2}).append({'O', 'K'});
  out.words({7, 10, 20, 30, 40});
  const auto loaded = readDialogResource(out.bytes);
  ASSERT_NE(loaded, nullptr);
  const DialogResource& dialog = loaded->dialog;
  EXPECT_EQ(dialog.caption, nullptr);
  EXPECT_STREQ(dialog.fontName, "Helv");
  EXPECT_EQ(dialog.cy, 166U);
  ASSERT_EQ(dialog.itemCount, 1U);
  EXPECT_STREQ(dialog.items[0].text, "OK");
  EXPECT_EQ(dialog.items[0].cy, 40U);

  out.bytes.pop_back();
  EXPECT_EQ(readDialogResource(out.bytes), nullptr);
  EXPECT_EQ(readDialogResource({}), nullptr);
}

TEST(BuiltInTable, HoldsNothingElse) {
  for (const std::uint32_t id : {503U, 504U, 505U, 506U, 507U, 517U, 519U, 2304U}) {
    EXPECT_NE(builtInResource(kResourceDialog, id), nullptr) << id;
  }
  EXPECT_NE(builtInResource(kResourceAccelerators, kAcceleratorsMain), nullptr);
  EXPECT_EQ(builtInResource(kResourceIcon, kBitmapOpen), nullptr);
  EXPECT_EQ(builtInResource(kResourceBitmap, 2105), nullptr);
  EXPECT_EQ(builtInResource(kResourceString, kStringTitle), nullptr);
  EXPECT_EQ(builtInResource(kResourceAccelerators, 0xFFFFFFFF), nullptr);
}

}  // namespace
