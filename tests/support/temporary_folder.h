#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// An empty folder for one test, removed with all its contents. Its path holds no "-", since some
/// programs look for options anywhere in their command line.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return folder; }
  std::filesystem::path operator/(std::string_view name) const { return folder / name; }

  /// Writes a file into the folder and returns its path.
  std::filesystem::path write(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path folder;
};

/// All bytes of a file; empty when it cannot be read.
std::string readFile(const std::filesystem::path& path);

/// The program `name` of this build: it stands in the folder of the running test program.
std::filesystem::path builtProgram(std::string_view name);
