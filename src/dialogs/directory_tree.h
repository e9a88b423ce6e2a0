#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A line of the directory selection: a part of the current path, or a sub-directory of it.
struct ziDirectoryRecord {
  std::string name;
  bool isChild = false;

  friend bool operator==(const ziDirectoryRecord&, const ziDirectoryRecord&) = default;
};

/// What the directory selection walks through: the current directory, the components of its path
/// and its sub-directories. Names and paths are bytes of any length.
class ziDirectoryTree {
 public:
  enum class Result { ok, cannotOpen, cannotClose };

  /// What leads to "/", and how the line of "/" is called.
  static constexpr std::string_view kRoot = "root";

  /// Goes to `name`: an absolute path, kRoot, a sub-directory of the current directory, or else a
  /// component of its path, in this order. Without any of these it stays, and reads the directory
  /// anew. When the directory cannot be read, the records are those of the path.
  Result loadDirectory(const std::string& name);

  /// The absolute path that `typed` means, seen from the current directory; nothing unless it is a
  /// directory that can be read.
  std::optional<std::string> resolve(const std::string& typed) const;

  /// The current directory, with "/" at its end; empty at first.
  const std::string& current() const { return path; }
  /// Whether the last load could read the directory.
  bool isLoaded() const { return last == Result::ok; }
  /// The components of the path from "/" on, then the sub-directories in the order of their bytes.
  const std::vector<ziDirectoryRecord>& records() const { return entries; }
  /// How many records are components of the path.
  int componentCount() const;
  /// The records as the list shows them: components in brackets, each a blank further in than the
  /// one above, and plain sub-directories.
  std::vector<std::string> lines() const;

 private:
  void follow(const std::string& name);
  void addComponents();
  Result addChildren();

  std::string path;
  Result last = Result::cannotOpen;
  std::vector<ziDirectoryRecord> entries;
};

/// Whether two paths are the same but for a "/" at their ends.
bool isSameDirectory(std::string_view a, std::string_view b);

/// The working directory, of any length; nothing when there is none any more.
std::optional<std::string> workingDirectory();
