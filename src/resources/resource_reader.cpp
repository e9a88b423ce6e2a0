#include "resources/resource_reader.h"

#include <utility>

#include "resources/big_endian_reader.h"

namespace {

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
