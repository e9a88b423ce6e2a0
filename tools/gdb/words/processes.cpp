// The processes that may be attached to. GDB's own list fails as a whole when any command line of
// the host has control characters.

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>

#include "gdb/words/choices.h"
#include "gdb/words/texts.h"
#include "support/text.h"

namespace gdb {

namespace {

namespace fs = std::filesystem;

std::string contentsOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::optional<pid_t> readNumber(std::string_view text) {
  pid_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  return isNumber ? std::optional(number) : std::nullopt;
}

/// The parent, behind the name in parentheses, which may hold anything, and the state.
pid_t parentOf(const fs::path& process) {
  const std::string stat = contentsOf(process / "stat");
  const std::size_t name = stat.rfind(')');
  if (name == std::string::npos) {
    return 0;
  }
  const std::string state = splitWord(trimmed(stat.substr(name + 1))).second;
  return readNumber(splitWord(state).first).value_or(0);
}

bool isOfSession(pid_t pid, pid_t above, pid_t self, pid_t parent) {
  return pid == self || pid == parent || above == self || above == parent;
}

bool isOwn(const fs::path& process) {
  struct stat about = {};
  return stat(process.c_str(), &about) == 0 && about.st_uid == geteuid();
}

}  // namespace

Choices processesIn(const fs::path& folder, pid_t self, pid_t parent) {
  std::vector<std::pair<pid_t, std::string>> found;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    const auto pid = readNumber(entry.path().filename().string());
    if (!pid || !isOwn(entry.path())) {
      continue;
    }
    std::string command = contentsOf(entry.path() / "cmdline");
    std::replace(command.begin(), command.end(), '\0', ' ');
    if (!trimmed(command).empty() && !isOfSession(*pid, parentOf(entry.path()), self, parent)) {
      found.emplace_back(*pid, command);
    }
  }
  std::sort(found.begin(), found.end());
  Choices choices;
  for (const auto& [pid, command] : found) {
    const std::string number = std::to_string(pid);
    choices.push_back({shownItem((number + "  ").append(command)), number});
  }
  alignNumbers(choices);
  return choices;
}

bool isOfSession(const std::string& process) {
  const auto pid = readNumber(process);
  return pid && isOfSession(*pid, parentOf(fs::path("/proc") / process), getpid(), getppid());
}

Choices processChoices(const mi::Record& /*unused*/) {
  return processesIn("/proc", getpid(), getppid());
}

}  // namespace gdb
