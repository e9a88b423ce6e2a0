#include "gdb/words/choices.h"

#include <algorithm>
#include <sstream>

#include "gdb/words/texts.h"
#include "support/text.h"

namespace gdb {

namespace {

using mi::Record;
using mi::Value;

constexpr std::string_view kBreak = "break ";

Choice makeChoice(const std::string& item, const std::string& value) {
  return {shownItem(item), value};
}

/// What a breakpoint stands for.
std::string breakpointText(const Value& point) {
  std::string text;
  if (point.has("what")) {
    text = point["type"].string() + ' ' + point["what"].string();
  } else if (point.has("func")) {
    text = placeText(point);
  }
  for (const char* source : {"pending", "original-location", "at", "addr"}) {
    if (text.empty()) {
      text = point[source].string();
    }
  }
  if (point.has("cond")) {
    text += " if " + point["cond"].string();
  }
  return text;
}

template <typename Function>
void forEachLine(const std::string& text, const Function& function) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    function(line);
  }
}

}  // namespace

const std::vector<std::string>& offeredSignals() {
  static const std::vector<std::string> signals = {
      "SIGHUP",  "SIGQUIT", "SIGILL",  "SIGABRT", "SIGBUS",  "SIGFPE", "SIGSEGV",
      "SIGUSR1", "SIGUSR2", "SIGPIPE", "SIGALRM", "SIGTERM", "SIGCHLD"};
  return signals;
}

std::string placeText(const Value& frame) {
  std::string text = frame["func"].string();
  const std::string& file = frame.has("file") ? frame["file"].string() : frame["from"].string();
  if (!file.empty()) {
    text += (text.empty() ? "" : " at ") + std::filesystem::path(file).filename().string();
  }
  if (frame.has("line")) {
    text += ':' + frame["line"].string();
  }
  return text.empty() ? frame["addr"].string() : text;
}

tester_link::Items itemsOf(const Choices& choices) {
  tester_link::Items items;
  for (const Choice& choice : choices) {
    const bool isSeen = std::find(items.begin(), items.end(), choice.item) != items.end();
    items.push_back(isSeen ? choice.item + " #" + std::to_string(items.size() + 1) : choice.item);
  }
  return items;
}

void alignNumbers(Choices& choices) {
  std::size_t width = 0;
  for (const Choice& choice : choices) {
    width = std::max(width, choice.value.size());
  }
  for (Choice& choice : choices) {
    choice.item.insert(0, width - choice.value.size(), ' ');
  }
}

Choices threadChoices(const Record& result) {
  Choices choices;
  forEachLine(result.text, [&choices](const std::string& line) {
    const bool isPresent = line.starts_with('*');
    const auto [number, rest] = splitWord(trimmed(isPresent ? line.substr(1) : line));
    const bool isNumber =
        !number.empty() && number.find_first_not_of("0123456789.") == std::string::npos;
    // A line of source may stand under the present thread, its number at the left edge.
    if (!isNumber || !(isPresent || line.starts_with(' '))) {
      return;
    }
    // The address and number of the system's thread say little and would hide the rest.
    std::string about = trimmed(rest);
    if (about.starts_with("Thread 0x")) {
      about = trimmed(about.substr(std::min(about.find(')'), about.size() - 1) + 1));
    }
    choices.push_back(makeChoice(number + (isPresent ? "* " : "  ") + about, number));
  });
  alignNumbers(choices);
  return choices;
}

Choices frameChoices(const Record& result) {
  Choices choices;
  for (const Value::Element& each : result.results["stack"].elements()) {
    const std::string& level = each.value["level"].string();
    choices.push_back(makeChoice('#' + level + "  " + placeText(each.value), level));
  }
  return choices;
}

Choices breakpointChoices(const Record& result) {
  Choices choices;
  for (const Value::Element& each : result.results["BreakpointTable"]["body"].elements()) {
    const Value& point = each.value;
    const std::string& number = point["number"].string();
    const bool isOn = point["enabled"].string() == "y";
    Choice choice = makeChoice(number + (isOn ? "  on   " : "  off  ") + breakpointText(point) +
                                   (point["disp"].string() == "del" ? " (once)" : ""),
                               number);
    choice.isOn = isOn;
    choices.push_back(choice);
  }
  return choices;
}

Choices signalChoices(const Record& result) {
  Choices choices;
  const std::vector<std::string>& offered = offeredSignals();
  forEachLine(result.text, [&](const std::string& line) {
    std::istringstream columns(line);
    std::string name;
    std::string stop;
    std::string print;
    std::string pass;
    std::string meaning;
    if (columns >> name >> stop >> print >> pass && std::getline(columns, meaning) &&
        std::find(offered.begin(), offered.end(), name) != offered.end()) {
      const bool isOn = stop == "Yes";
      Choice choice =
          makeChoice(name + (isOn ? "  stops  " : "  passes  ") + trimmed(meaning), name);
      choice.isOn = isOn;
      choices.push_back(choice);
    }
  });
  return choices;
}

Choices variableChoices(const Record& result) {
  Choices choices;
  for (const Value::Element& each : result.results["variables"].elements()) {
    const std::string& name = each.value["name"].string();
    const bool isHidden = std::any_of(choices.begin(), choices.end(),
                                      [&name](const Choice& seen) { return seen.value == name; });
    if (!isHidden) {
      choices.push_back(makeChoice(name + " = " + each.value["value"].string(), name));
    }
  }
  return choices;
}

Choices registerChoices(const Record& result) {
  Choices choices;
  for (const Value::Element& each : result.results["register-names"].elements()) {
    const std::string& name = each.value.string();
    if (!name.empty()) {
      choices.push_back(makeChoice(name, name));
    }
  }
  return choices;
}

Choices placeChoices(const Record& result) {
  Choices choices;
  for (const Value::Element& each : result.results["matches"].elements()) {
    const std::string& match = each.value.string();
    const std::string place = match.starts_with(kBreak) ? match.substr(kBreak.size()) : match;
    choices.push_back(makeChoice(place, place));
  }
  return choices;
}

}  // namespace gdb
