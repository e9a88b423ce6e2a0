// Entry of the tester on GDB. All options are looked at before the link is touched.

#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

#include "gdb/options/options.h"
#include "gdb/session/session.h"

namespace {

int runTester(const gdb::Options& options) {
  // Static, so that it ends in order also where the link ends the process.
  static tester_link::UserLink user;
  static gdb::Session session(options, user);
  return tester_link::TesterTool(session, user).run("nelgdb");
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const gdb::CommandLine line = gdb::parseCommandLine(argc, argv);
    if (line.options) {
      return runTester(*line.options);
    }
    (line.status == 0 ? std::cout : std::cerr) << line.text;
    return line.status;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "nelgdb: %s\n", error.what());
    return EXIT_FAILURE;
  }
}
