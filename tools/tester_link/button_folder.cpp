#include "tester_link/button_folder.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

#include "user_folder.h"

namespace tester_link {

namespace {

namespace fs = std::filesystem;

constexpr char kButtonFile[] = "nelkv.btn";
/// The set as it was when it was copied, by which one that the user has changed is known.
constexpr char kOriginalFile[] = "nelkv.btn.orig";

/// Nothing for what is no file.
std::optional<std::string> fileContents(const fs::path& path) {
  std::error_code error;
  std::ifstream file(path, std::ios::binary);
  return fs::is_regular_file(path, error) && file
             ? std::optional(std::string(std::istreambuf_iterator<char>(file), {}))
             : std::nullopt;
}

/// Another session may do the same at the same time.
void copyFile(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::path fresh = to;
  fresh += ".new" + std::to_string(getpid());
  if (fs::copy_file(from, fresh, error)) {
    fs::permissions(fresh, fs::perms::owner_write, fs::perm_options::add, error);
    fs::rename(fresh, to, error);
  }
}

}  // namespace

bool hasButtons(const fs::path& folder) {
  std::error_code error;
  return fs::is_regular_file(folder / kButtonFile, error);
}

std::string usualButtonFolder(const std::string& set) {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error).parent_path();
  const fs::path shipped = (program / NEL_DATA_FROM_BIN / "nelkvui" / set).lexically_normal();
  const std::string own =
      userFolderOf(std::getenv("XDG_CONFIG_HOME"), std::getenv("HOME"), "/.config");
  return copiedButtons(shipped, own.empty() ? shipped : fs::path(own) / set);
}

fs::path copiedButtons(const fs::path& shipped, const fs::path& own) {
  const auto present = fileContents(shipped / kButtonFile);
  if (!present || own == shipped) {
    return present ? shipped : fs::path();
  }
  std::error_code error;
  fs::create_directories(own, error);
  const auto copy = fileContents(own / kButtonFile);
  const auto original = fileContents(own / kOriginalFile);
  const bool isOurs = !copy || copy == original || copy == present;
  if (isOurs && (copy != present || original != present)) {
    copyFile(shipped / kButtonFile, own / kButtonFile);
    copyFile(shipped / kButtonFile, own / kOriginalFile);
  }
  return hasButtons(own) ? own : shipped;
}

}  // namespace tester_link
