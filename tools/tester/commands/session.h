#pragma once

#include <string>
#include <vector>

#include "tester/commands/names.h"
#include "tester/engine/engine.h"

/// What the tester keeps besides the system itself.
namespace tester {

/// Where relative names of files begin. At the start it is the working directory.
class SourceDirectory {
 public:
  SourceDirectory();

  /// Absolute, without a slash at its end unless it is the root.
  const std::string& path() const { return directory; }

  /// `name` may be relative to the present one.
  Problem change(const std::string& name);

  /// The file that `name` means, absolute.
  std::string resolve(const std::string& name) const;

 private:
  std::string directory;
};

/// Points of time that the user gave a name.
class Marks {
 public:
  /// Blanks around the name are dropped. Refuses an empty name and one that is taken.
  Problem add(const std::string& name, Time time);
  void clear() { marks.clear(); }

  /// A line each, oldest first.
  std::string text() const;

 private:
  struct Mark {
    std::string name;
    Time time = 0;
  };

  std::vector<Mark> marks;
};

/// The name of the system that a symbol file describes: its first line that is neither empty nor
/// a comment after "#" says "system <name>".
Lookup<std::string> readSymbolFile(const std::string& path);

struct Session {
  SourceDirectory directory;
  Marks marks;
  std::string symbolFile;  ///< name without its directory; empty before one was opened
};

}  // namespace tester
