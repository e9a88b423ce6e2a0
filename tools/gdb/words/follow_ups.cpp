// What some words do with the answer to their question besides giving a command.

#include <cctype>

#include "gdb/mi/reader.h"
#include "gdb/words/texts.h"
#include "gdb/words/word_table.h"
#include "support/text.h"

namespace gdb {

namespace {

using tester_link::Answer;

/// Places that a list shows at most: so many are found quickly in the biggest program, and nobody
/// reads more.
constexpr char kMaxPlaces[] = "200";

/// "12", "main.c:12", "*0x8000": what is no beginning of a name.
bool isLineOrAddress(const std::string& place) {
  const std::size_t colon = place.rfind(':');
  const char first = colon == std::string::npos ? place.front() : (place + ' ')[colon + 1];
  return std::isdigit(static_cast<unsigned char>(first)) != 0 || place.front() == '*';
}

void choosePlace(Control& control, const std::string& beginning, const mi::Record& result) {
  const Choices places = placeChoices(result);
  if (places.empty()) {
    control.refuse(withReason("No function begins with \"" + beginning + '"', result));
    return;
  }
  if (places.size() == 1) {
    give(control, "break " + places.front().value);
    return;
  }
  if (result.results["max_completions_reached"].string() == "1") {
    control.user().askText("More than " + std::string(kMaxPlaces) + " functions begin with \"" +
                               shownItem(beginning) + "\".\nA longer beginning:",
                           control.then([&control](const Answer& answer) {
                             breakAtPlace(control, trimmed(answer.text));
                           }));
    return;
  }
  control.user().askChoice("Breakpoint at:", itemsOf(places),
                           control.then([&control, places](const Answer& answer) {
                             give(control, "break " + places[answer.index].value);
                           }));
}

}  // namespace

void breakAtPlace(Control& control, const std::string& beginning) {
  if (beginning.empty() || hasControlCharacter(beginning)) {
    control.refuse("The beginning of a name is needed.");
    return;
  }
  if (isLineOrAddress(beginning)) {
    give(control, "break " + beginning);
    return;
  }
  control.query("-gdb-set max-completions " + std::string(kMaxPlaces),
                [&control, beginning](const mi::Record&) {
                  control.query("-complete " + mi::quoted("break " + beginning),
                                [&control, beginning](const mi::Record& result) {
                                  choosePlace(control, beginning, result);
                                });
                });
}

void setVariable(Control& control, const std::string& nameAndValue) {
  const auto words = splitWord(nameAndValue);
  const std::string& name = words.first;
  if (!words.second.empty()) {
    give(control, "set var " + name + " = " + trimmed(words.second));
    return;
  }
  if (hasControlCharacter(name)) {
    control.refuse("No variable has such a name.");
    return;
  }
  const auto askValue = [&control, name = name](const mi::Record& result) {
    if (result.name == "error") {
      control.refuse(withReason(name + " has no value", result));
      return;
    }
    control.user().askText(
        "New value of " + name + ", now " + shownItem(result.results["value"].string()) + ':',
        control.then([&control, name](const Answer& answer) {
          const std::string text = trimmed(answer.text);
          if (text.empty()) {
            control.refuse("No value was given.");
          } else {
            give(control, "set var " + name + " = " + text);
          }
        }));
  };
  control.query("-data-evaluate-expression " + mi::quoted(name), askValue);
}

}  // namespace gdb
