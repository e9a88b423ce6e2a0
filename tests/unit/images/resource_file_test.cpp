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

TEST(ResourceFile, FindsTheFirstRecordOfATypeAndId) {
  ResourceFile file =
      fileOf(resourceFileOf({{10, 1, {1}}, {2, 1, {2, 3}}, {2, 1, {4}}, {10, 7, {}}}));
  ASSERT_TRUE(file.isValid());
  EXPECT_THAT(file.find(2, 1), Optional(Bytes{2, 3}));
  EXPECT_THAT(file.find(10, 1), Optional(Bytes{1}));
  EXPECT_THAT(file.find(10, 7), Optional(Bytes{}));
  EXPECT_EQ(file.find(2, 7), std::nullopt);
}

TEST(ResourceFile, IndexEndsWithTypeNinetyNineOrWithoutAnOffset) {
  for (const std::size_t place : {0U, 8U}) {
    Bytes bytes = resourceFileOf({{10, 1, {1}}, {10, 2, {2}}, {10, 3, {3}}});
    const std::size_t second = bytes.size() - 3 * kIndexRecordSize;
    const std::uint8_t value = place == 0 ? 99 : 0;
    for (std::size_t i = 0; i < 4; ++i) {
      bytes[second + place + i] = i == 3 ? value : 0;
    }
    ResourceFile file = fileOf(bytes);
    EXPECT_TRUE(file.find(10, 1).has_value());
    EXPECT_FALSE(file.find(10, 3).has_value());
  }
}

TEST(ResourceFile, WithAWrongHeaderIsNone) {
  const Bytes good = resourceFileOf({{10, 1, {1}}});
  for (const std::size_t at : {0U, 9U, 10U, 12U, 13U}) {
    Bytes bad = good;
    bad[at] ^= 0x10;
    EXPECT_FALSE(fileOf(bad).isValid()) << at;
  }
  EXPECT_FALSE(fileOf(Bytes(good.begin(), good.begin() + 99)).isValid());
  EXPECT_FALSE(fileOf({}).isValid());
}

TEST(ResourceFile, NeverReadsBeyondItsEnd) {
  const Bytes good = resourceFileOf({{10, 1, {1, 2, 3}}});
  Bytes hugeSize = good;
  hugeSize[good.size() - 2 * kIndexRecordSize + 12] = 0xFF;
  EXPECT_FALSE(fileOf(hugeSize).find(10, 1).has_value());
  Bytes farIndex = good;
  farIndex[96] = 0xFF;
  EXPECT_TRUE(fileOf(farIndex).isValid());
  EXPECT_FALSE(fileOf(farIndex).find(10, 1).has_value());
  const Bytes cut(good.begin(), good.end() - 16);
  EXPECT_TRUE(fileOf(cut).find(10, 1).has_value()) << "the end record is not needed";
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
  const auto table = readAcceleratorResource(out.bytes);
  ASSERT_EQ(table->rows.size(), 3U);
  EXPECT_STREQ(table->rows[0].name, "o");
  EXPECT_EQ(table->rows[0].flags, 3);
  EXPECT_EQ(table->rows[1].key, 65470);
  EXPECT_EQ(table->rows[1].name, nullptr);
  EXPECT_EQ(table->rows[2].kind, kAccelEnd);

  out.bytes.resize(38);
  EXPECT_EQ(readAcceleratorResource(out.bytes)->rows.back().kind, kAccelEnd);
  EXPECT_EQ(readAcceleratorResource(out.bytes)->rows.size(), 2U) << "a row that breaks off is none";
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
