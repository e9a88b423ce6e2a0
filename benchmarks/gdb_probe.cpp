// Measures the tester on GDB, as its Postmaster and its window at once, and GDB alone on a
// terminal. Prints lines of a name and a number.
//
//   gdb_probe steps COUNT PROGRAM NELGDB       gdb_step_ms: from the command "next" until its line
//                                              and its confirmation are back, median;
//                                              gdb_resident_kb
//   gdb_probe bare COUNT PROGRAM GDB           gdb_step_ms: from "next" until GDB's prompt is back,
//                                              median; gdb_resident_kb: of GDB
//   gdb_probe output MEGABYTES SCRIPT PROGRAM NELGDB
//                                              gdb_output_ms: from the command that carries out a
//                                              script until its text, of so many megabytes, and its
//                                              confirmation have come; gdb_output_resident_kb
//
// PROGRAM must have been compiled with -g and have COUNT lines to go through.

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <thread>

#include "benchmarks/bench_postmaster.h"
#include "benchmarks/probe_main.h"
#include "benchmarks/started_program.h"
#include "tests/support/basics.h"

namespace {

using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

constexpr seconds kPatience{300};
constexpr std::size_t kMegabyte = 1000000;

double inMilliseconds(Clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

/// Carries out "next" so often, as quickly as a user might, and prints the median of the times.
void measureSteps(int count, const std::function<void(const std::string&)>& command) {
  constexpr std::chrono::milliseconds kBetween{73};  // no multiple of any timer's period
  std::vector<double> times;
  for (int i = 0; i < count; ++i) {
    std::this_thread::sleep_for(kBetween);
    const auto start = Clock::now();
    command("next");
    times.push_back(inMilliseconds(Clock::now() - start));
  }
  std::sort(times.begin(), times.end());
  std::printf("gdb_step_ms %.2f\n", times.at(times.size() / 2));
}

/// nelgdb with a program that stands at the beginning of main.
class TesterSession {
 public:
  TesterSession(const std::string& nelgdb, const std::string& program)
      : tester({nelgdb, program}, ownDisplay()) {
    command("set-page-length 0");
    command("start");
  }
  TesterSession(const TesterSession&) = delete;
  TesterSession& operator=(const TesterSession&) = delete;
  ~TesterSession() {
    // It ends by no signal, but when its user leaves.
    try {
      postmaster.send(MSG_UI_EXIT, {});
      postmaster.await(MSG_DISCONNECT, kPatience);
    } catch (const std::runtime_error&) {
      // It has ended already.
    }
  }

  /// What came until the command was confirmed.
  std::string command(const std::string& line) {
    postmaster.send(MSG_UI_COMMAND, {line});
    postmaster.await(MSG_T_PROMPT, kPatience, line);
    return postmaster.takeTexts(MSG_T_TEXT);
  }

  long resident() const { return residentKilobytes(tester.id()); }

 private:
  BenchPostmaster postmaster;
  StartedProgram tester;
};

/// GDB with a program that stands at the beginning of main, on a terminal that nobody shows.
class BareGdb {
 public:
  BareGdb(const std::string& gdb, const std::string& program) {
    Words words = {gdb,
                   "-nx",
                   "-q",
                   "-iex",
                   "set width 0",
                   "-iex",
                   "set height 0",
                   "-iex",
                   "set editing off",
                   "-iex",
                   "set debuginfod enabled off",
                   "-iex",
                   "set prompt " + std::string(1, kPrompt),
                   program};
    std::vector<char*> arguments;
    for (std::string& word : words) {
      arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    int master = -1;
    process = forkpty(&master, nullptr, nullptr, nullptr);
    if (process == 0) {
      execvp(arguments[0], arguments.data());
      _exit(EXIT_FAILURE);
    }
    terminal = UniqueDescriptor(master);
    awaitPrompt();
    command("start");
  }
  BareGdb(const BareGdb&) = delete;
  BareGdb& operator=(const BareGdb&) = delete;
  ~BareGdb() {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
  }

  long resident() const { return residentKilobytes(process); }

  void command(const std::string& line) {
    const std::string bytes = line + "\n";
    if (write(terminal.get(), bytes.data(), bytes.size()) < 0) {
      throw std::runtime_error("GDB takes no command");
    }
    awaitPrompt();
  }

 private:
  static constexpr char kPrompt = '\x1e';

  void awaitPrompt() {
    std::array<char, 4096> chunk;
    for (ssize_t count = 0;
         std::find(chunk.begin(), chunk.begin() + count, kPrompt) == chunk.begin() + count;) {
      pollfd entry = {terminal.get(), POLLIN, 0};
      poll(&entry, 1, static_cast<int>(std::chrono::milliseconds(kPatience).count()));
      count = read(terminal.get(), chunk.data(), chunk.size());
      if (count <= 0) {
        throw std::runtime_error("GDB has ended");
      }
    }
  }

  UniqueDescriptor terminal;
  pid_t process = 0;
};

void measureTester(const Words& words) {
  TesterSession session(words.at(3), words.at(2));
  measureSteps(std::stoi(words.at(1)), [&](const std::string& line) {
    if (session.command(line).find('\t') == std::string::npos) {
      throw std::runtime_error("a step without a line of source");
    }
  });
  std::printf("gdb_resident_kb %ld\n", session.resident());
}

void measureBare(const Words& words) {
  BareGdb gdb(words.at(3), words.at(2));
  measureSteps(std::stoi(words.at(1)), [&](const std::string& line) { gdb.command(line); });
  std::printf("gdb_resident_kb %ld\n", gdb.resident());
}

void measureOutput(const Words& words) {
  TesterSession session(words.at(4), words.at(3));
  const auto start = Clock::now();
  const std::string text = session.command("source " + words.at(2));
  std::printf("gdb_output_ms %.0f\n", inMilliseconds(Clock::now() - start));
  if (text.size() < std::stoul(words.at(1)) * kMegabyte) {
    throw std::runtime_error("only " + std::to_string(text.size()) + " bytes came");
  }
  std::printf("gdb_output_resident_kb %ld\n", session.resident());
}

}  // namespace

int main(int argc, char** argv) {
  return runProbe({{"steps", measureTester}, {"bare", measureBare}, {"output", measureOutput}},
                  argc, argv);
}
