#pragma once

#include <vector>

#include "tests/unit/images/image_data.h"

struct ResourceRecord {
  std::uint32_t type;
  std::uint32_t id;
  Bytes data;
};

/// A resource file: header, data, index, and the record that ends it.
inline Bytes resourceFileOf(const std::vector<ResourceRecord>& records) {
  constexpr std::uint32_t kHeaderSize = 100;
  constexpr std::uint32_t kBias = 5;
  const std::string signature = "zSig448822";
  Bytes data;
  ByteWriter index(ByteWriter::Order::kBig);
  for (const ResourceRecord& record : records) {
    const auto offset = static_cast<std::uint32_t>(kHeaderSize + data.size());
    index.words(
        {record.type, record.id, offset - kBias, static_cast<std::uint32_t>(record.data.size())});
    data.insert(data.end(), record.data.begin(), record.data.end());
  }
  index.words({99, 0, 0, 0});
  ByteWriter file(ByteWriter::Order::kBig);
  file.append({signature.begin(), signature.end()}).words({0x00000100});
  file.bytes[12] = 1;
  file.bytes[13] = 0;
  file.bytes.resize(kHeaderSize - 4);
  file.words({static_cast<std::uint32_t>(kHeaderSize + data.size()) - kBias});
  return file.append(data).append(index.bytes).bytes;
}
