// Measures the start of an X program: the time from its exec until its window is drawn, its memory
// and the processor time that it takes when nothing happens. Prints one line, numbers separated by
// blanks: milliseconds, resident kilobytes, percent of a processor.
//
//   startup_probe TITLE PROCESS COMMAND [ARGUMENT...]
//
// The window is the first viewable one whose title begins with TITLE. It counts as drawn at the
// first look at which it showed what it still shows, unchanged, a while later, more than one colour
// of it. PROCESS is the name of the process to weigh: the command itself or one that it starts.

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using namespace std::chrono_literals;

constexpr auto kLookEvery = 3ms;
constexpr auto kQuietTime = 300ms;  // shorter than a text cursor blinks
constexpr auto kIdleTime = 2s;
constexpr auto kPatience = 30s;
constexpr auto kEndTime = 2s;
constexpr auto kSignalEvery = 100ms;
constexpr int kTitleDepth = 4;
constexpr int kCannotStart = 127;

/// A program started in a process group of its own, which ends with this object.
class Started {
 public:
  explicit Started(char** command) : processId(fork()) {
    if (processId == 0) {
      setpgid(0, 0);
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      execvp(command[0], command);
      std::perror(command[0]);
      _exit(kCannotStart);
    }
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;
  ~Started() {
    // A program that would ask its user first takes several signals for impatience.
    for (const auto end = Clock::now() + kEndTime; Clock::now() < end && isRunning();) {
      kill(-processId, SIGTERM);
      std::this_thread::sleep_for(kSignalEvery);
    }
    kill(-processId, SIGKILL);
  }

  pid_t id() const { return processId; }
  bool isRunning() const { return waitpid(processId, nullptr, WNOHANG) == 0; }

 private:
  pid_t processId;
};

struct XDeleter {
  void operator()(void* memory) const { XFree(memory); }
};

struct ImageDeleter {
  void operator()(XImage* image) const { XDestroyImage(image); }
};

/// What a window shows, in short.
struct Look {
  std::uint64_t digest = 0;
  bool isBlank = true;
};

class Watcher {
 public:
  explicit Watcher(Display* connection) : display(connection) {}

  Window find(std::string_view title) const {
    return findBelow(DefaultRootWindow(display), title, kTitleDepth);
  }

  Look look(Window window) const {
    Look result;
    XWindowAttributes attributes = {};
    if (XGetWindowAttributes(display, window, &attributes) == 0) {
      return result;
    }
    // Pixels of the windows inside belong to the picture.
    const std::unique_ptr<XImage, ImageDeleter> image(
        XGetImage(display, window, 0, 0, static_cast<unsigned>(attributes.width),
                  static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap));
    if (image != nullptr) {
      digestOf(*image, result);
    }
    return result;
  }

 private:
  static void digestOf(const XImage& image, Look& result) {
    constexpr std::uint64_t kStart = 14695981039346656037U;
    constexpr std::uint64_t kPrime = 1099511628211U;
    const auto bytes =
        static_cast<std::size_t>(image.bytes_per_line) * static_cast<std::size_t>(image.height);
    const std::span<const char> data(image.data, bytes - bytes % sizeof(std::uint32_t));
    const std::span words(reinterpret_cast<const std::uint32_t*>(data.data()),
                          data.size() / sizeof(std::uint32_t));
    result.digest = kStart;
    for (const std::uint32_t word : words) {
      result.digest = (result.digest ^ word) * kPrime;
      result.isBlank = result.isBlank && word == words.front();
    }
  }

  bool isWanted(Window window, std::string_view title) const {
    char* name = nullptr;
    if (XFetchName(display, window, &name) == 0) {
      return false;
    }
    const std::unique_ptr<char, XDeleter> owned(name);
    XWindowAttributes attributes = {};
    return std::string_view(name).starts_with(title) &&
           XGetWindowAttributes(display, window, &attributes) != 0 &&
           attributes.map_state == IsViewable;
  }

  Window findBelow(Window parent, std::string_view title, int depth) const {
    Window root = None;
    Window above = None;
    Window* children = nullptr;
    unsigned count = 0;
    if (depth == 0 || XQueryTree(display, parent, &root, &above, &children, &count) == 0) {
      return None;
    }
    const std::unique_ptr<Window, XDeleter> owned(children);
    for (const Window child : std::span<const Window>(children, count)) {
      const Window found = isWanted(child, title) ? child : findBelow(child, title, depth - 1);
      if (found != None) {
        return found;
      }
    }
    return None;
  }

