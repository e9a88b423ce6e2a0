#include "gdb/session/breakpoint_file.h"

#include <cstdlib>
#include <string>
#include <system_error>

namespace gdb {

namespace fs = std::filesystem;

BreakpointFile::~BreakpointFile() {
  std::error_code error;
  if (!folder.empty()) {
    fs::remove_all(folder, error);
  }
}

void BreakpointFile::save(QueryQueue& queries) {
  std::error_code error;
  if (folder.empty()) {
    std::string name = (fs::temp_directory_path(error) / "nelgdb-XXXXXX").string();
    if (error || mkdtemp(name.data()) == nullptr) {
      return;
    }
    folder = name;
  }
  const fs::path fresh = folder / "fresh";
  queries.ask("save breakpoints " + fresh.string(), [this, fresh](const mi::Record& result) {
    std::error_code ignored;
    if (result.name != "done") {
      return;
    }
    // GDB writes no file when there is nothing to save.
    fs::remove(path(), ignored);
    fs::rename(fresh, path(), ignored);
  });
}

bool BreakpointFile::isThere() const {
  std::error_code error;
  return !folder.empty() && fs::exists(path(), error);
}

}  // namespace gdb
