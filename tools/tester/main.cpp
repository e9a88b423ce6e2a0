// Entry of the stand-in tester. All options are answered before the link is touched.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>

#include "command_options.h"
#include "support/version.h"
#include "tester/debugger.h"

namespace {

int runTester() {
  tester::SimulatedSystem system(tester::crossingModel());
  tester_link::UserLink user;
  tester::Debugger debugger(system, user);
  return tester_link::TesterTool(debugger, user).run("nelkv");
}

/// The exit status of the options alone, or nothing when the tester is to run.
std::optional<int> answerOptions(int argc, char** argv) {
  CLI::App app(
      "Tester of a simulated SDL system. Started by the Postmaster as its child; takes "
      "its commands from the user interface.",
      "nelkv");
  app.footer(
      "Exit status: 0 after an orderly end, 1 without a connection, 2 for a wrong command line.");
  app.set_version_flag("--version", std::string("nelkv ") + kProductVersion);
  return exitOfOptions(app, argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::optional<int> status = answerOptions(argc, argv);
    return status ? *status : runTester();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "nelkv: %s\n", error.what());
    return EXIT_FAILURE;
  }
}
