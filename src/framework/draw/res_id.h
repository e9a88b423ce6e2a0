#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "resources/resource_ids.h"

/// Names a resource: its id, and where it is looked for.
struct zResId {
  enum class Place : std::uint8_t {
    kDefault,  ///< the default resource file if one is set, otherwise the built-in table
    kFile,     ///< the resource file `file`
    kBuiltIn,  ///< the built-in table, whatever default file is set
  };

  constexpr zResId() = default;
  explicit zResId(std::uint32_t resource) : id(resource) {}
  zResId(std::uint32_t resource, std::string path)
      : id(resource), place(Place::kFile), file(std::move(path)) {}
  static zResId builtIn(std::uint32_t resource) {
    zResId result(resource);
    result.place = Place::kBuiltIn;
    return result;
  }

  std::uint32_t id = 0;
  Place place = Place::kDefault;
  std::string file;  ///< only with kFile
};

/// Names the file that references without one look into; empty for the built-in table.
void setDefaultResourceFile(const std::string& path);
/// Closes the resource file that is open and forgets its index; what came from it stays valid.
void closeResourceFile();

/// The data of a resource, or null; give them back by resourceFree(). What they are depends on the
/// type: AcceleratorRow records, a DialogResource, a NUL-terminated text (string), or bytes whose
/// number resourceSize() tells (cursor, bitmap, icon, raw data, and a menu's records as a file
/// holds them). Types that are not known are bytes.
const void* resourceGet(const zResId& resource, int type);
/// Frees what came from a file; does nothing for data of the built-in table.
void resourceFree(int type, const void* data, const zResId& resource);
/// Size in bytes of data that resourceGet() returned for one of the types that are bytes, otherwise
/// 0.
std::size_t resourceSize(int type, const void* data, const zResId& resource);

/// A resource for as long as this object lives.
class ziResource {
 public:
  ziResource(const zResId& resource, int type)
      : resId(resource), resType(type), content(resourceGet(resource, type)) {}
  ziResource(const ziResource&) = delete;
  ziResource& operator=(const ziResource&) = delete;
  ~ziResource() { resourceFree(resType, content, resId); }

  explicit operator bool() const { return content != nullptr; }
  const void* data() const { return content; }
  std::span<const std::uint8_t> bytes() const {
    return {static_cast<const std::uint8_t*>(content), resourceSize(resType, content, resId)};
  }

 private:
  zResId resId;
  int resType;
  const void* content;
};
