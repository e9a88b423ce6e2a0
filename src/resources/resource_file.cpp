#include "resources/resource_file.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "resources/big_endian_reader.h"

namespace {

constexpr std::string_view kSignature("zSig448822\0", 11);
constexpr std::size_t kVersionAt = kSignature.size() - 1 + 2;
constexpr std::uint8_t kMajorVersion = 1;
constexpr std::uint8_t kMinorVersion = 0;
constexpr std::size_t kHeaderSize = 100;
constexpr std::size_t kIndexOffsetAt = 96;
constexpr std::size_t kIndexRecordSize = 16;
constexpr std::uint32_t kEndOfIndexType = 99;

}  // namespace

ResourceFile::ResourceFile(std::unique_ptr<std::istream> source) : stream(std::move(source)) {
  stream->seekg(0, std::ios::end);
  const std::streamoff end = stream->tellg();
  fileSize = end < 0 ? 0 : static_cast<std::uint64_t>(end);
  valid = readHeader();
  if (valid) {
    readIndex();
  }
}

// As many bytes as the file has there.
std::vector<std::uint8_t> ResourceFile::bytesAt(std::uint64_t offset, std::uint64_t count) {
  if (offset >= fileSize) {
    return {};
  }
  std::vector<char> bytes(static_cast<std::size_t>(std::min(count, fileSize - offset)));
  stream->clear();
  stream->seekg(static_cast<std::streamoff>(offset));
  stream->read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(stream->gcount(), 0)));
  return {bytes.begin(), bytes.end()};
}

bool ResourceFile::readHeader() {
  const std::vector<std::uint8_t> header = bytesAt(0, kHeaderSize);
  if (header.size() != kHeaderSize || header[kVersionAt] != kMajorVersion ||
      header[kVersionAt + 1] != kMinorVersion ||
      !std::equal(kSignature.begin(), kSignature.end(), header.begin())) {
    return false;
  }
  indexOffset = BigEndianReader(std::span(header).subspan(kIndexOffsetAt)).u32() + kOffsetBias;
  return true;
}

void ResourceFile::readIndex() {
  std::uint64_t at = indexOffset;
  for (;; at += kIndexRecordSize) {
    const std::vector<std::uint8_t> bytes = bytesAt(at, kIndexRecordSize);
    if (bytes.size() != kIndexRecordSize) {
      return;
    }
    BigEndianReader in(bytes);
    IndexRecord record;
    record.type = in.u32();
    record.id = in.u32();
    record.offset = in.u32();
    record.size = in.u32();
    if (record.type == kEndOfIndexType || record.offset == 0) {
      return;
    }
    index.push_back(record);
  }
}

std::optional<std::vector<std::uint8_t>> ResourceFile::find(std::uint32_t type, std::uint32_t id) {
  const auto found = std::find_if(index.begin(), index.end(), [&](const IndexRecord& record) {
    return record.type == type && record.id == id;
  });
  if (found == index.end()) {
    return std::nullopt;
  }
  std::vector<std::uint8_t> bytes = bytesAt(found->offset + kOffsetBias, found->size);
  if (bytes.size() != found->size) {
    return std::nullopt;
  }
  return bytes;
}
