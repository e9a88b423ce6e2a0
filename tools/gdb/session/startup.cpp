#include "gdb/session/startup.h"

#include <elf.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <system_error>

#include "gdb/words/texts.h"
#include "tester_link/button_folder.h"

namespace gdb {

namespace {

namespace fs = std::filesystem;

constexpr char kOwnProgram[] = "/proc/self/exe";

/// The machine that an ELF file is for; nothing for another file.
std::optional<std::array<unsigned char, 3>> machineOf(const std::string& file) {
  std::error_code error;
  std::array<char, sizeof(Elf32_Ehdr)> header{};
  // A pipe or a device could hold up the tester.
  if (!fs::is_regular_file(file, error) ||
      !std::ifstream(file, std::ios::binary).read(header.data(), header.size()) ||
      std::memcmp(header.data(), ELFMAG, SELFMAG) != 0) {
    return std::nullopt;
  }
  constexpr std::size_t kMachine = offsetof(Elf32_Ehdr, e_machine);
  return std::array{static_cast<unsigned char>(header[EI_DATA]),
                    static_cast<unsigned char>(header[kMachine]),
                    static_cast<unsigned char>(header[kMachine + 1])};
}

/// An argument as the shell that starts the program takes it.
std::string shellWord(const std::string& word) {
  constexpr char kPlain[] =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=./:,@%";
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) {
    return word;
  }
  std::string quoted = "'";
  for (const char c : word) {
    quoted += c == '\'' ? "'\\''" : std::string(1, c);
  }
  return quoted + '\'';
}

/// A file's name as GDB's commands take it.
std::string fileWord(const std::string& name) {
  return name.find_first_of(" \t\"'\\") == std::string::npos ? name : quotedFile(name);
}

std::string variableSetting(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "unset environment " + std::string(name)
                          : "set environment " + std::string(name) + " = " + value;
}

void addSerial(std::vector<std::string>& commands, const std::string& serial) {
  const std::size_t colon = serial.rfind(':');
  const std::string baud = colon == std::string::npos ? "" : serial.substr(colon + 1);
  const bool hasBaud = !baud.empty() && baud.find_first_not_of("0123456789") == std::string::npos;
  if (hasBaud) {
    commands.push_back("set serial baud " + baud);
  }
  commands.push_back("target remote " + (hasBaud ? serial.substr(0, colon) : serial));
}

}  // namespace

std::vector<std::string> settingsFor(const std::string& programTerminal) {
  return {"-gdb-set width 0", "-gdb-set height 0", "-gdb-set pagination off",
          "-gdb-set editing off", "-gdb-set style enabled off",
          // A port where nobody listens would hold GDB up for many seconds.
          "-gdb-set tcp auto-retry off", "-inferior-tty-set " + programTerminal,
          // What GDB adds for its console, and what was changed for GDB alone.
          "unset environment LINES", "unset environment COLUMNS", variableSetting("LC_ALL"),
          variableSetting("LANGUAGE"), variableSetting("PS2")};
}

std::string frameSettingFor(const std::string& command) {
  std::istringstream words(command);
  for (std::string word; words >> word;) {
    for (const std::string_view list : {"bt", "backtrace", "where", "stack", "threads"}) {
      if (word == list) {
        return "-gdb-set print frame-info auto";
      }
    }
  }
  return "-gdb-set print frame-info source-and-location";
}

std::vector<std::string> firstCommands(const Options& options) {
  std::vector<std::string> commands;
  if (!options.program.empty()) {
    commands.push_back("file " + fileWord(options.program));
  }
  if (!options.arguments.empty()) {
    std::string setting = "set args";
    for (const std::string& argument : options.arguments) {
      setting += ' ' + shellWord(argument);
    }
    commands.push_back(setting);
  }
  if (!options.core.empty()) {
    commands.push_back("core-file " + fileWord(options.core));
  }
  if (!options.pid.empty()) {
    commands.push_back("attach " + options.pid);
  }
  if (!options.remote.empty()) {
    commands.push_back("target remote " + options.remote);
  }
  if (!options.serial.empty()) {
    addSerial(commands, options.serial);
  }
  for (const std::string& file : options.commandFiles) {
    commands.push_back("source " + file);
  }
  return commands;
}

std::string debuggerFor(const Options& options, const std::string& program) {
  if (!options.debugger.empty()) {
    return options.debugger;
  }
  const auto machine = machineOf(program);
  return machine && machine != machineOf(kOwnProgram) ? "gdb-multiarch" : "gdb";
}

std::string buttonFolder(const Options& options, const std::string& program) {
  for (const fs::path& folder : {fs::path(options.buttons), fs::path(program).parent_path()}) {
    if (!folder.empty() && tester_link::hasButtons(folder)) {
      return folder.string();
    }
  }
  return {};
}

}  // namespace gdb
