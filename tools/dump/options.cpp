#include "dump/options.h"

#include "link/tool_message.h"
#include "support/version.h"
#include "usage.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <vector>

namespace dump {

namespace {

constexpr char kDescription[] =
    "Shows the frames of a recording (nelmpm --record) as text, one line each, or some of them. "
    "Filters the lines of a trace (nelmpm --trace) likewise.";

constexpr char kFooter[] =
    "Several --name, and several --tool, mean any of them.\n"
    "\n"
    "Example: nel-dump --tool NELKVUI --name MSG_UI_COMMAND session.rec\n"
    "\n"
    "Exit status: 0 when all was read, 1 when lines were damaged or the file could not be read,\n"
    "2 for a wrong command line.";

/// No recording is longer, and no time overflows.
constexpr double kMaxSeconds = 1e9;

/// As they stand in the command line.
struct Words {
  std::vector<std::string> names;
  std::vector<std::string> tools;
  std::optional<double> from;
  std::optional<double> to;
};

CommandLine usageError(const std::string& what) {
  return {std::nullopt, kExitUsage, usageFault("nel-dump", what) + "\n"};
}

/// Adds the number of the message that `name` or a number stands for; whether there is one.
bool addTags(const std::string& name, std::set<int>& tags) {
  int number = 0;
  const char* const end = name.data() + name.size();
  const auto [stop, error] = std::from_chars(name.data(), end, number);
  if (error == std::errc() && stop == end) {
    tags.insert(number);
    return true;
  }
  for (const MessageRow& row : messageTable()) {
    if (row.name == name) {
      tags.insert(row.tag);
      return true;
    }
  }
  return false;
}

bool isTool(const std::string& name) {
  constexpr int kLastType = 15;
  for (int type = 0; type <= kLastType; ++type) {
    const char* known = toolTypeName(type);
    if (known != nullptr && known == name) {
      return true;
    }
  }
  return false;
}

/// Whether `seconds` is a time; stores it.
bool readSeconds(const std::optional<double>& seconds, std::chrono::milliseconds& time) {
  if (!seconds) {
    return true;
  }
  if (!(*seconds >= 0 && *seconds <= kMaxSeconds)) {
    return false;
  }
  time = std::chrono::milliseconds(std::llround(*seconds * 1000));
  return true;
}

CommandLine toOptions(Options options, const Words& words) {
  for (const std::string& name : words.names) {
    if (!addTags(name, options.tags)) {
      return usageError("--name: no message is called '" + name + "'");
    }
  }
  for (const std::string& tool : words.tools) {
    if (!isTool(tool)) {
      return usageError("--tool: no tool is called '" + tool + "'");
    }
    options.tools.insert(tool);
  }
  if (!readSeconds(words.from, options.from) || !readSeconds(words.to, options.to)) {
    return usageError("--from and --to take seconds from 0 to 1000000000");
  }
  if (options.from > options.to) {
    return usageError("--from is later than --to");
  }
  return {std::move(options), kExitGood, {}};
}

void addOptions(CLI::App& app, Options& options, Words& words) {
  app.add_option("FILE", options.file, "Recording or trace; - for standard input, the default")
      ->type_name("");
  app.add_option("--name", words.names, "Only messages of this name or number")
      ->type_name("MESSAGE")
      ->allow_extra_args(false);
  app.add_option("--tool", words.tools, "Only what this tool sent or received, such as NELKV")
      ->type_name("TOOL")
      ->allow_extra_args(false);
  app.add_option("--from", words.from, "Only what came so long after the start, or later")
      ->type_name("SECONDS");
  app.add_option("--to", words.to, "Only what came so long after the start, or earlier")
      ->type_name("SECONDS");
  app.add_flag("--dates", options.showDates,
               "Show date and time as a trace does, not seconds since the start");
  app.add_flag("--full", options.showFull, "Show long texts and lists to their end");
  app.set_version_flag("--version", std::string("nel-dump ") + kProductVersion);
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
  try {
    CLI::App app(kDescription, "nel-dump");
    app.footer(kFooter);
    Options options;
    Words words;
    addOptions(app, options, words);
    try {
      app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
      return {std::nullopt, kExitGood, app.help()};
    } catch (const CLI::CallForVersion& version) {
      return {std::nullopt, kExitGood, std::string(version.what()) + "\n"};
    }
    return toOptions(std::move(options), words);
  } catch (const CLI::Error& error) {
    return usageError(error.what());
  }
}

}  // namespace dump
