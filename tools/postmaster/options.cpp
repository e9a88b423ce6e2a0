#include "postmaster/options.h"

#include "postmaster/charset.h"
#include "support/version.h"
#include "usage.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

namespace postmaster {

namespace {

constexpr char kDescription[] =
    "Stand-in Postmaster: starts tools as its children and carries their messages until the user "
    "interface leaves.";

constexpr char kFooter[] =
    "A tool is looked up in the folder of this program first, then along PATH, unless its name\n"
    "has a slash. A command is cut at blanks; quotes and backslashes work as in a shell.\n"
    "\n"
    "Example: nelmpm --trace - --tool nelkv --tool \"nelkvui -post\"\n"
    "\n"
    "Exit status: 0 after an orderly end, 1 when it could not start, no user interface came or a "
    "replay\n"
    "differed from the recording, 2 for a wrong command line.";

/// The files of the options, by these.
std::vector<std::pair<std::string, std::string>> namedFiles(const Options& options) {
  return {{"--trace", options.traceFile},
          {"--record", options.recordFile},
          {"--transcript", options.transcriptFile},
          {"--history", options.historyFile},
          {"--replay", options.replay.file}};
}

std::string firstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

CommandLine usageError(const std::string& what) {
  return {std::nullopt, kExitUsage, what};
}

/// What names a file, however it was written.
std::string canonicalName(const std::string& file) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(file, error);
  const std::filesystem::path name = std::filesystem::weakly_canonical(path, error);
  return error ? file : name.string();
}

/// Two of the options that name the same file, each of which would spoil what the other writes.
std::string clashingFiles(const Options& options) {
  std::map<std::string, std::string> seen;
  for (const auto& [option, file] : namedFiles(options)) {
    if (file.empty()) {
      continue;
    }
    const auto [first, isNew] = seen.emplace(canonicalName(file), option);
    if (!isNew) {
      return first->second + " and " + option + " name the same file";
    }
  }
  return {};
}

void addSessionOptions(CLI::App& app, Options& options) {
  app.add_option("--charset", options.charset,
                 "Character set of the tools; the window's is ISO-8859-1")
      ->type_name("NAME");
  app.add_flag("--join-text", options.joinsTexts,
               "Send texts that wait for a busy window as one message");
  app.add_flag("--keep-buttons", options.keepsButtons,
               "Copy the button file of each opened system to nelkv.btn~");
  app.add_flag("--restart-tester", options.restartsTester,
               "Offer to start a tester again that has ended or does not answer");
  app.add_option("--tester-patience", options.testerPatienceSeconds,
                 "Take a tester for hung after so many seconds without an answer, 0 for never")
      ->type_name("SECONDS")
      ->check(CLI::Range(0, 1'000'000))
      ->capture_default_str();
}

/// The tools' commands cut into words, and the rest as far as it can be judged by itself.
CommandLine toOptions(Options options, const std::vector<std::string>& commands) {
  if (!options.historyFile.empty() && !options.replay.file.empty()) {
    return usageError("--history excludes --replay");
  }
  if (options.historyFile == "-") {
    return usageError("--history needs a file");
  }
  if (const std::string clash = clashingFiles(options); !clash.empty()) {
    return usageError(clash);
  }
  for (const std::string& command : commands) {
    SplitCommand split = splitCommand(command);
    if (!split.fault.empty()) {
      return usageError("--tool '" + firstLine(command) + "' is no command: " + split.fault);
    }
    options.tools.push_back(std::move(split.words));
  }
  if (!options.charset.empty() && Charset::open(options.charset) == nullptr) {
    return usageError("--charset '" + firstLine(options.charset) + "' is not known here");
  }
  return {std::move(options), kExitOrderly, {}};
}

void addFileOptions(CLI::App& app, Options& options) {
  const auto addFile = [&app](const char* name, std::string& file, const char* help) {
    app.add_option(name, file, help)->type_name("FILE");
  };
  addFile("--trace", options.traceFile,
          "Write each frame as one line to FILE, - for standard output");
  addFile("--record", options.recordFile,
          "Record the frames in FILE, for nel-dump; - for standard output");
  addFile("--transcript", options.transcriptFile,
          "Add what the user sees and types to FILE; - for standard output");
  addFile("--history", options.historyFile,
          "Keep the user's commands in FILE and hand them to the window of the next run");
}

void addReplayOptions(CLI::App& app, ReplayOptions& replay, double& patience) {
  constexpr double kMost = 1e6;
  const auto isNumber = [](const std::string& text) {
    double number = 0;
    const bool isGood = CLI::detail::lexical_cast(text, number) && number >= 0 && number <= kMost;
    return isGood ? std::string() : "'" + text + "' is no number from 0 to 1000000";
  };
  CLI::Option* const file =
      app.add_option("--replay", replay.file,
                     "Play the recording FILE to the window in the place of all other tools")
          ->type_name("FILE");
  app.add_option("--speed", replay.speed, "Replay so many times as fast, 0 for without waiting")
      ->type_name("X")
      ->check(isNumber)
      ->needs(file);
  app.add_option("--patience", patience,
                 "Wait so much longer than recorded for commands of the user")
      ->type_name("SECONDS")
      ->check(isNumber)
      ->needs(file);
  app.add_flag("--close", replay.closes, "Close the window at the end of the replay")->needs(file);
}

/// A wrong line is told without the program's name.
CommandLine parseWords(int argc, const char* const* argv) {
  try {
    CLI::App app(kDescription, "nelmpm");
    app.footer(kFooter);
    Options options;
    std::vector<std::string> commands;
    app.add_option("--tool", commands, "Start COMMAND as a tool; may be given several times")
        ->type_name("COMMAND")
        ->allow_extra_args(false);
    double patience = 0;
    addFileOptions(app, options);
    addSessionOptions(app, options);
    addReplayOptions(app, options.replay, patience);
    app.set_version_flag("--version", std::string("nelmpm ") + kProductVersion);
    try {
      app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
      return {std::nullopt, kExitOrderly, app.help()};
    } catch (const CLI::CallForVersion& version) {
      return {std::nullopt, kExitOrderly, std::string(version.what()) + "\n"};
    }
    options.replay.patience = std::chrono::milliseconds(std::llround(patience * 1000));
    return toOptions(std::move(options), commands);
  } catch (const CLI::Error& error) {
    return usageError(error.what());
  }
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv, const char* program) {
  CommandLine line = parseWords(argc, argv);
  if (line.status == kExitUsage) {
    line.text = usageFault(program, line.text);
  }
  return line;
}

SplitCommand splitCommand(std::string_view command) {
  ToolCommand words;
  bool inWord = false;
  char quote = '\0';
  for (std::size_t i = 0; i < command.size(); ++i) {
    char c = command[i];
    if (quote == '\0' && (c == ' ' || c == '\t' || c == '\n')) {
      inWord = false;
      continue;
    }
    if (!std::exchange(inWord, true)) {
      words.emplace_back();
    }
    if (c == quote) {
      quote = '\0';
      continue;
    }
    if (quote == '\0' && (c == '"' || c == '\'')) {
      quote = c;
      continue;
    }
    if (c == '\\' && quote != '\'') {
      if (++i == command.size()) {
        return {{}, "nothing follows the \\ at its end"};
      }
      c = command[i];
    }
    words.back() += c;
  }
  if (quote != '\0') {
    return {{}, std::string("a ") + quote + " is not closed"};
  }
  if (words.empty() || words.front().empty()) {
    return {{}, "it names no program"};
  }
  return {std::move(words), {}};
}

}  // namespace postmaster
