#include "tests/support/child_process.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

constexpr int kCannotStart = 127;
constexpr int kSignalBase = 128;

/// The child's side of the fork.
int runProgram(const Launch& launch) {
  std::vector<std::string> words = launch.arguments;
  words.insert(words.begin(), launch.program.filename());
  std::vector<char*> arguments;
  std::ranges::transform(words, std::back_inserter(arguments),
                         [](auto& word) { return word.data(); });
  arguments.push_back(nullptr);
  for (const std::string& variable : launch.environment) {
    ::putenv(::strdup(variable.c_str()));  // without "=" it removes the variable
  }
  if (launch.workingFolder.empty() || ::chdir(launch.workingFolder.c_str()) == 0) {
    ::execv(launch.program.c_str(), arguments.data());
  }
  std::fprintf(stderr, "cannot start %s: %s\n", launch.program.c_str(), std::strerror(errno));
  return kCannotStart;
}

}  // namespace

void failScript(const std::string& text, SourceLine where) {
  ADD_FAILURE_AT(where.file, where.line) << text;
  throw testing::AssertionException(testing::TestPartResult(testing::TestPartResult::kFatalFailure,
                                                            where.file, where.line, text.c_str()));
}

bool waitUntil(const std::function<bool()>& condition, Milliseconds limit) {
  for (const Deadline deadline(limit); !condition(); ChildProcess::waitABit()) {
    if (deadline.hasPassed()) {
      return false;
    }
  }
  return true;
}

ChildProcess::ChildProcess(const Launch& launch)
    : ChildProcess([&launch] { return runProgram(launch); }) {}

ChildProcess::ChildProcess(const std::function<int()>& body) {
  for (UniqueDescriptor& stream : streams) {
    stream = UniqueDescriptor(::memfd_create("output", MFD_CLOEXEC));
  }
  std::fflush(nullptr);
  processId = ::fork();
  if (processId == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::dup2(streams[0].get(), STDOUT_FILENO);
    ::dup2(streams[1].get(), STDERR_FILENO);
    const int result = body();
    std::fflush(nullptr);
    ::_exit(result);
  }
}

bool ChildProcess::isRunning() {
  int ended = 0;
  if (!status && ::waitpid(processId, &ended, WNOHANG) == processId) {
    status = WIFSIGNALED(ended) ? kSignalBase + WTERMSIG(ended) : WEXITSTATUS(ended);
  }
  return !status;
}

void ChildProcess::signal(int number) const {
  if (!status) {
    ::kill(processId, number);
  }
}

void ChildProcess::kill() {
  for (signal(SIGKILL); isRunning();) {
    ::usleep(100);
  }
}

std::string ChildProcess::written(std::size_t stream) const {
  return readFile("/proc/self/fd/" + std::to_string(streams.at(stream).get()));
}

void ChildProcess::waitABit(std::vector<pollfd> others) {
  constexpr int kShortWhile = 5;
  ::poll(others.data(), others.size(), kShortWhile);
}

int ChildProcess::exitStatus(SourceLine where) {
  if (!waitUntil([this] { return !isRunning(); })) {
    failScript("the program still runs, its end was awaited\n" + report(), where);
  }
  return *status;
}

void ChildProcess::expectText(const std::string& text, SourceLine where) {
  if (!waitUntil([&] { return (output() + '\0' + errors()).find(text) != std::string::npos; })) {
    failScript("the program did not write \"" + text + "\"\n" + report(), where);
  }
}

std::string ChildProcess::report() {
  const std::string state = isRunning() ? "runs" : "ended with status " + std::to_string(*status);
  return "  program " + std::to_string(processId) + " " + state + "\n  standard output:\n" +
         output() + "\n  standard error:\n" + errors() + "\n";
}
