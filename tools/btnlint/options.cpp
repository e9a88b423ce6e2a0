#include "btnlint/options.h"

#include "support/version.h"

#include <CLI/CLI.hpp>

namespace btnlint {

namespace {

constexpr char kDescription[] =
    "Reads button files as the user interface does and says what it will misread or lose.";

constexpr char kFooter[] =
    "Each remark is one line, FILE:LINE: text.\n"
    "\n"
    "Exit status: 0 when there was nothing to remark, 1 when there was, 2 for a wrong command "
    "line\n"
    "or a file that cannot be read.";

CommandLine usageError(const std::string& what) {
  return {std::nullopt, kExitTrouble,
          "nel-btnlint: " + what.substr(0, what.find('\n')) + "; try nel-btnlint --help\n"};
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
  try {
    CLI::App app(kDescription, "nel-btnlint");
    app.footer(kFooter);
    std::vector<std::string> files;
    app.add_option("FILE", files, "Button files to check")->required()->type_name("");
    app.set_version_flag("--version", std::string("nel-btnlint ") + kProductVersion);
    try {
      app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
      return {std::nullopt, kExitClean, app.help()};
    } catch (const CLI::CallForVersion& version) {
      return {std::nullopt, kExitClean, std::string(version.what()) + "\n"};
    }
    return {std::move(files), kExitClean, {}};
  } catch (const CLI::Error& error) {
    return usageError(error.what());
  }
}

}  // namespace btnlint
