#include "launcher/launch.h"

#include "support/version.h"
#include "usage.h"
#include "user_folder.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string_view>
#include <utility>

namespace launcher {

namespace {

constexpr char kDescription[] =
    "Starts Korvane UI: the Postmaster, a tester and the window, and ends when the window is "
    "closed.";

constexpr char kFooter[] =
    "--gdb comes behind all other options: the words behind PROGRAM are its arguments, also those\n"
    "that begin with a hyphen. PROGRAM may be left out; --core, --pid, --remote and --serial do\n"
    "without --gdb. Words behind -- go to the window, nelkvui.\n"
    "What is kept stands in $XDG_STATE_HOME/korvane (~/.local/state/korvane). A copy of each "
    "button\n"
    "file that the window opens is kept beside that file, as nelkv.btn~.\n"
    "\n"
    "Examples: korvane\n"
    "          korvane --gdb ./program -v input.txt\n"
    "          korvane --core core --gdb ./program -- -geometry 1200x900\n"
    "          korvane --remote localhost:3333 --command load.gdb --gdb firmware.elf\n"
    "          korvane --tester \"mytester -t board\" -- -geometry 1200x900\n"
    "          korvane --replay ~/.local/state/korvane/recording.txt\n"
    "\n"
    "Exit status: 0 after an orderly end, 1 when it could not start, 2 for a wrong command line.";

CommandLine usageError(const std::string& what) {
  return {std::nullopt, kExitUsage, usageFault("korvane", what) + "\n"};
}

void addFileOption(CLI::App& app, const std::string& name, std::optional<std::string>& file,
                   const std::string& help) {
  app.add_option(name, file, help)->type_name("FILE");
}

/// Words for nelgdb as they were given, with its options' names.
struct DebuggerOption {
  const char* name;
  const char* value;
  const char* help;
};
constexpr DebuggerOption kDebuggerOptions[] = {
    {"--core", "FILE", "Debug the core file FILE"},
    {"--pid", "PID", "Debug the process PID"},
    {"--remote", "HOST:PORT", "Debug what a GDB server or a stub there serves"},
    {"--serial", "DEVICE[:BAUD]", "The same at a serial line"},
    {"--command", "FILE", "Have GDB carry out the commands in FILE; may be given more than once"},
    {"--cd", "DIR", "Debug in the directory DIR"},
};

constexpr char kDebuggerFlag[] = "--gdb";
constexpr char kDebuggerGroup[] = "With GDB";

/// The options of the tester on GDB, which are handed on.
void addDebuggerOptions(CLI::App& app, Options& options) {
  app.add_flag(kDebuggerFlag, options.usesDebugger,
               "PROGRAM [ARGUMENT...]: debug that, by nelgdb as the tester")
      ->group(kDebuggerGroup);
  for (const auto& [name, value, help] : kDebuggerOptions) {
    const auto take = [&words = options.debuggerWords,
                       word = std::string(name)](const std::vector<std::string>& values) {
      for (const std::string& each : values) {
        words.insert(words.end(), {word, each});
      }
      return true;
    };
    CLI::Option* option = app.add_option(name, take, help)
                              ->type_name(value)
                              ->allow_extra_args(false)
                              ->group(kDebuggerGroup);
    if (std::string_view(name) == "--command") {
      option->take_all();
    }
    if (std::string_view(name) == "--pid") {
      option->check(CLI::PositiveNumber);
    }
  }
}

/// The words before kDebuggerFlag, with it, are options; behind it the program has its own.
std::vector<std::string> takeProgramWords(int& argc, const char* const* argv) {
  const char* const* end = argv + argc;
  const char* const* flag = std::find(argv, end, std::string_view(kDebuggerFlag));
  if (flag == end) {
    return {};
  }
  argc = static_cast<int>(flag + 1 - argv);
  return {flag + 1, end};
}

/// Makes nelgdb the tester if an option asks for it.
void chooseTester(Options& options, const std::vector<std::string>& programWords) {
  options.usesDebugger = options.usesDebugger || !options.debuggerWords.empty();
  if (!options.usesDebugger) {
    return;
  }
  std::vector<std::string> words = {"nelgdb"};
  words.insert(words.end(), options.debuggerWords.begin(), options.debuggerWords.end());
  if (!programWords.empty()) {
    options.program = programWords.front();
    words.push_back("--");
    words.insert(words.end(), programWords.begin(), programWords.end());
  }
  options.tester = quoteCommand(words);
}

void addOptions(CLI::App& app, Options& options) {
  app.add_option("--tester", options.tester, "Start COMMAND as the tester")
      ->type_name("COMMAND")
      ->capture_default_str();
  addFileOption(app, "--transcript", options.transcript, "What was seen and typed, for people");
  addFileOption(app, "--record", options.recording, "All messages of the session, for --replay");
  addFileOption(app, "--history", options.history, "Commands, for the next session");
  app.add_flag("--keep-nothing", options.keepsNothing,
               "Keep only those of the three files that are named");
  app.add_option("--trace", options.trace, "Each message as one line, - for standard output")
      ->type_name("FILE");
  app.add_option("--charset", options.charset, "Character set of the tester, none for bytes")
      ->type_name("NAME")
      ->capture_default_str();
  CLI::Option* replay =
      app.add_option("--replay", options.replay, "Play a recording, without a tester")
          ->type_name("FILE");
  app.add_option("--speed", options.speed, "Play it so many times as fast")
      ->type_name("X")
      ->needs(replay);
  addDebuggerOptions(app, options);
}

void addOption(std::vector<std::string>& words, const char* name, const std::string& value) {
  if (!value.empty()) {
    words.insert(words.end(), {name, value});
  }
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
  Options options;
  CLI::App app(kDescription, "korvane");
  try {
    app.footer(kFooter);
    addOptions(app, options);
    app.set_version_flag("--version", std::string("korvane ") + kProductVersion);
    const char* const* end = std::find(argv, argv + argc, std::string_view("--"));
    int count = static_cast<int>(end - argv);
    const std::vector<std::string> programWords = takeProgramWords(count, argv);
    app.parse(count, argv);
    chooseTester(options, programWords);
    if (options.usesDebugger && app.count("--tester") + app.count("--replay") != 0) {
      return usageError("GDB goes with neither --tester nor --replay");
    }
    if (end != argv + argc) {
      options.windowWords.assign(end + 1, argv + argc);
    }
  } catch (const CLI::CallForHelp&) {
    return {std::nullopt, 0, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return {std::nullopt, 0, std::string(version.what()) + "\n"};
  } catch (const CLI::Error& error) {
    return usageError(error.what());
  }
  return {std::move(options), 0, {}};
}

std::string quoteCommand(const std::vector<std::string>& words) {
  std::string command;
  for (const std::string& word : words) {
    command += command.empty() ? "\"" : " \"";
    for (const char c : word) {
      command += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
    }
    command += '"';
  }
  return command;
}

std::string stateFolderOf(const char* stateHome, const char* home) {
  return userFolderOf(stateHome, home, "/.local/state");
}

std::vector<std::string> postmasterWords(const Options& options, const std::string& stateFolder,
                                         const std::string& recording) {
  const bool isReplay = !options.replay.empty();
  const auto fileOf = [&](const std::optional<std::string>& named, const std::string& usual) {
    if (named) {
      return *named;
    }
    const bool isKept = !options.keepsNothing && !stateFolder.empty() && !isReplay;
    return isKept ? stateFolder + "/" + usual : std::string();
  };
  std::vector<std::string> words = {"nelmpm"};
  addOption(words, "--transcript", fileOf(options.transcript, kTranscript));
  addOption(words, "--record", fileOf(options.recording, recording));
  addOption(words, "--history", fileOf(options.history, kHistory));
  addOption(words, "--trace", options.trace);
  addOption(words, "--charset", options.charset == "none" ? "" : options.charset);
  words.insert(words.end(), {"--join-text", "--keep-buttons"});
  if (isReplay) {
    addOption(words, "--replay", options.replay);
    addOption(words, "--speed", options.speed);
  } else {
    words.push_back("--restart-tester");
    addOption(words, "--tool", options.tester);
    // A replay plays its part, too.
    addOption(words, "--tool", options.usesDebugger ? "nel-help --tester nelgdb" : "nel-help");
  }
  std::vector<std::string> window = {"nelkvui"};
  window.insert(window.end(), options.windowWords.begin(), options.windowWords.end());
  addOption(words, "--tool", quoteCommand(window));
  return words;
}

}  // namespace launcher
