// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test. Resources from files. At most one file is open; what was loaded from it is kept here
// until it is given back, and does not need the file any more.

#include "framework/draw/extra/file_resources.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <system_error>
#include <vector>

#include "resources/extra/resource_file.h"

namespace {

struct Loaded {
  std::shared_ptr<const void> owner;
  std::size_t size = 0;
};

struct State {
  std::string defaultFile;
  std::string openPath;
  std::unique_ptr<ResourceFile> openFile;
  std::map<const void*, Loaded> loaded;
};

State& state() {
  static State theState;
  return theState;
}

// The file that the reference looks into; empty for the built-in table.
const std::string& fileOf(const zResId& resource) {
  static const std::string none;
  switch (resource.place) {
    case zResId::Place::kFile:
      return resource.file;
    case zResId::Place::kDefault:
      return state().defaultFile;
    case zResId::Place::kBuiltIn:
      break;
  }
  return none;
}

// Null when the file is none.
ResourceFile* fileAt(const std::string& path) {
  State& now = state();
  if (now.openFile != nullptr && now.openPath == path) {
    return now.openFile.get();
  }
  closeResourceFile();
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    return nullptr;
  }
  auto file =
      std::make_unique<ResourceFile>(std::make_unique<std::ifstream>(path, std::ios::binary));
  if (!file->isValid()) {
    return nullptr;
  }
  now.openPath = path;
  now.openFile = std::move(file);
  return now.openFile.get();
}

const void* keep(const void* data, std::shared_ptr<const void> owner, std::size_t size = 0) {
  state().loaded[data] = {std::move(owner), size};
  return data;
}

const void* keepBytes(std::vector<std::uint8_t> bytes) {
  const std::size_t size = bytes.size();
  bytes.push_back(0);  // so that there is an address even for no bytes
  const auto owner = std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes));
  return keep(owner->data(), owner, size);
}

const void* keepText(std::optional<std::string> text) {
  if (!text) {
    return nullptr;
  }
  const auto owner = std::make_shared<const std::string>(std::move(*text));
  return keep(owner->c_str(), owner);
}

const void* keepDialog(const std::shared_ptr<const LoadedDialog>& dialog) {
  return dialog == nullptr ? nullptr : keep(&dialog->dialog, dialog);
}

const void* keepAccelerators(const std::shared_ptr<const LoadedAccelerators>& table) {
  return keep(table->rows.data(), table);
}

const void* load(int type, std::vector<std::uint8_t> bytes) {
  switch (type) {
    case kResourceDialog:
      return keepDialog(readDialogResource(bytes));
    case kResourceString:
      return keepText(readStringResource(bytes));
    case kResourceAccelerators:
      return keepAccelerators(readAcceleratorResource(bytes));
    default:
      return keepBytes(std::move(bytes));
  }
}

}  // namespace

bool usesResourceFile(const zResId& resource) {
  return resource.place == zResId::Place::kFile || !fileOf(resource).empty();
}

void setDefaultResourceFile(const std::string& path) {
  state().defaultFile = path;
}

void closeResourceFile() {
  state().openFile.reset();
  state().openPath.clear();
}

const void* resourceFromFile(const zResId& resource, int type) {
  ResourceFile* file = fileAt(fileOf(resource));
  if (file == nullptr) {
    return nullptr;
  }
  auto bytes = file->find(static_cast<std::uint32_t>(type), resource.id);
  return bytes ? load(type, std::move(*bytes)) : nullptr;
}

std::optional<std::size_t> sizeFromFile(const void* data) {
  const auto found = state().loaded.find(data);
  return found == state().loaded.end() ? std::nullopt : std::optional(found->second.size);
}

void resourceFree(int /*type*/, const void* data, const zResId& /*resource*/) {
  state().loaded.erase(data);
}
