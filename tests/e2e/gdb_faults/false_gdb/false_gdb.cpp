// What nelgdb takes for GDB in its tests: it has GDB's terminals and signals, and does what a
// script says. A line of the script, whose file NELGDB_TEST_SCRIPT names, is one of these:
//
//   expect console TEXT     goes on when a line that begins so came on the console
//   expect mi TEXT          goes on when a command that begins so came on the machine interface
//   expect interrupt        goes on when SIGINT came
//   answer NAME TEXT        has queries of that name answered so from now on, without escapes
//   send WHERE TEXT         writes TEXT at once; WHERE is "console" or "mi"
//   flood WHERE N TEXT      writes TEXT N times
//   die N                   ends with status N
//   hang                    does nothing any more, whatever comes
//   old                     knows no second interface; only as the first line
//
// A text has the escapes of a C string; "%P" in it is the present prompt, "%T" the token of the
// command that was expected last, "%I" the process's id. What comes and is not expected is answered
// as by a GDB that has nothing to say.

#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "gdb/mi/reader.h"

namespace {

void replaceAll(std::string& text, std::string_view what, const std::string& by) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
    text.replace(at, what.size(), by);
  }
}

/// One of GDB's terminals.
class Terminal {
 public:
  explicit Terminal(int opened) : fd(opened) {}

  int descriptor() const { return fd; }

  void write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t count = ::write(fd, bytes.data(), bytes.size());
      if (count <= 0) {
        std::_Exit(0);  // as GDB, when its terminal goes
      }
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }

  void read() {
    char bytes[4096];
    const ssize_t count = ::read(fd, bytes, sizeof bytes);
    if (count <= 0) {
      std::_Exit(0);
    }
    held.append(bytes, static_cast<std::size_t>(count));
  }

  std::optional<std::string> nextLine() {
    const std::size_t end = held.find('\n');
    if (end == std::string::npos) {
      return std::nullopt;
    }
    std::string line = held.substr(0, end);
    held.erase(0, end + 1);
    return line;
  }

 private:
  int fd;
  std::string held;
};

class FalseGdb {
 public:
  FalseGdb(int interface, std::deque<std::string> lines)
      : script(std::move(lines)), machine(interface) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    interrupts = signalfd(-1, &signals, SFD_CLOEXEC);
    console.write("New UI allocated\n");
    machine.write("=thread-group-added,id=\"i1\"\n(gdb) \n");
  }

  [[noreturn]] void run() {
    for (;;) {
      if (!script.empty() && !script.front().starts_with("expect ")) {
        const std::string line = script.front();
        script.pop_front();
        act(line);
      } else if (const auto query = machine.nextLine()) {
        takeQuery(*query);
      } else if (const auto command = console.nextLine()) {
        if (!isExpected("console", *command)) {
          console.write("Did " + *command + ".\n" + prompt);
        }
      } else {
        waitForNews();
      }
    }
  }

 private:
  void act(const std::string& line) {
    std::istringstream words(line);
    std::string verb;
    std::string where;
    words >> verb >> where;
    if (verb == "die") {
      std::_Exit(std::stoi(where));
    } else if (verb == "hang") {
      sigset_t all;
      sigfillset(&all);
      sigprocmask(SIG_BLOCK, &all, nullptr);
      pause();
    }
    int count = 1;
    if (verb == "flood") {
      words >> count;
    }
    std::string escaped;
    std::getline(words.ignore(), escaped);
    if (verb == "answer") {
      answers[where] = escaped;
      return;
    }
    const Terminal& terminal = where == "mi" ? machine : console;
    const std::string text = textOf(escaped);
    for (int i = 0; i < count; ++i) {
      terminal.write(text);
    }
  }

  std::string textOf(const std::string& escaped) const {
    std::string text = gdb::mi::readLine("~\"" + escaped + "\"").text;
    replaceAll(text, "%P", prompt);
    replaceAll(text, "%T", token);
    replaceAll(text, "%I", std::to_string(getpid()));
    return text;
  }

  /// Whether that is what the script waits for; then it goes on.
  bool isExpected(const std::string& where, const std::string& text) {
    const std::string awaited = "expect " + where;
    const bool isIt = !script.empty() && script.front().starts_with(awaited) &&
                      (awaited + ' ' + text).starts_with(script.front());
    if (isIt) {
      script.pop_front();
    }
    return isIt;
  }

  void takeQuery(const std::string& line) {
    const std::size_t end = std::min(line.find_first_not_of("0123456789"), line.size());
    const std::string query = line.substr(end);
    const std::string name = query.substr(0, query.find(' '));
    if (query.starts_with("-gdb-set prompt ")) {
      prompt = query.substr(query.rfind(' ') + 1);
    }
    if (isExpected("mi", query)) {
      token = line.substr(0, end);
      return;
    }
    const bool isEnd = name == "-gdb-exit";
    const std::string result = isEnd ? "^exit" : answers.try_emplace(name, "^done").first->second;
    machine.write(line.substr(0, end) + result + "\n(gdb) \n");
    if (isEnd) {
      std::_Exit(0);
    }
  }

  void waitForNews() {
    pollfd ready[] = {{console.descriptor(), POLLIN, 0},
                      {machine.descriptor(), POLLIN, 0},
                      {interrupts, POLLIN, 0}};
    poll(ready, 3, -1);
    signalfd_siginfo news{};
    if (ready[0].revents != 0) {
      console.read();
    }
    if (ready[1].revents != 0) {
      machine.read();
    }
    if (ready[2].revents != 0 && read(interrupts, &news, sizeof news) > 0 &&
        !isExpected("interrupt", "")) {
      console.write("Quit\n" + prompt);
    }
  }

  std::deque<std::string> script;
  Terminal console{STDIN_FILENO};
  Terminal machine;
  std::map<std::string, std::string> answers;  ///< by names of queries
  int interrupts = -1;
  std::string prompt;
  std::string token;  ///< of the query that was expected last
};

std::deque<std::string> readScript() {
  const char* name = std::getenv("NELGDB_TEST_SCRIPT");
  std::ifstream file(name == nullptr ? "" : name);
  std::deque<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

int main(int argc, char** argv) {
  const std::deque<std::string> script = readScript();
  const std::string_view newInterface = "new-ui mi3 ";
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument.starts_with(newInterface)) {
      if (!script.empty() && script.front() == "old") {
        Terminal(STDIN_FILENO).write("Undefined command: \"new-ui\".  Try \"help\".\n");
        pause();
      }
      FalseGdb(open(argument.substr(newInterface.size()).c_str(), O_RDWR | O_CLOEXEC), script)
          .run();
    }
  }
  return EXIT_FAILURE;
}
