// Entry of the launcher. It looks at what can be looked at before anything runs, and then becomes
// the Postmaster: one process the less that could be killed or left behind.

#include "gdb/session/startup.h"
#include "launcher/files.h"
#include "launcher/launch.h"
#include "postmaster/options.h"
#include "postmaster/processes.h"
#include "support/descriptor.h"

#include <fcntl.h>
#include <sys/file.h>
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

std::string writeFault(const std::string& path) {
  const bool isUsable = access(path.c_str(), W_OK) == 0 || errno == ENOENT;
  return isUsable ? "" : "cannot write to " + path + ": " + std::strerror(errno);
}

// Nobody else is to read what a user types. An empty text when the folder is there and may be
// written, and what stands in it: another user may have made it, as root does for one who tries.
std::string folderFault(const std::string& folder) {
  std::error_code error;
  fs::create_directories(fs::path(folder).parent_path(), error);
  if (!error && fs::create_directory(folder, error)) {
    fs::permissions(folder, fs::perms::owner_all, error);
  }
  std::string why = error ? "cannot make the folder " + folder + ": " + error.message() : "";
  for (const char* name : {"", launcher::kTranscript, launcher::kRecording, launcher::kHistory}) {
    why = why.empty() ? writeFault((fs::path(folder) / name).string()) : why;
  }
  return why;
}

std::string debuggerFault(const std::string& program) {
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
  if (options.keepsNothing || !options.replay.empty()) {
    return {};
  }
  const std::string folder =
      launcher::stateFolderOf(std::getenv("XDG_STATE_HOME"), std::getenv("HOME"));
  const std::string why =
      folder.empty() ? "neither XDG_STATE_HOME nor HOME names a folder" : folderFault(folder);
  if (!why.empty()) {
    fail(why + "; transcript, recording and history are not kept");
  }
  return why.empty() ? folder : std::string();
}

bool isWritten(const fs::path& path) {
  const UniqueDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return file.isOpen() && ::flock(file.get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

// That of a session beside which no other one runs has the plain name.
std::string freeRecording(const std::string& folder) {
  std::string name = launcher::kRecording;
  for (int number = 2; isWritten(fs::path(folder) / name); ++number) {
    name = "recording-" + std::to_string(number) + ".txt";
  }
  return name;
}

// An empty text when all that can be looked at before the start is there.
std::string faultOf(const launcher::Options& options) {
  std::string why = options.replay.empty() ? testerFault(options.tester) : "";
  if (why.empty()) {
    why = launcher::fileFault(options);
  }
  if (why.empty() && options.usesDebugger) {
    why = debuggerFault(options.program);
  }
  return why.empty() ? displayFault() : why;
}

// What the Postmaster would say of its command line, in the name of the launcher. The tester's
// command is looked at with the tester, by its option's name here.
std::string usageFaultOf(launcher::Options options) {
  options.tester.clear();
  const std::vector<std::string> words = launcher::postmasterWords(options, "");
  std::vector<const char*> arguments;
  arguments.reserve(words.size());
  for (const std::string& word : words) {
    arguments.push_back(word.c_str());
  }
  return postmaster::parseCommandLine(static_cast<int>(arguments.size()), arguments.data(),
                                      "korvane")
      .text;
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
  if (const std::string why = usageFaultOf(*line.options); !why.empty()) {
    std::cerr << why << '\n';
    return launcher::kExitUsage;
  }
  if (const std::string why = faultOf(*line.options); !why.empty()) {
    return fail(why);
  }
  offerResources();
  const std::string folder = stateFolder(*line.options);
  return becomePostmaster(launcher::postmasterWords(*line.options, folder, freeRecording(folder)));
}
