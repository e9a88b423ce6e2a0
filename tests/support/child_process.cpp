#include "tests/support/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>

#include "tests/support/script_failure.h"

namespace {

constexpr int kCannotStart = 127;
constexpr int kSignalBase = 128;
constexpr std::size_t kPipeChunk = 65536;

/// Texts and the null-ended array of pointers to them that exec wants.
class PointerList {
 public:
  explicit PointerList(std::vector<std::string> entries) : texts(std::move(entries)) {
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
      pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
  }
  PointerList(const PointerList&) = delete;
  PointerList& operator=(const PointerList&) = delete;

  char* const* get() const { return pointers.data(); }

 private:
  std::vector<std::string> texts;
  std::vector<char*> pointers;
};

std::string nameOf(const std::string& variable) {
  return variable.substr(0, variable.find('='));
}

std::vector<std::string> mergedEnvironment(const std::vector<std::string>& changes) {
  std::vector<std::string> result;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    result.emplace_back(*variable);
  }
  for (const std::string& change : changes) {
    std::erase_if(result, [&](const std::string& old) { return nameOf(old) == nameOf(change); });
    if (change.find('=') != std::string::npos) {
      result.push_back(change);
    }
  }
  return result;
}

struct Pipe {
  UniqueDescriptor readEnd;
  UniqueDescriptor writeEnd;
};

Pipe makePipe() {
  std::array<int, 2> ends = {};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }
  ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
  return {UniqueDescriptor(ends[0]), UniqueDescriptor(ends[1])};
}

/// The child's side of the fork. Only calls that are allowed between fork and exec.
[[noreturn]] void runProgram(const char* program, char* const* arguments, char* const* environment,
                             const char* folder, int output, int errors) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  ::dup2(output, STDOUT_FILENO);
  ::dup2(errors, STDERR_FILENO);
  if (*folder == '\0' || ::chdir(folder) == 0) {
    ::execve(program, arguments, environment);
  }
  const char* const reason = strerrordesc_np(errno);
  for (const char* const part : {"cannot start ", program, ": ", reason, "\n"}) {
    if (::write(STDERR_FILENO, part, std::strlen(part)) < 0) {
      break;
    }
  }
  ::_exit(kCannotStart);
}

int toStatus(int waitStatus) {
  return WIFSIGNALED(waitStatus) ? kSignalBase + WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

std::string indented(const std::string& text) {
  std::string result = "    ";
  for (const char c : std::string_view(text)) {
    result += c;
    if (c == '\n') {
      result += "    ";
    }
  }
  return result;
}

}  // namespace

ChildProcess::ChildProcess(const Launch& launch) {
  const std::filesystem::path program = std::filesystem::absolute(launch.program);
  std::vector<std::string> line = {program.filename().string()};
  line.insert(line.end(), launch.arguments.begin(), launch.arguments.end());
  const PointerList arguments(std::move(line));
  const PointerList environment(mergedEnvironment(launch.environment));

  Pipe output = makePipe();
  Pipe errors = makePipe();
  processId = ::fork();
  if (processId < 0) {
    throw std::system_error(errno, std::generic_category(), "fork");
  }
  if (processId == 0) {
    runProgram(program.c_str(), arguments.get(), environment.get(), launch.workingFolder.c_str(),
               output.writeEnd.get(), errors.writeEnd.get());
  }
  streams[0].pipe = std::move(output.readEnd);
  streams[1].pipe = std::move(errors.readEnd);
}

ChildProcess::~ChildProcess() {
  kill();
}

bool ChildProcess::isRunning() {
  int waitStatus = 0;
  if (!status && ::waitpid(processId, &waitStatus, WNOHANG) == processId) {
    status = toStatus(waitStatus);
  }
  return !status;
}

void ChildProcess::signal(int number) const {
  if (!status) {
    ::kill(processId, number);
  }
}

void ChildProcess::kill() {
  if (isRunning()) {
    signal(SIGKILL);
    int waitStatus = 0;
    while (::waitpid(processId, &waitStatus, 0) < 0 && errno == EINTR) {
    }
    status = toStatus(waitStatus);
  }
}

void ChildProcess::drain() {
  for (Stream& stream : streams) {
    drain(stream);
  }
}

void ChildProcess::drain(Stream& stream) {
  std::array<char, kPipeChunk> chunk;
  while (stream.pipe.isOpen()) {
    const ssize_t count = ::read(stream.pipe.get(), chunk.data(), chunk.size());
    if (count > 0) {
      stream.text.append(chunk.data(), static_cast<std::size_t>(count));
    } else if (count == 0) {
      stream.pipe.close();
    } else if (errno != EINTR) {
      return;
    }
  }
}

std::array<pollfd, 2> ChildProcess::pollEntries() const {
  return {pollfd{streams[0].pipe.get(), POLLIN, 0}, pollfd{streams[1].pipe.get(), POLLIN, 0}};
}

void ChildProcess::waitABit(Milliseconds limit) {
  std::array<pollfd, 2> entries = pollEntries();
  const Milliseconds timeout = std::min(limit, kChildPollTime);
  ::poll(entries.data(), entries.size(), static_cast<int>(timeout.count()));
  drain();
}

int ChildProcess::exitStatus(Milliseconds limit, SourceLine where) {
  const Deadline deadline(limit);
  while (isRunning()) {
    if (deadline.hasPassed()) {
      failScript("the program still runs, its end was awaited\n" + report(), where);
    }
    waitABit(deadline.left(limit));
  }
  drain();
  return *status;
}

void ChildProcess::expectText(const std::string& text, Milliseconds limit, SourceLine where) {
  const Deadline deadline(limit);
  const auto isThere = [&] {
    return output().find(text) != std::string::npos || errors().find(text) != std::string::npos;
  };
  for (drain(); !isThere(); waitABit(deadline.left(limit))) {
    const bool hasEnded = !isRunning();
    drain();
    if (!isThere() && (hasEnded || deadline.hasPassed())) {
      failScript("the program did not write \"" + text + "\"\n" + report(), where);
    }
  }
}

std::string ChildProcess::report() {
  const bool runs = isRunning();
  drain();
  return "  program " + std::to_string(processId) +
         (runs ? " runs\n" : " ended with status " + std::to_string(*status) + "\n") +
         "  standard output:\n" + indented(output()) + "\n  standard error:\n" +
         indented(errors()) + "\n";
}
