#include "postmaster/options.h"

#include "postmaster/charset.h"
#include "support/version.h"

#include <CLI/CLI.hpp>

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
    "Exit status: 0 after an orderly end, 1 when it could not start or no user interface came,\n"
    "2 for a wrong command line.";

std::string firstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

CommandLine usageError(const std::string& what) {
  return {std::nullopt, kExitUsage, "nelmpm: " + firstLine(what) + "; try nelmpm --help"};
}

void addOptions(CLI::App& app, Options& options, std::vector<std::string>& commands) {
  app.add_option("--tool", commands, "Start COMMAND as a tool; may be given several times")
      ->type_name("COMMAND")
      ->allow_extra_args(false);
  app.add_option("--trace", options.traceFile,
                 "Write each frame as one line to FILE, - for standard output")
      ->type_name("FILE");
  app.add_option("--charset", options.charset,
                 "Character set of the tools; the window's is ISO-8859-1")
      ->type_name("NAME");
  app.add_flag("--join-text", options.joinsTexts,
               "Send texts that wait for a busy window as one message");
  app.add_flag("--keep-buttons", options.keepsButtons,
               "Copy the button file of each opened system to nelkv.btn~");
  app.add_flag("--restart-tester", options.restartsTester,
               "Offer to start a tester again that has ended or does not answer");
  app.add_option("--patience", options.patienceSeconds,
                 "Take a tester for hung after so many seconds without an answer, 0 for never")
      ->type_name("SECONDS")
      ->check(CLI::Range(0, 1'000'000))
      ->capture_default_str();
}

/// The tools' commands cut into words, and the rest as far as it can be judged by itself.
CommandLine checked(Options options, const std::vector<std::string>& commands) {
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

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
  try {
    CLI::App app(kDescription, "nelmpm");
    app.footer(kFooter);
    Options options;
    std::vector<std::string> commands;
    addOptions(app, options, commands);
    app.set_version_flag("--version", std::string("nelmpm ") + kProductVersion);
    try {
      app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
      return {std::nullopt, kExitOrderly, app.help()};
    } catch (const CLI::CallForVersion& version) {
      return {std::nullopt, kExitOrderly, std::string(version.what()) + "\n"};
    }
    return checked(std::move(options), commands);
  } catch (const CLI::Error& error) {
    return usageError(error.what());
  }
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
