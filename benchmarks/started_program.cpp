#include "benchmarks/started_program.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string_view>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto kEndTime = 2s;
constexpr auto kSignalEvery = 100ms;
constexpr int kCannotStart = 127;

std::string firstLine(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  return line;
}

std::string processFile(pid_t process, const char* name) {
  return "/proc/" + std::to_string(process) + "/" + name;
}

/// The fields of /proc/PID/stat behind the name, which may hold blanks itself.
std::vector<std::string> statFields(pid_t process) {
  const std::string line = firstLine(processFile(process, "stat"));
  std::istringstream rest(line.substr(std::min(line.size(), line.rfind(')') + 1)));
  std::vector<std::string> fields;
  for (std::string field; rest >> field;) {
    fields.push_back(field);
  }
  return fields;
}

enum StatField : std::size_t { kParent = 1, kUserTime = 11, kSystemTime = 12 };

long statNumber(pid_t process, StatField field) {
  const std::vector<std::string> fields = statFields(process);
  return field < fields.size() ? std::atol(fields[field].c_str()) : 0;
}

/// The number of a line "name: number" in /proc/PID/status.
long statusNumber(pid_t process, std::string_view name) {
  std::ifstream in(processFile(process, "status"));
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with(name) && line.size() > name.size() && line[name.size()] == ':') {
      return std::atol(line.c_str() + name.size() + 1);
    }
  }
  return 0;
}

std::vector<pid_t> allProcesses() {
  std::vector<pid_t> result;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const pid_t id = std::atoi(entry.path().filename().c_str());
    if (id > 0) {
      result.push_back(id);
    }
  }
  return result;
}

}  // namespace

StartedProgram::StartedProgram(const std::vector<std::string>& command,
                               const std::string& display) {
  std::vector<std::string> words = command;
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  processId = fork();
  if (processId == 0) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setenv("DISPLAY", display.c_str(), 1);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    execvp(arguments[0], arguments.data());
    std::perror(arguments[0]);
    _exit(kCannotStart);
  }
}

StartedProgram::~StartedProgram() {
  // A program that would ask its user first takes several signals for impatience.
  for (const auto end = Clock::now() + kEndTime; Clock::now() < end && isRunning();) {
    kill(-processId, SIGTERM);
    std::this_thread::sleep_for(kSignalEvery);
  }
  kill(-processId, SIGKILL);
  waitpid(processId, nullptr, 0);
}

bool StartedProgram::isRunning() const {
  return waitpid(processId, nullptr, WNOHANG) == 0;
}

pid_t findProcess(pid_t first, const std::string& name) {
  std::set<pid_t> family = {first};
  for (std::size_t known = 0; known != family.size();) {
    known = family.size();
    for (const pid_t process : allProcesses()) {
      if (family.contains(static_cast<pid_t>(statNumber(process, kParent)))) {
        family.insert(process);
      }
    }
  }
  for (const pid_t process : family) {
    if (firstLine(processFile(process, "comm")) == name) {
      return process;
    }
  }
  return 0;
}

long residentKilobytes(pid_t process) {
  return statusNumber(process, "VmRSS");
}

ProcessUse useOf(pid_t process) {
  const long ticks = statNumber(process, kUserTime) + statNumber(process, kSystemTime);
  return {static_cast<double>(ticks) / static_cast<double>(sysconf(_SC_CLK_TCK)),
          statusNumber(process, "voluntary_ctxt_switches")};
}
