// A run is known by "*running" alone: a command that starts one answers in more than one way, or
// not at all. It ends by "*stopped", or by the end of the last process, which comes without.

#include "gdb/session/target_watch.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <sstream>

#include "support/text.h"

namespace gdb {

namespace {

/// Statuses up to here look the same in decimal as in GDB's octal digits.
constexpr int kLastPlainStatus = 7;

/// "main at main.c:12"; less when GDB knows less.
std::string frameText(const mi::Value& frame) {
  std::string text = frame["func"].string();
  if (text.empty()) {
    text = frame["addr"].string();
  }
  if (frame.has("file")) {
    text += " at " + std::filesystem::path(frame["file"].string()).filename().string() + ':' +
            frame["line"].string();
  }
  return text;
}

std::optional<int> octalNumber(const std::string& digits) {
  int number = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, 8);
  return error == std::errc() && end == digits.data() + digits.size() ? std::optional(number)
                                                                      : std::nullopt;
}

/// What stands before the description of a connection. The column is as wide as its longest text,
/// so that a single blank may part them.
std::string addressOf(const std::string& columns) {
  constexpr std::string_view kDescriptions[] = {" Extended remote ", " Remote ", "  "};
  std::string address = columns;
  for (const std::string_view description : kDescriptions) {
    address = address.substr(0, address.find(description));
  }
  return address;
}

}  // namespace

void TargetWatch::take(const mi::Record& record) {
  const std::string& name = record.name;
  const mi::Value& results = record.results;
  if (name == "running") {
    present.state = Target::State::kRunning;
  } else if (name == "stopped") {
    takeStop(results);
  } else if (name == "thread-selected") {
    present.thread = results["id"].string();
    present.frame = frameText(results["frame"]);
  } else if (name == "thread-group-started") {
    groups[results["id"].string()] = results["pid"].string();
    present.state = Target::State::kStopped;
    present.frame.clear();
    present.signal.clear();
  } else if (name == "thread-group-exited") {
    takeExit(results);
  } else if (name.starts_with("breakpoint-")) {
    haveBreakpointsChanged = true;
  }
}

void TargetWatch::takeStop(const mi::Value& results) {
  if (groups.empty() && !results.has("frame")) {
    present.state = Target::State::kNone;
    return;
  }
  present.state = Target::State::kStopped;
  present.frame = frameText(results["frame"]);
  if (results.has("thread-id")) {
    present.thread = results["thread-id"].string();
  }
  present.signal = results["signal-name"].string();
}

void TargetWatch::takeExit(const mi::Value& results) {
  groups.erase(results["id"].string());
  const std::optional<int> status = octalNumber(results["exit-code"].string());
  if (status.value_or(0) > kLastPlainStatus) {
    notes.push_back("The program ended with status " + std::to_string(*status) + '.');
  }
  if (groups.empty()) {
    forgetProcess();
  }
}

void TargetWatch::forgetProcess() {
  groups.clear();
  present.state = Target::State::kNone;
  present.frame.clear();
  present.thread.clear();
  present.signal.clear();
}

void TargetWatch::takeGroups(const mi::Record& record) {
  if (record.name != "done") {
    return;
  }
  groups.clear();
  std::string program;
  for (const auto& [name, group] : record.results["groups"].elements()) {
    if (group.has("pid")) {
      groups[group["id"].string()] = group["pid"].string();
    }
    if (program.empty()) {
      program = group["executable"].string();
    }
  }
  present.program = program;
  if (groups.empty()) {
    forgetProcess();
  } else if (present.state == Target::State::kNone) {
    present.state = Target::State::kStopped;
  }
}

void TargetWatch::takeConnections(const mi::Record& record) {
  constexpr std::string_view kRemoteKinds[] = {"remote ", "extended-remote "};
  present.remote.clear();
  std::istringstream lines(record.text);
  for (std::string line; std::getline(lines, line);) {
    // "* 1    remote localhost:1234 Remote target using gdb-specific protocol"
    const bool isPresent = line.starts_with('*');
    for (const std::string_view kind : kRemoteKinds) {
      const std::size_t at = line.find(' ' + std::string(kind));
      if (isPresent && at != std::string::npos) {
        present.remote = addressOf(line.substr(at + 1 + kind.size()));
      }
    }
  }
}

void TargetWatch::takeFrame(const mi::Record& record) {
  if (present.state == Target::State::kStopped && present.frame.empty()) {
    present.frame = frameText(record.results["frame"]);
  }
}

std::vector<std::string> TargetWatch::processes() const {
  std::vector<std::string> numbers;
  for (const auto& [group, number] : groups) {
    numbers.push_back(number);
  }
  return numbers;
}

std::string TargetWatch::title() const {
  const std::string program = present.program.empty()
                                  ? present.remote
                                  : std::filesystem::path(present.program).filename().string();
  std::string text = program.empty() ? "no program" : program;
  switch (present.state) {
    case Target::State::kNone:
      break;
    case Target::State::kStopped:
      text += present.frame.empty() ? ": stopped" : ": stopped in " + present.frame;
      break;
    case Target::State::kRunning:
      text += ": running";
      break;
  }
  return text;
}

}  // namespace gdb
