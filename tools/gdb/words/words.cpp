#include "gdb/words/words.h"

#include <algorithm>
#include <optional>

#include "gdb/words/choices.h"
#include "gdb/words/texts.h"
#include "gdb/words/word_table.h"
#include "support/text.h"

namespace gdb {

namespace {

using tester_link::SearchLists;

/// What a word is, whichever table it comes from.
struct Found {
  const WordHelp* help = nullptr;
  bool interrupts = true;
  std::function<void(Control&, const std::string&)> carryOut = {};
};

template <typename Rows>
auto findRow(const Rows& rows, const std::string& word) {
  return std::find_if(rows.begin(), rows.end(),
                      [&word](const auto& row) { return equalIgnoringCase(word, row.help.name); });
}

std::optional<Found> findWord(const std::string& word) {
  const auto plain = plainWords();
  if (const auto row = findRow(plain, word); row != plain.end()) {
    return Found{&row->help, row->trait == WordRow::kInterrupts, row->function};
  }
  const auto questions = questionWords();
  if (const auto row = findRow(questions, word); row != questions.end()) {
    return Found{&row->help, true,
                 [&question = *row](Control& control, const std::string& argument) {
                   if (argument.empty()) {
                     ask(control, question);
                   } else {
                     useValue(control, question, argument);
                   }
                 }};
  }
  return std::nullopt;
}

std::string usageText(const WordHelp& help) {
  return trimmed(std::string(help.name) + ' ' + std::string(help.arguments));
}

void carryOut(Control& control, const Found& found, const std::string& argument) {
  const std::string_view arguments = found.help->arguments;
  const bool isMissing = argument.empty() && arguments.starts_with('<');
  if (isMissing || (!argument.empty() && arguments.empty())) {
    control.refuse("Usage: " + usageText(*found.help));
    return;
  }
  if (found.interrupts && control.target().state == Target::State::kRunning) {
    control.interrupt([&control, found, argument] { found.carryOut(control, argument); });
  } else {
    found.carryOut(control, argument);
  }
}

/// "help nelgdb" lists all, "help WORD" tells of one.
bool takeHelp(Control& control, const std::string& word) {
  const std::optional<Found> found = findWord(equalIgnoringCase(word, "nelgdb") ? "?\?" : word);
  if (!found) {
    return false;
  }
  if (found->help->name == "?\?") {
    listWords(control, "");
  } else {
    control.print(usageText(*found->help));
    control.print("  " + std::string(found->help->summary) + '.');
    control.finish();
  }
  return true;
}

void addNew(tester_link::Items& items, const std::string& item) {
  if (!item.empty() && std::find(items.begin(), items.end(), item) == items.end()) {
    items.push_back(item);
  }
}

/// As they stand in the log.
void addThreads(SearchLists& lists, const mi::Record& result) {
  for (const mi::Value::Element& thread : result.results["threads"].elements()) {
    addNew(lists.processes, thread.value["target-id"].string());
  }
}

void addBreakpoints(SearchLists& lists, const mi::Record& result) {
  for (const mi::Value::Element& each : result.results["BreakpointTable"]["body"].elements()) {
    const mi::Value& point = each.value;
    addNew(lists.timers, point["func"].string());
    addNew(lists.timers, point.has("line")
                             ? placeText(point).substr(placeText(point).rfind(' ') + 1)
                             : point["original-location"].string());
  }
}

}  // namespace

bool takeWord(Control& control, const std::string& line) {
  const std::string text = trimmed(line);
  if (text.empty()) {
    control.refuse("An empty line does nothing; \"?\?\" lists the words of the debugger.");
    return true;
  }
  const auto [word, rest] = splitWord(text);
  if (equalIgnoringCase(word, "help") && takeHelp(control, trimmed(rest))) {
    return true;
  }
  constexpr std::string_view kAttach = "attach-to";
  const bool isAttach = word.size() > 2 && equalIgnoringCase(word, kAttach.substr(0, word.size()));
  if (isAttach && isOfSession(trimmed(rest))) {
    control.refuse("That is a part of this session, which would stand still for ever.");
    return true;
  }
  if (const std::optional<Found> found = findWord(word)) {
    // A program may care for the blanks of what it reads.
    const bool isInput = found->help->name == "input";
    carryOut(
        control, *found,
        isInput ? splitWord(line.substr(line.find_first_not_of(" \t"))).second : trimmed(rest));
    return true;
  }
  const std::string refusal = refusalOf(text);
  if (refusal.empty()) {
    return false;
  }
  control.refuse(refusal);
  return true;
}

bool leavesRunAlone(const std::string& line) {
  const std::optional<Found> found = findWord(splitWord(trimmed(line)).first);
  return found && !found->interrupts;
}

SearchLists usualSearchLists() {
  return {.processes = {}, .signals = offeredSignals(), .timers = {}};
}

void collectSearchLists(Control& control, const std::function<void(const SearchLists&)>& then) {
  control.query("-thread-info", [&control, then](const mi::Record& threads) {
    SearchLists lists = usualSearchLists();
    addNew(lists.signals, control.target().signal);
    addThreads(lists, threads);
    control.query("-break-list", [lists, then](const mi::Record& points) mutable {
      addBreakpoints(lists, points);
      then(lists);
    });
  });
}

}  // namespace gdb
