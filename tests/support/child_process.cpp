#include "tests/support/child_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <system_error>

namespace {

constexpr int kCannotStart = 127;
constexpr int kSignalBase = 128;
constexpr std::size_t kPipeChunk = 65536;
constexpr Milliseconds kChildPollTime{10};

/// The child's side of the fork.
int runProgram(const Launch& launch) {
  std::vector<std::string> words = {launch.program.filename().string()};
  words.insert(words.end(), launch.arguments.begin(), launch.arguments.end());
  std::vector<char*> arguments;
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  for (const std::string& variable : launch.environment) {
    const std::size_t end = variable.find('=');
    const std::string name = variable.substr(0, end);
    end == std::string::npos ? ::unsetenv(name.c_str())
                             : ::setenv(name.c_str(), variable.c_str() + end + 1, 1);
  }
  const std::filesystem::path program = std::filesystem::absolute(launch.program);
  if (launch.workingFolder.empty() || ::chdir(launch.workingFolder.c_str()) == 0) {
    ::execv(program.c_str(), arguments.data());
  }
  std::fprintf(stderr, "cannot start %s: %s\n", program.c_str(), std::strerror(errno));
  return kCannotStart;
}

}  // namespace

void failScript(const std::string& text, SourceLine where) {
  ADD_FAILURE_AT(where.file, where.line) << text;
  throw testing::AssertionException(testing::TestPartResult(testing::TestPartResult::kFatalFailure,
                                                            where.file, where.line, text.c_str()));
}

ChildProcess::ChildProcess(const Launch& launch)
    : ChildProcess([&launch] { return runProgram(launch); }) {}

ChildProcess::ChildProcess(const std::function<int()>& body) {
  std::array<UniqueDescriptor, 2> ends;
  for (std::size_t i = 0; i < ends.size(); ++i) {
    std::array<int, 2> pipe = {};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
      throw std::system_error(errno, std::generic_category(), "pipe");
    }
    ::fcntl(pipe[0], F_SETFL, O_NONBLOCK);
    streams[i].pipe = UniqueDescriptor(pipe[0]);
    ends[i] = UniqueDescriptor(pipe[1]);
  }
  std::fflush(nullptr);
  processId = ::fork();
  if (processId == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::dup2(ends[0].get(), STDOUT_FILENO);
    ::dup2(ends[1].get(), STDERR_FILENO);
    const int result = body();
    std::fflush(nullptr);
    ::_exit(result);
  }
  if (processId < 0) {
    throw std::system_error(errno, std::generic_category(), "fork");
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

void ChildProcess::drain() {
  std::array<char, kPipeChunk> chunk;
  for (Stream& stream : streams) {
    ssize_t count = 1;
    while (stream.pipe.isOpen() && count > 0) {
      count = ::read(stream.pipe.get(), chunk.data(), chunk.size());
      stream.text.append(chunk.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
      if (count == 0) {
        stream.pipe.close();
      }
    }
  }
}

void ChildProcess::waitABit(Milliseconds limit, std::vector<pollfd> others) {
  for (const Stream& stream : streams) {
    others.push_back({stream.pipe.get(), POLLIN, 0});
  }
  const Milliseconds timeout = std::min(limit, kChildPollTime);
  ::poll(others.data(), others.size(), static_cast<int>(timeout.count()));
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
  for (;;) {
    const bool canComeLater = isRunning() && !deadline.hasPassed();
    drain();
    if (output().find(text) != std::string::npos || errors().find(text) != std::string::npos) {
      return;
    }
    if (!canComeLater) {
      failScript("the program did not write \"" + text + "\"\n" + report(), where);
    }
    waitABit(deadline.left(limit));
  }
}

std::string ChildProcess::report() {
  const std::string state = isRunning() ? "runs" : "ended with status " + std::to_string(*status);
  drain();
  return "  program " + std::to_string(processId) + " " + state + "\n  standard output:\n" +
         output() + "\n  standard error:\n" + errors() + "\n";
}
