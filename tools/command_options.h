#pragma once

#include <CLI/CLI.hpp>

#include <iostream>
#include <optional>

#include "usage.h"

/// Reads the command line of a tool that prints and ends by itself. The exit status when that was
/// all, for --help, --version or (2, with a line on standard error) a wrong command line; nothing
/// when the tool is to run.
inline std::optional<int> exitOfOptions(CLI::App& app, int argc, const char* const* argv) {
  constexpr int kUsageError = 2;
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
      return app.exit(error);
    }
    std::cerr << usageFault(app.get_name(), error.what()) << '\n';
    return kUsageError;
  }
  return std::nullopt;
}
