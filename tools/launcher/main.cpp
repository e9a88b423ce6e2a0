// Entry of the launcher. It looks at what can be looked at before anything runs, and then becomes
// the Postmaster: one process the less that could be killed or left behind.

#include "gdb/session/startup.h"
#include "launcher/launch.h"
#include "postmaster/options.h"
#include "postmaster/processes.h"

#include <unistd.h>
#include <X11/Xlib.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

int fail(const std::string& why) {
  std::cerr << "korvane: " << why << '\n';
  return launcher::kExitFailure;
}

fs::path ownFolder() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).parent_path();
}

std::optional<std::string> find(const std::string& program) {
  const char* path = std::getenv("PATH");
  return postmaster::findProgram(program, ownFolder().string(),
                                 path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin");
}

// An empty text when there is a display to open.
std::string displayFault() {
  const char* name = std::getenv("DISPLAY");
  if (name == nullptr || *name == '\0') {
    return "there is no display: DISPLAY is not set";
  }
  Display* display = XOpenDisplay(nullptr);
  if (display == nullptr) {
    return std::string("cannot open the display ") + name;
  }
  XCloseDisplay(display);
  return {};
}

// The window looks for its resources below $nelwerk, if XAPPLRESDIR does not say where they are.
void offerResources() {
  std::error_code error;
  const fs::path installed = (ownFolder() / NEL_SYSCONF_FROM_BIN).lexically_normal();
  if (fs::exists(installed / "X11" / "app-defaults" / "NEL2", error)) {
    setenv("nelwerk", installed.c_str(), 0);
  }
}

// Nobody else is to read what a user types. An empty text when the folder is there.
std::string folderFault(const std::string& folder) {
  std::error_code error;
  fs::create_directories(fs::path(folder).parent_path(), error);
  if (!error && fs::create_directory(folder, error)) {
    fs::permissions(folder, fs::perms::owner_all, error);
  }
  return error ? "cannot make the folder " + folder + ": " + error.message() : "";
}

// An empty text when GDB and the program are there.
std::string debuggerFault(const std::string& program) {
  if (!program.empty() && access(program.c_str(), R_OK) != 0) {
    return "cannot read " + program + ": " + std::strerror(errno);
  }
  const std::string debugger = gdb::debuggerFor({}, program);
  return find(debugger) ? "" : "there is no GDB: install the package " + debugger;
}

std::string testerFault(const std::string& command) {
  const postmaster::SplitCommand split = postmaster::splitCommand(command);
  if (!split.fault.empty()) {
    return "--tester '" + command + "' is no command: " + split.fault;
  }
  return find(split.words.front()) ? "" : "cannot find the tester " + split.words.front();
}

// Where the session's files go; an empty text when they are not kept.
std::string stateFolder(const launcher::Options& options) {
  const std::string folder =
      launcher::stateFolderOf(std::getenv("XDG_STATE_HOME"), std::getenv("HOME"));
  if (options.keepsNothing || folder.empty()) {
    return {};
  }
  const std::string why = folderFault(folder);
  if (!why.empty()) {
    fail(why + "; transcript, recording and history are not kept");
  }
  return why.empty() ? folder : std::string();
}

// An empty text when all that can be looked at before the start is there.
std::string faultOf(const launcher::Options& options) {
  std::string why = options.replay.empty() ? testerFault(options.tester) : "";
  if (why.empty() && options.usesDebugger) {
    why = debuggerFault(options.program);
  }
  return why.empty() ? displayFault() : why;
}

int becomePostmaster(const std::vector<std::string>& words) {
  const std::optional<std::string> program = find(words.front());
  if (!program) {
    return fail("cannot find the Postmaster " + words.front());
  }
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) {
    arguments.push_back(const_cast<char*>(word.c_str()));
  }
  arguments.push_back(nullptr);
  execv(program->c_str(), arguments.data());
  return fail("cannot start " + *program + ": " + std::strerror(errno));
}

}  // namespace

int main(int argc, char** argv) {
  const launcher::CommandLine line = launcher::parseCommandLine(argc, argv);
  if (!line.options) {
    (line.status == 0 ? std::cout : std::cerr) << line.text;
    return line.status;
  }
  if (const std::string why = faultOf(*line.options); !why.empty()) {
    return fail(why);
  }
  offerResources();
  return becomePostmaster(launcher::postmasterWords(*line.options, stateFolder(*line.options)));
}
