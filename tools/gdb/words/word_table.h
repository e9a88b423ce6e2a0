#pragma once

#include <span>
#include <string>
#include <string_view>

#include "gdb/session/control.h"
#include "gdb/words/choices.h"

/// The tables of nelgdb's own words. A new word is a row of one of them.
namespace gdb {

/// What the user reads of a word. Its name has small letters; `arguments` is empty, or describes
/// one argument, in brackets when it may be left out: "[<file>]".
struct WordHelp {
  std::string_view name;
  std::string_view arguments;
  std::string_view summary;
};

/// A word that is a function.
struct WordRow {
  WordHelp help;
  void (*function)(Control& control, const std::string& argument) = nullptr;
  enum Trait {
    kBesideRun,   ///< leaves a running target alone
    kInterrupts,  ///< needs a target that stands
  } trait = kBesideRun;
};
std::span<const WordRow> plainWords();

/// A word that makes a command of its argument and asks for one that is left out. The target
/// stands then.
struct QuestionRow {
  WordHelp help;
  enum class Kind {
    kText,
    kFile,
    kDirectory,
    kChoice,  ///< one of the choices
    kBits,    ///< which of the choices are on
    kNumber,  ///< below the "depth" of the source's result
  } kind = Kind::kText;
  std::string_view asked;  ///< the question; of kFile the title of the form
  std::string_view none;   ///< a sentence without its point, for no choices and for an empty text
  /// Query whose result has what to choose from; none where `choices` needs no result.
  std::string_view source = {};
  Choices (*choices)(const mi::Record&) = nullptr;
  /// Of kNumber: query whose choices are shown under the question.
  std::string_view shown = {};
  /// Where the last text is kept, which an empty one stands for.
  std::string WordMemory::*kept = nullptr;
  std::string_view command = {};       ///< see filledCommand; of kBits for those that go on
  std::string_view otherCommand = {};  ///< of kBits: for those that go off
  /// Goes on with the value in place of a command.
  void (*next)(Control& control, const std::string& value) = nullptr;
};
std::span<const QuestionRow> questionWords();

/// Asks what the row says, and gives the command.
void ask(Control& control, const QuestionRow& row);
/// Gives the command of what the row would have asked for, or goes on.
void useValue(Control& control, const QuestionRow& row, const std::string& value);

/// Gives GDB a command that holds what the user or the program named, and goes on; refuses one with
/// control characters, which would not reach GDB as they are.
void give(Control& control, const std::string& command, std::function<void()> then = {});

/// Why the debugger refused a query, behind a sentence without its point.
std::string withReason(std::string_view sentence, const mi::Record& result);

// What follows some questions (follow_ups.cpp).
void breakAtPlace(Control& control, const std::string& beginning);
void setVariable(Control& control, const std::string& nameAndValue);

// The plain words (plain_words.cpp, restart.cpp).
void listWords(Control& control, const std::string& argument);
void stopTarget(Control& control, const std::string& argument);
void restartTarget(Control& control, const std::string& argument);
void inputText(Control& control, const std::string& argument);
void endInput(Control& control, const std::string& argument);
void markOutput(Control& control, const std::string& argument);
void setPageLength(Control& control, const std::string& argument);
void restartDebugger(Control& control, const std::string& argument);
void leaveAfterSaving(Control& control, const std::string& argument);
void leaveAtOnce(Control& control, const std::string& argument);

/// Why GDB must not get that trimmed line, as a sentence; empty when it may. Such commands put
/// something else in the place of GDB's console: a prompt, a pager, a shell, an editor, a file
/// (refused_lines.cpp).
std::string refusalOf(std::string_view line);

}  // namespace gdb
