#include "launcher/launch.h"

#include "support/version.h"
#include "usage.h"

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
    "Words behind -- go to the window, nelkvui.\n"
    "What is kept stands in $XDG_STATE_HOME/korvane (~/.local/state/korvane). A copy of each "
    "button\n"
    "file that the window opens is kept beside that file, as nelkv.btn~.\n"
    "\n"
    "Examples: korvane\n"
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
    app.parse(static_cast<int>(end - argv), argv);
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
  if (stateHome != nullptr && stateHome[0] == '/') {
    return std::string(stateHome) + "/korvane";
  }
  return home != nullptr && home[0] == '/' ? std::string(home) + "/.local/state/korvane" : "";
}

std::vector<std::string> postmasterWords(const Options& options, const std::string& stateFolder) {
  const bool isReplay = !options.replay.empty();
  const auto fileOf = [&](const std::optional<std::string>& named, const char* usual) {
    if (named) {
      return *named;
    }
    const bool isKept = !options.keepsNothing && !stateFolder.empty() && !isReplay;
    return isKept ? stateFolder + "/" + usual : std::string();
  };
  std::vector<std::string> words = {"nelmpm"};
  addOption(words, "--transcript", fileOf(options.transcript, "transcript.txt"));
  addOption(words, "--record", fileOf(options.recording, "recording.txt"));
  addOption(words, "--history", fileOf(options.history, "history.txt"));
  addOption(words, "--trace", options.trace);
  addOption(words, "--charset", options.charset == "none" ? "" : options.charset);
  words.insert(words.end(), {"--join-text", "--keep-buttons"});
  if (isReplay) {
    addOption(words, "--replay", options.replay);
    addOption(words, "--speed", options.speed);
  } else {
    words.push_back("--restart-tester");
    addOption(words, "--tool", options.tester);
    addOption(words, "--tool", "nel-help");  // a replay plays its part, too
  }
  std::vector<std::string> window = {"nelkvui"};
  window.insert(window.end(), options.windowWords.begin(), options.windowWords.end());
  addOption(words, "--tool", quoteCommand(window));
  return words;
}

}  // namespace launcher
