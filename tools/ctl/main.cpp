// Has the tester of a running session carry out a command, for scripts.

#include "command_options.h"
#include "ctl/session.h"
#include "support/version.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <iostream>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace {

int complain(int status, const std::string& why) {
  std::cerr << "nel-ctl: " << why << '\n';
  return status;
}

int runCommand(const std::string& command, double seconds) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline =
      seconds > 0
          ? Clock::now() + std::chrono::milliseconds(static_cast<std::int64_t>(seconds * 1000))
          : Clock::time_point::max();
  ctl::Session session;
  if (const std::string why =
          session.open(std::min(deadline, Clock::now() + std::chrono::seconds(20)));
      !why.empty()) {
    return complain(ctl::kExitFailure, why);
  }
  const int status = session.run(command, deadline, std::cout);
  if (status != ctl::kExitConfirmed) {
    return complain(status, session.fault());
  }
  return std::cout.flush() ? status
                           : complain(ctl::kExitFailure, "cannot write what the tester says");
}

int run(int argc, char** argv) {
  CLI::App app("Has the tester of a running session carry out a command and prints what it says.",
               "nel-ctl");
  app.footer(
      "The words are joined by blanks. The window shows the command's texts too, and what the "
      "tester\n"
      "asks meanwhile is asked there.\n\n"
      "Exit status: 0 when the tester has confirmed the command, 1 when there is no session or it\n"
      "ended before, 2 for a wrong command line, 3 after the time of --timeout.");
  std::vector<std::string> words;
  double seconds = 0;
  app.add_option("command", words, "The command")->required()->type_name("WORD");
  app.add_option("--timeout", seconds, "Wait for so long at most, 0 for ever")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, 1e9))
      ->capture_default_str();
  app.set_version_flag("--version", std::string("nel-ctl ") + kProductVersion);
  app.positionals_at_end();
  if (const std::optional<int> status = exitOfOptions(app, argc, argv)) {
    return *status;
  }
  std::string command;
  for (const std::string& word : words) {
    command += (command.empty() ? "" : " ") + word;
  }
  return runCommand(command, seconds);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "nel-ctl: %s\n", error.what());
    return ctl::kExitFailure;
  }
}
