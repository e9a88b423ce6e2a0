#include "gdb/options/options.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <unistd.h>

#include "support/version.h"
#include "usage.h"

namespace gdb {

namespace {

namespace fs = std::filesystem;

constexpr int kFailure = 1;
constexpr int kUsageError = 2;

constexpr char kDescription[] =
    "Tester of real programs, on GDB. Started by the Postmaster as its child; takes its commands "
    "from the user interface.";

constexpr char kFooter[] =
    "The words behind PROGRAM are its arguments, also those that begin with a hyphen.";

CommandLine usageError(const std::string& what) {
  return {std::nullopt, kUsageError, usageFault("nelgdb", what) + '\n'};
}

void addOptions(CLI::App& app, Options& options, std::string& directory) {
  app.add_option("--core", options.core, "Debug the core file FILE")->type_name("FILE");
  app.add_option("--pid", options.pid, "Attach to the process PID")
      ->type_name("PID")
      ->check(CLI::PositiveNumber);
  CLI::Option* remote =
      app.add_option("--remote", options.remote, "Connect to a GDB server or a stub")
          ->type_name("HOST:PORT");
  app.add_option("--serial", options.serial, "Connect to a stub at a serial line")
      ->type_name("DEVICE[:BAUD]")
      ->excludes(remote);
  app.add_option("--command", options.commandFiles,
                 "Have GDB carry out the commands in FILE; may be given more than once")
      ->type_name("FILE")
      ->allow_extra_args(false);
  app.add_option("--cd", directory, "Debug in the directory DIR")->type_name("DIR");
  app.add_option("--gdb", options.debugger,
                 "Use this GDB instead of gdb, or gdb-multiarch for another machine's program")
      ->type_name("PROGRAM");
  app.add_option("--buttons", options.buttons,
                 "Load the buttons in DIR instead of those beside "
                 "the program")
      ->type_name("DIR");
  app.add_flag("--init", options.readsInitFiles, "Have GDB read its init files, as ~/.gdbinit");
}

void makeAbsolute(std::string& file) {
  if (!file.empty()) {
    file = fs::absolute(file).lexically_normal().string();
  }
}

CommandLine complete(Options options, std::vector<std::string> words,
                     const std::string& directory) {
  if (!words.empty()) {
    options.program = words.front();
    options.arguments.assign(words.begin() + 1, words.end());
  }
  for (std::string* file : {&options.program, &options.core, &options.buttons}) {
    makeAbsolute(*file);
  }
  for (std::string& file : options.commandFiles) {
    makeAbsolute(file);
  }
  if (options.debugger.find('/') != std::string::npos) {
    makeAbsolute(options.debugger);
  }
  if (!directory.empty() && chdir(directory.c_str()) != 0) {
    return {std::nullopt, kFailure,
            "nelgdb: cannot enter " + directory + ": " + std::strerror(errno) + '\n'};
  }
  return {std::move(options), 0, {}};
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
  Options options;
  std::string directory;
  std::vector<std::string> words;
  CLI::App app(kDescription, "nelgdb");
  try {
    app.footer(kFooter);
    app.set_version_flag("--version", std::string("nelgdb ") + kProductVersion);
    addOptions(app, options, directory);
    app.prefix_command();
    app.parse(argc, argv);
    words = app.remaining();
  } catch (const CLI::CallForHelp&) {
    return {std::nullopt, 0, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return {std::nullopt, 0, std::string(version.what()) + '\n'};
  } catch (const CLI::Error& error) {
    return usageError(error.what());
  }
  if (!words.empty() && words.front() == "--") {
    words.erase(words.begin());
  } else if (!words.empty() && words.front().starts_with('-')) {
    return usageError("there is no option " + words.front());
  }
  return complete(std::move(options), std::move(words), directory);
}

}  // namespace gdb
