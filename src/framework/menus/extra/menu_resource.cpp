// Part of the framework's interface that this program does not use; compiled, its behaviour is not
// under test: menus from resources, and what is left of zMenu.
//
// Reader of menu resources. The bytes may come from any file: nothing is read outside them, and
// nesting is bounded, since menus are walked recursively.

#include "framework/menus/extra/menu_resource.h"

#include <array>
#include <cstdio>
#include <utility>

#include "framework/menus/menu.h"
#include "framework/menus/menu_widgets_xm.h"

namespace {

constexpr int kDeepestSubMenu = 32;
constexpr unsigned kBitsInByte = 8;

template <class Number>
std::string formatted(const char* format, Number number) {
  std::array<char, 100> line = {};
  std::snprintf(line.data(), line.size(), format, number);
  return line.data();
}

/// The records as lines within lines.
class RecordReader {
 public:
  explicit RecordReader(std::span<const zMenuRecord> all) : records(all) {}

  ziMenuReading read() {
    ziMenuReading reading;
    readLines(reading.lines, 0);
    reading.errors = std::move(errors);
    return reading;
  }

 private:
  // How a run of lines ended.
  enum class End { kSubMenu, kResource };

  End readLines(std::vector<ziMenuLine>& lines, int depth);
  bool readSubMenu(const zMenuRecord& start, std::vector<ziMenuLine>& lines, int depth);

  std::span<const zMenuRecord> records;
  std::size_t next = 0;
  bool isBroken = false;
  std::string errors;
};

RecordReader::End RecordReader::readLines(std::vector<ziMenuLine>& lines, int depth) {
  while (next < records.size()) {
    const zMenuRecord& record = records[next++];
    switch (record.type) {
      case kMenuRecordItem:
        lines.push_back({record.id, record.text.value_or(""), menuItemFlags(record.flags), {}});
        break;
      case kMenuRecordSeparator:
        lines.push_back({0, {}, kItemSeparator, {}});
        break;
      case kMenuRecordSubMenu:
        if (!readSubMenu(record, lines, depth)) {
          return End::kResource;
        }
        break;
      case kMenuRecordSubMenuEnd:
        return End::kSubMenu;
      case kMenuRecordEnd:
        return End::kResource;
      default:
        errors +=
            formatted("Error: reading menu resource, invalid menuitem type %d\n", record.type);
    }
  }
  return End::kResource;
}

// False when decoding has to stop.
bool RecordReader::readSubMenu(const zMenuRecord& start, std::vector<ziMenuLine>& lines,
                               int depth) {
  ziMenuLine subMenu{
      kNoItemId, start.text.value_or(""), menuItemFlags(start.flags) | kItemSubMenu, {}};
  const bool isWhole =
      depth < kDeepestSubMenu && readLines(subMenu.lines, depth + 1) == End::kSubMenu;
  lines.push_back(std::move(subMenu));
  // The innermost sub menu reports for those around it.
  if (!isWhole && !std::exchange(isBroken, true)) {
    errors += "Error: decoding menu resource\n";
  }
  return isWhole;
}

/// Takes big-endian values off the front of some bytes.
class ByteReader {
 public:
  explicit ByteReader(std::string_view all) : bytes(all) {}

  std::optional<std::uint32_t> word() {
    if (bytes.size() < sizeof(std::uint32_t)) {
      return std::nullopt;
    }
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < sizeof value; ++i) {
      value = value << kBitsInByte | static_cast<unsigned char>(bytes[i]);
    }
    bytes.remove_prefix(sizeof value);
    return value;
  }

  // Whether a string is there to be read; it may be absent.
  bool string(std::optional<std::string>& text) {
    if (bytes.empty()) {
      return false;
    }
    const bool isPresent = bytes.front() != 0;
    bytes.remove_prefix(1);
    if (!isPresent) {
      return true;
    }
    const std::optional<std::uint32_t> length = word();
    if (!length || *length > bytes.size()) {
      return false;
    }
    const std::string_view content = bytes.substr(0, *length);
    text = std::string(content.substr(0, content.find('\0')));
    bytes.remove_prefix(*length);
    return true;
  }

 private:
  std::string_view bytes;
};

std::optional<zMenuRecord> decodeRecord(ByteReader& reader) {
  zMenuRecord record;
  const std::optional<std::uint32_t> id = reader.word();
  if (!id || !reader.string(record.text)) {
    return std::nullopt;
  }
  const std::optional<std::uint32_t> type = reader.word();
  const std::optional<std::uint32_t> flags = reader.word();
  if (!type || !flags) {
    return std::nullopt;
  }
  record.id = static_cast<int>(*id);
  record.type = static_cast<int>(*type);
  record.flags = *flags;
  return record;
}

}  // namespace

unsigned menuItemFlags(unsigned recordFlags) {
  unsigned flags = 0;
  flags |= (recordFlags & kMenuRecordChecked) != 0 ? kItemChecked : 0U;
  flags |= (recordFlags & kMenuRecordGreyed) != 0 ? kItemGreyed : 0U;
  flags |= (recordFlags & kMenuRecordHelp) != 0 ? kItemHelp : 0U;
  flags |= (recordFlags & kMenuRecordDisabled) != 0 ? kItemDisabled : 0U;
  return flags;
}

ziMenuReading readMenuRecords(std::span<const zMenuRecord> records) {
  return RecordReader(records).read();
}

std::vector<zMenuRecord> decodeMenuRecords(std::string_view bytes) {
  std::vector<zMenuRecord> records;
  ByteReader reader(bytes);
  while (std::optional<zMenuRecord> record = decodeRecord(reader)) {
    records.push_back(std::move(*record));
    if (records.back().type == kMenuRecordEnd) {
      break;
    }
  }
  return records;
}

std::string missingMenuResource(int resourceId) {
  return formatted("Error: unable to find menu resource %x\n", static_cast<unsigned>(resourceId));
}

void zMenu::load(int resourceId, std::span<const zMenuRecord> records) {
  if (records.empty()) {
    std::fputs(missingMenuResource(resourceId).c_str(), stderr);
    return;
  }
  const ziMenuReading reading = readMenuRecords(records);
  std::fputs(reading.errors.c_str(), stderr);
  const int before = lines().size();
  addLines(lines(), reading.lines);
  if (Widget built = container(); built != nullptr) {
    for (int index = before; index < lines().size(); ++index) {
      buildMenuItem(lines(), index, built);
    }
  }
}

void zMenu::addLines(ziMenuItemDList& list, const std::vector<ziMenuLine>& described) {
  for (const ziMenuLine& line : described) {
    auto item = std::make_shared<ziMenuItem>(line.id, line.text.c_str(), line.flags);
    if ((line.flags & kItemSubMenu) != 0) {
      item->subItems = std::make_shared<ziMenuItemDList>(this);
      addLines(*item->subItems, line.lines);
    }
    list.insert(list.size(), std::move(item));
  }
}

int zMenu::setItemText(int id, const RWCString& text) {
  ziMenuItem* item = find(id);
  if (item == nullptr) {
    return 0;
  }
  item->setText(text);
  if (item->widget != nullptr) {
    showMenuItemText(*item);
  }
  return 1;
}

int zMenu::removeItem(int id) {
  const ziMenuItemDList::Place place = items->find(id);
  if (!place) {
    return 0;
  }
  const std::shared_ptr<ziMenuItem> item = place.item().shared_from_this();
  place.list->remove(*item);
  detach(*item);
  return 1;
}
