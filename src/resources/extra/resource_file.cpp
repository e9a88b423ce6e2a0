// Part of the interface of resources that this program does not use; compiled, its behaviour is not
// under test.

#include "resources/extra/resource_file.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kSignature("zSig448822\0", 11);
constexpr std::size_t kVersionAt = kSignature.size() - 1 + 2;
constexpr std::uint8_t kMajorVersion = 1;
constexpr std::uint8_t kMinorVersion = 0;
constexpr std::size_t kHeaderSize = 100;
constexpr std::size_t kIndexOffsetAt = 96;
constexpr std::size_t kIndexRecordSize = 16;
constexpr std::uint32_t kEndOfIndexType = 99;

/// Reads big-endian numbers and texts from bytes of any content. Beyond the end everything is 0.
class BigEndianReader {
 public:
  explicit BigEndianReader(std::span<const std::uint8_t> data) : bytes(data) {}

  std::uint8_t u8() {
    if (atEnd()) {
      exhausted = true;
      return 0;
    }
    return bytes[at++];
  }
  std::uint32_t u32() {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < sizeof value; ++i) {
      value = value << kByteBits | u8();
    }
    return value;
  }
  /// A byte that tells whether there is a text; if so its length and its bytes, or as many as there
  /// are.
  std::optional<std::string> text() {
    if (u8() == 0) {
      return std::nullopt;
    }
    const std::size_t length = u32();
    const std::size_t present = std::min(length, bytes.size() - at);
    exhausted = exhausted || present < length;
    const auto taken = bytes.subspan(at, present);
    at += present;
    return std::string(taken.begin(), taken.end());
  }

  bool atEnd() const { return at == bytes.size(); }
  /// Whether more was asked for than there is.
  bool isExhausted() const { return exhausted; }

 private:
  static constexpr unsigned kByteBits = 8;

  std::span<const std::uint8_t> bytes;
  std::size_t at = 0;
  bool exhausted = false;
};

using Texts = std::vector<std::unique_ptr<const std::string>>;

// The next text, which `owner` keeps; null if there is none.
const char* readText(BigEndianReader& in, Texts& owner) {
  std::optional<std::string> text = in.text();
  if (!text) {
    return nullptr;
  }
  return owner.emplace_back(std::make_unique<const std::string>(std::move(*text)))->c_str();
}

int readInt(BigEndianReader& in) {
  return static_cast<int>(in.u32());
}

ControlRecord readControl(BigEndianReader& in, Texts& texts) {
  ControlRecord item{};
  item.controlClass = in.u32();
  item.reserved = in.u32();
  item.id = in.u32();
  item.text = readText(in, texts);
  item.style = in.u32();
  item.x = in.u32();
  item.y = in.u32();
  item.cx = in.u32();
  item.cy = in.u32();
  return item;
}

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

std::optional<std::string> readStringResource(std::span<const std::uint8_t> bytes) {
  const std::optional<std::string> text = BigEndianReader(bytes).text();
  if (!text) {
    return std::nullopt;
  }
  // Intended: the first and the last character stand for quotation marks.
  return text->size() < 2 ? std::string() : text->substr(1, text->size() - 2);
}

std::unique_ptr<LoadedAccelerators> readAcceleratorResource(std::span<const std::uint8_t> bytes) {
  auto table = std::make_unique<LoadedAccelerators>();
  BigEndianReader in(bytes);
  while (!in.atEnd()) {
    AcceleratorRow row{};
    row.key = readInt(in);
    row.command = readInt(in);
    row.name = readText(in, table->names);
    row.kind = readInt(in);
    if (row.kind == kAccelEnd) {
      break;
    }
    row.flags = readInt(in);
    if (in.isExhausted()) {
      break;
    }
    table->rows.push_back(row);
  }
  table->rows.push_back({0, 0, nullptr, kAccelEnd, 0});
  return table;
}

std::unique_ptr<LoadedDialog> readDialogResource(std::span<const std::uint8_t> bytes) {
  auto loaded = std::make_unique<LoadedDialog>();
  DialogResource& dialog = loaded->dialog;
  BigEndianReader in(bytes);
  const std::uint32_t itemCount = in.u32();
  dialog.id = in.u32();
  dialog.style = in.u32();
  dialog.x = in.u32();
  dialog.y = in.u32();
  dialog.cx = in.u32();
  dialog.cy = in.u32();
  dialog.caption = readText(in, loaded->texts);
  dialog.fontName = readText(in, loaded->texts);
  dialog.fontSize = in.u32();
  dialog.icon = in.u32();
  for (std::uint32_t i = 0; i < itemCount && !in.isExhausted(); ++i) {
    loaded->items.push_back(readControl(in, loaded->texts));
  }
  if (in.isExhausted()) {
    return nullptr;
  }
  dialog.items = loaded->items.data();
  dialog.itemCount = loaded->items.size();
  return loaded;
}
