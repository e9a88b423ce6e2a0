#include "dialogs/file_preset.h"

ziFilePreset makeFilePreset(std::string_view preset, const char* const* filter) {
  ziFilePreset result{{}, {}, "*"};
  const bool hasFilter = filter != nullptr && filter[0] != nullptr && filter[1] != nullptr;
  if (hasFilter) {
    result.pattern = filter[1];
  }
  const std::size_t slash = preset.rfind('/');
  if (slash != std::string_view::npos) {
    result.directory = slash == 0 ? "/" : preset.substr(0, slash);
    preset.remove_prefix(slash + 1);
  }
  const bool isWild = preset.find_first_of("*?") != std::string_view::npos;
  if (!isWild) {
    result.name = preset;
  } else if (filter == nullptr) {
    result.pattern = preset;
  }
  return result;
}