  Display* display;
};

/// The moment at which the window showed what it goes on showing; nothing when it never came.
std::optional<Clock::time_point> awaitDrawn(const Watcher& watcher, std::string_view title,
                                            const Started& program) {
  std::uint64_t last = 0;
  Clock::time_point changed = Clock::now();
  Window window = None;
  bool isBlank = true;
  for (const auto end = Clock::now() + kPatience; Clock::now() < end && program.isRunning();) {
    window = window == None ? watcher.find(title) : window;
    if (window != None) {
      const Look look = watcher.look(window);
      const auto now = Clock::now();
      isBlank = look.isBlank;
      if (look.digest != last) {
        last = look.digest;
        changed = now;
      } else if (!isBlank && now - changed > kQuietTime) {
        return changed;
      }
    }
    std::this_thread::sleep_for(kLookEvery);
  }
  return std::nullopt;
}

std::string firstLine(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  return line;
}

/// The fields of /proc/PID/stat behind the name, which may hold blanks itself.
std::vector<std::string> statFields(pid_t process) {
  const std::string line = firstLine("/proc/" + std::to_string(process) + "/stat");
  std::istringstream rest(line.substr(std::min(line.size(), line.rfind(')') + 1)));
  std::vector<std::string> fields;
  for (std::string field; rest >> field;) {
    fields.push_back(field);
  }
  return fields;
}

enum StatField : std::size_t { kParent = 1, kUserTime = 11, kSystemTime = 12 };

long statNumber(pid_t process, StatField field) {
  const std::vector<std::string> fields = statFields(process);
  return field < fields.size() ? std::atol(fields[field].c_str()) : 0;
}

std::vector<pid_t> allProcesses() {
  std::vector<pid_t> result;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const pid_t id = std::atoi(entry.path().filename().c_str());
    if (id > 0) {
      result.push_back(id);
    }
  }
  return result;
}

/// The process of that name among `first` and all that descend from it; 0 when there is none.
pid_t findProcess(pid_t first, const std::string& name) {
  std::set<pid_t> family = {first};
  for (std::size_t known = 0; known != family.size();) {
    known = family.size();
    for (const pid_t process : allProcesses()) {
      if (family.contains(static_cast<pid_t>(statNumber(process, kParent)))) {
        family.insert(process);
      }
    }
  }
  for (const pid_t process : family) {
    if (firstLine("/proc/" + std::to_string(process) + "/comm") == name) {
      return process;
    }
  }
  return 0;
}

long residentKilobytes(pid_t process) {
  std::ifstream in("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with("VmRSS:")) {
      return std::atol(line.c_str() + line.find(':') + 1);
    }
  }
  return 0;
}

double processorSeconds(pid_t process) {
  return static_cast<double>(statNumber(process, kUserTime) + statNumber(process, kSystemTime)) /
         static_cast<double>(sysconf(_SC_CLK_TCK));
}

/// Percent of a processor that the process takes when left alone.
double idlePercent(pid_t process) {
  const double before = processorSeconds(process);
  const auto start = Clock::now();
  std::this_thread::sleep_for(kIdleTime);
  const std::chrono::duration<double> passed = Clock::now() - start;
  return 100.0 * (processorSeconds(process) - before) / passed.count();
}

int ignoreXError(Display* /*display*/, XErrorEvent* /*error*/) {
  return 0;  // windows come and go while they are looked at
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int kFirstWord = 3;
  if (argc <= kFirstWord) {
    std::cerr << "usage: startup_probe TITLE PROCESS COMMAND [ARGUMENT...]\n";
    return EXIT_FAILURE;
  }
  const std::unique_ptr<Display, decltype(&XCloseDisplay)> display(XOpenDisplay(nullptr),
                                                                   &XCloseDisplay);
  if (display == nullptr) {
    std::cerr << "startup_probe: no display\n";
    return EXIT_FAILURE;
  }
  XSetErrorHandler(ignoreXError);

  const auto start = Clock::now();
  const Started program(argv + kFirstWord);
  const auto drawn = awaitDrawn(Watcher(display.get()), argv[1], program);
  const pid_t process = drawn ? findProcess(program.id(), argv[2]) : 0;
  if (process == 0) {
    std::cerr << "startup_probe: no "
              << (drawn ? std::string("process ") + argv[2] : std::string("window ") + argv[1])
              << "\n";
    return EXIT_FAILURE;
  }
  const long resident = residentKilobytes(process);
  std::printf("%.1f %ld %.2f\n", Milliseconds(*drawn - start).count(), resident,
              idlePercent(process));
  return EXIT_SUCCESS;
}
