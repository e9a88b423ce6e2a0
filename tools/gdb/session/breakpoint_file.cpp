#include "gdb/session/breakpoint_file.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace gdb {

namespace {

std::string pathOf(const UniqueDescriptor& file) {
  return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file.get());
}

}  // namespace

void BreakpointFile::save(QueryQueue& queries) {
  const auto fresh = std::make_shared<UniqueDescriptor>(memfd_create("breakpoints", MFD_CLOEXEC));
  if (!fresh->isOpen()) {
    return;
  }
  // GDB leaves the file empty when there is nothing to save.
  queries.ask("save breakpoints " + pathOf(*fresh), [this, fresh](const mi::Record& result) {
    if (result.name == "done") {
      kept = fresh;
    }
  });
}

bool BreakpointFile::isThere() const {
  struct stat status {};
  return kept != nullptr && fstat(kept->get(), &status) == 0 && status.st_size > 0;
}

std::string BreakpointFile::path() const {
  return pathOf(*kept);
}

}  // namespace gdb
