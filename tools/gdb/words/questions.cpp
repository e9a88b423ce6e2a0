// Walks a row of the table: from the question to the command.

#include <algorithm>
#include <charconv>
#include <utility>

#include "gdb/words/texts.h"
#include "gdb/words/word_table.h"
#include "support/text.h"

namespace gdb {

namespace {

using Kind = QuestionRow::Kind;
using tester_link::Answer;
using tester_link::Items;

/// The form shows names that end in a point and this. A point that may be missing and anything
/// after it are all names: programs and core files have no extension of their own.
constexpr char kAnyExtension[] = "\\?*";
constexpr char kAnyFile[] = "All Files";

/// A line of a question that its dialog shows without wrapping it, bytes.
constexpr std::size_t kMaxLine = 48;

void askPath(Control& control, const QuestionRow& row) {
  control.query("-environment-pwd", [&control, &row](const mi::Record& result) {
    if (result.name == "error") {
      control.refuse(withReason("GDB tells no directory", result));
      return;
    }
    const std::string& directory = result.results["cwd"].string();
    const auto use = control.then(
        [&control, &row](const Answer& answer) { useValue(control, row, answer.text); });
    if (row.kind == Kind::kFile) {
      control.user().askFile({std::string(row.asked), kAnyExtension, kAnyFile}, directory, use);
    } else {
      control.user().askDirectory(directory, use);
    }
  });
}

void askText(Control& control, const QuestionRow& row) {
  std::string kept = row.kept == nullptr ? "" : control.memory().*row.kept;
  const std::string offer = kept.empty() ? "" : "\nWithout an answer: " + kept;
  control.user().askText(std::string(row.asked) + offer,
                         control.then([&control, &row, kept](const Answer& answer) {
                           const std::string text = trimmed(answer.text);
                           useValue(control, row, text.empty() ? kept : text);
                         }));
}

void askNumber(Control& control, const QuestionRow& row, const mi::Record& result) {
  const std::string& depth = result.results["depth"].string();
  int count = 0;
  std::from_chars(depth.data(), depth.data() + depth.size(), count);
  if (count == 0) {
    control.refuse(withReason(row.none, result));
    return;
  }
  control.query(std::string(row.shown), [&control, &row, count](const mi::Record& shown) {
    const std::string last = std::to_string(count - 1);
    std::string text = std::string(row.asked) + ", 0 to " + last + ':';
    for (const Choice& choice : row.choices(shown)) {
      text += '\n' + shownItem(choice.item, kMaxLine);
    }
    control.user().askNumberInRange(text, {0, count - 1},
                                    control.then([&control, &row](const Answer& answer) {
                                      useValue(control, row, answer.text);
                                    }));
  });
}

/// The values of the choices that are to change to `isOn`, with blanks between them.
std::string changedValues(const Choices& choices, const Items& chosen, bool isOn) {
  std::string values;
  for (const Choice& choice : choices) {
    const bool isWanted = std::find(chosen.begin(), chosen.end(), choice.item) != chosen.end();
    if (isWanted == isOn && choice.isOn != isOn) {
      values += (values.empty() ? "" : " ") + choice.value;
    }
  }
  return values;
}

void useBits(Control& control, const QuestionRow& row, const Choices& choices,
             const Items& chosen) {
  const std::string on = changedValues(choices, chosen, true);
  const std::string off = changedValues(choices, chosen, false);
  const auto giveOff = [&control, &row, off] {
    give(control, filledCommand(row.otherCommand, off));
  };
  if (on.empty() && off.empty()) {
    control.refuse("Nothing was changed.");
  } else if (on.empty()) {
    giveOff();
  } else {
    give(control, filledCommand(row.command, on), off.empty() ? std::function<void()>() : giveOff);
  }
}

void askChoices(Control& control, const QuestionRow& row, const mi::Record& result) {
  const Choices choices = row.choices(result);
  if (choices.empty()) {
    control.refuse(withReason(row.none, result));
    return;
  }
  const auto use = [&control, &row, choices](const Answer& answer) {
    if (row.kind == Kind::kBits) {
      useBits(control, row, choices, answer.items);
    } else {
      useValue(control, row, choices[answer.index].value);
    }
  };
  const std::string text(row.asked);
  if (row.kind == Kind::kBits) {
    control.user().askBits(text, itemsOf(choices), control.then(use));
  } else {
    control.user().askChoice(text, itemsOf(choices), control.then(use));
  }
}

}  // namespace

std::string withReason(std::string_view sentence, const mi::Record& result) {
  const std::string& reason = result.results["msg"].string();
  return std::string(sentence) + (reason.empty() ? "." : ": " + reason);
}

void give(Control& control, const std::string& command, std::function<void()> then) {
  if (hasControlCharacter(command)) {
    control.refuse("GDB's console cannot take a name with control characters.");
  } else {
    control.command(command, std::move(then));
  }
}

void useValue(Control& control, const QuestionRow& row, const std::string& value) {
  const bool isPath = row.kind == Kind::kFile || row.kind == Kind::kDirectory;
  const std::string wanted = isPath ? unquotedFile(value) : value;
  if (wanted.empty()) {
    control.refuse(std::string(row.none) + '.');
    return;
  }
  if (row.kept != nullptr && !hasControlCharacter(wanted)) {
    control.memory().*row.kept = wanted;
  }
  if (row.next != nullptr) {
    row.next(control, wanted);
  } else {
    give(control, filledCommand(row.command, wanted));
  }
}

void ask(Control& control, const QuestionRow& row) {
  switch (row.kind) {
    case Kind::kFile:
    case Kind::kDirectory:
      askPath(control, row);
      return;
    case Kind::kText:
      askText(control, row);
      return;
    case Kind::kChoice:
    case Kind::kBits:
    case Kind::kNumber:
      break;
  }
  const auto go = [&control, &row](const mi::Record& result) {
    (row.kind == Kind::kNumber ? askNumber : askChoices)(control, row, result);
  };
  if (row.source.empty()) {
    go({});
  } else {
    control.query(std::string(row.source), go);
  }
}

}  // namespace gdb
