// The directories behind the directory selection. Reading is always done anew: directories come and
// go while the user looks at them, so nothing here takes an older reading for granted.

#include "dialogs/directory_tree.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace {

constexpr char kSeparator = '/';

/// An open directory.
class Directory {
 public:
  explicit Directory(const std::string& path) : stream(opendir(path.c_str())) {}
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;
  ~Directory() { close(); }

  bool isOpen() const { return stream != nullptr; }
  /// False when the system says so.
  bool close() {
    DIR* closing = std::exchange(stream, nullptr);
    return closing == nullptr || closedir(closing) == 0;
  }

  /// The name of the next sub-directory; links to directories are some too.
  std::optional<std::string> nextChild() {
    while (const dirent* entry = readdir(stream)) {
      const std::string_view name = entry->d_name;
      struct stat about = {};
      if (name != "." && name != ".." && fstatat(dirfd(stream), entry->d_name, &about, 0) == 0 &&
          S_ISDIR(about.st_mode)) {
        return std::string(name);
      }
    }
    return std::nullopt;
  }

 private:
  DIR* stream;
};

bool hasChild(const std::string& path, const std::string& wanted) {
  Directory directory(path);
  if (!directory.isOpen()) {
    return false;
  }
  while (const std::optional<std::string> name = directory.nextChild()) {
    if (*name == wanted) {
      return true;
    }
  }
  return false;
}

void endWithSeparator(std::string& path) {
  if (path.empty() || path.back() != kSeparator) {
    path += kSeparator;
  }
}

std::string_view withoutSeparator(std::string_view path) {
  return path.size() > 1 && path.back() == kSeparator ? path.substr(0, path.size() - 1) : path;
}

// `path` up to the end of its last component `name`; all of it when there is no such component.
std::string cutBehind(const std::string& path, const std::string& name) {
  std::size_t end = path.size();
  while (end > 0) {
    const std::size_t slash = path.rfind(kSeparator, end - 1);
    const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
    if (path.compare(start, end - start, name) == 0) {
      return path.substr(0, end);
    }
    end = slash == std::string::npos ? 0 : slash;
  }
  return path;
}

// Whether the components are names only, so that each of them can be a line of the list.
bool isPlain(std::string_view path) {
  std::string ended(path);
  endWithSeparator(ended);
  return ended.find("//") == std::string::npos && ended.find("/./") == std::string::npos &&
         ended.find("/../") == std::string::npos;
}

}  // namespace

ziDirectoryTree::Result ziDirectoryTree::loadDirectory(const std::string& name) {
  entries.clear();
  follow(name);
  endWithSeparator(path);
  addComponents();
  last = addChildren();
  return last;
}

void ziDirectoryTree::follow(const std::string& name) {
  // Intended: a directory called "root" is taken for "/" too, and a sub-directory goes before a
  // component of the same name, of which the last one counts.
  if (name == kRoot) {
    path = kSeparator;
  } else if (!name.empty() && name.front() == kSeparator) {
    path = name;
  } else if (hasChild(path, name)) {
    path += name;
  } else if (!name.empty()) {
    path = cutBehind(path, name);
  }
}

void ziDirectoryTree::addComponents() {
  std::size_t start = 0;
  for (std::size_t slash = path.find(kSeparator); slash != std::string::npos;
       slash = path.find(kSeparator, start)) {
    entries.push_back({start == 0 ? std::string(kRoot) : path.substr(start, slash - start), false});
    start = slash + 1;
  }
}

ziDirectoryTree::Result ziDirectoryTree::addChildren() {
  Directory directory(path);
  if (!directory.isOpen()) {
    return Result::cannotOpen;
  }
  const auto firstChild = static_cast<std::ptrdiff_t>(entries.size());
  while (std::optional<std::string> name = directory.nextChild()) {
    entries.push_back({std::move(*name), true});
  }
  std::sort(entries.begin() + firstChild, entries.end(),
            [](const auto& a, const auto& b) { return a.name < b.name; });
  return directory.close() ? Result::ok : Result::cannotClose;
}

std::optional<std::string> ziDirectoryTree::resolve(const std::string& typed) const {
  if (typed.empty()) {
    return std::nullopt;
  }
  std::string absolute = typed.front() == kSeparator ? typed : path + typed;
  if (!Directory(absolute).isOpen()) {
    return std::nullopt;
  }
  if (isPlain(absolute)) {
    return absolute;
  }
  std::error_code error;
  std::string canonical = std::filesystem::canonical(absolute, error).string();
  return error ? std::nullopt : std::optional(std::move(canonical));
}

int ziDirectoryTree::componentCount() const {
  return static_cast<int>(std::count_if(entries.begin(), entries.end(),
                                        [](const auto& entry) { return !entry.isChild; }));
}

std::vector<std::string> ziDirectoryTree::lines() const {
  std::vector<std::string> texts;
  texts.reserve(entries.size());
  std::string indent;
  for (const ziDirectoryRecord& entry : entries) {
    texts.push_back(entry.isChild ? entry.name : indent + "[" + entry.name + "]");
    indent += entry.isChild ? "" : " ";
  }
  return texts;
}

bool isSameDirectory(std::string_view a, std::string_view b) {
  return withoutSeparator(a) == withoutSeparator(b);
}

std::optional<std::string> workingDirectory() {
  std::error_code error;
  std::string path = std::filesystem::current_path(error).string();
  // A directory outside the process's root has a path that leads nowhere.
  const bool isUsable = !error && !path.empty() && path.front() == kSeparator;
  return isUsable ? std::optional(std::move(path)) : std::nullopt;
}
