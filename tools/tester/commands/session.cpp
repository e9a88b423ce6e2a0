#include "tester/commands/session.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "tester/commands/columns.h"

namespace tester {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSystemWord = "system";

/// More than any first line of a symbol file; of other files, however large, no more is read.
constexpr std::size_t kReadBytes = 65536;

std::string withoutLastSlash(const fs::path& path) {
  const bool endsInSlash = path.has_relative_path() && !path.has_filename();
  return (endsInSlash ? path.parent_path() : path).string();
}

/// The line without a comment and the blanks around it.
std::string_view contentOf(const std::string& line) {
  std::string_view content = line;
  content = content.substr(0, content.find('#'));
  const std::size_t first = content.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) {
    return {};
  }
  return content.substr(first, content.find_last_not_of(" \t\r") - first + 1);
}

/// The first line with content.
std::string firstLine(std::ifstream& file) {
  std::string bytes(kReadBytes, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  for (std::size_t begin = 0; begin < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
    const std::string line = bytes.substr(begin, end - begin);
    if (const std::string_view content = contentOf(line); !content.empty()) {
      return std::string(content);
    }
    begin = end + 1;
  }
  return "";
}

}  // namespace

SourceDirectory::SourceDirectory() {
  std::error_code error;
  const fs::path current = fs::current_path(error);
  directory = error ? "/" : current.string();
}

Problem SourceDirectory::change(const std::string& name) {
  const std::string wanted = withoutLastSlash(resolve(name));
  std::error_code error;
  if (!fs::is_directory(wanted, error)) {
    return wanted + " is no directory.";
  }
  if (access(wanted.c_str(), R_OK | X_OK) != 0) {
    return "The directory " + wanted + " cannot be read.";
  }
  directory = wanted;
  return {};
}

std::string SourceDirectory::resolve(const std::string& name) const {
  return (fs::path(directory) / name).lexically_normal().string();
}

Problem Marks::add(const std::string& name, Time time) {
  const std::string wanted = trimmed(name);
  if (wanted.empty()) {
    return "A mark needs a name.";
  }
  if (std::any_of(marks.begin(), marks.end(),
                  [&](const Mark& mark) { return equalIgnoringCase(mark.name, wanted); })) {
    return "There is a mark \"" + wanted + "\" already.";
  }
  marks.push_back({wanted, time});
  return {};
}

std::string Marks::text() const {
  Columns columns;
  for (const Mark& mark : marks) {
    columns.add({formatTime(mark.time), mark.name});
  }
  return columns.text();
}

Lookup<std::string> readSymbolFile(const std::string& path) {
  std::error_code error;
  std::ifstream file;
  // A pipe or a device could hold up the tester.
  if (fs::is_regular_file(path, error)) {
    file.open(path, std::ios::binary);
  }
  if (!file.is_open()) {
    return notFound<std::string>("The file " + path + " cannot be read.");
  }
  const std::string line = firstLine(file);
  const std::size_t blank = line.find_first_of(" \t");
  if (blank == std::string::npos || !equalIgnoringCase(line.substr(0, blank), kSystemWord)) {
    return notFound<std::string>(path + " is no symbol file: it does not begin with a line\n" +
                                 "\"system <name>\".");
  }
  return found(trimmed(line.substr(blank)));
}

}  // namespace tester
