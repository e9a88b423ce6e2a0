#include "framework/draw/res_id.h"

#include "framework/draw/extra/file_resources.h"
#include "resources/builtin_table.h"

const void* resourceGet(const zResId& resource, int type) {
  return usesResourceFile(resource) ? resourceFromFile(resource, type)
                                    : builtInResource(type, resource.id);
}

std::size_t resourceSize(int type, const void* data, const zResId& resource) {
  if (const auto size = sizeFromFile(data)) {
    return *size;
  }
  const auto bytes = builtInPicture(type, resource.id);
  return bytes.data() == data ? bytes.size() : 0;
}
