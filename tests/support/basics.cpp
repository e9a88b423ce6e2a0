#include "tests/support/basics.h"

#include <cstdlib>

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <system_error>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::string name = (fs::temp_directory_path() / "nel_test_XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), "cannot make " + name);
  }
  folder = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(folder, ignored);
}

fs::path TemporaryFolder::write(std::string_view name, std::string_view bytes) const {
  fs::path file = folder / name;
  std::ofstream(file, std::ios::binary) << bytes;
  return file;
}

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

fs::path builtProgram(std::string_view name) {
  const char* installed = std::getenv("NEL_PROGRAMS");
  return (installed != nullptr ? fs::path(installed)
                               : fs::read_symlink("/proc/self/exe").parent_path()) /
         name;
}
