// The questions that commands ask. What is checked here, no command need check again.

#include <algorithm>
#include <utility>

#include "tester/commands/debugger.h"
#include "tester/commands/user_words.h"

namespace tester {

namespace {

constexpr char kAnswerCaption[] = "Korvane - Wrong answer";

void addMissing(std::vector<std::string>& names, const std::vector<std::string>& more) {
  for (const std::string& name : more) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
      names.push_back(name);
    }
  }
}

SearchLists searchLists(const Engine& engine) {
  SearchLists lists;
  for (const ProcessInfo& process : engine.processes()) {
    lists.processes.push_back(process.name);
    addMissing(lists.timers, process.timers);
  }
  for (const SignalType& signal : engine.signalTypes()) {
    lists.signals.push_back(signal.name);
  }
  return lists;
}

bool isInRange(const std::string& text, const NumberRange& range) {
  if (text == kAllNumbers) {
    return range.isAllAllowed;
  }
  const auto number = readCount(text, range.low);
  return number && *number.value <= range.high;
}

std::string notAmongChoices(const std::string& text) {
  return '"' + text + "\" is none of the choices.";
}

}  // namespace

CommandEnd Debugger::await(AnswerKind kind, AnswerHandler handler) {
  question.emplace(std::vector{kind, AnswerKind::kCancelled}, std::move(handler));
  return CommandEnd::kOpen;
}

CommandEnd Debugger::refuse(const std::string& problem) {
  print(problem);
  return showError(kAnswerCaption, problem);
}

CommandEnd Debugger::askText(const std::string& text, AnswerHandler handler) {
  user.askText(text);
  return await(AnswerKind::kText, std::move(handler));
}

CommandEnd Debugger::askNumber(const std::string& text, AnswerHandler handler) {
  user.askNumber(text);
  return await(AnswerKind::kNumber, std::move(handler));
}

CommandEnd Debugger::askNumberInRange(const std::string& text, NumberRange range,
                                      AnswerHandler handler) {
  user.askNumberInRange(text, range);
  return await(
      AnswerKind::kNumber, [this, range, handler = std::move(handler)](const Answer& reply) {
        if (!isInRange(reply.text, range)) {
          return refuse('"' + reply.text + "\" is no number from " + std::to_string(range.low) +
                        " to " + std::to_string(range.high) + '.');
        }
        return handler(reply);
      });
}

CommandEnd Debugger::askChoice(const std::string& text, const Words& items, AnswerHandler handler) {
  user.askChoice(text, items);
  return await(AnswerKind::kChoice, [this, items, handler = std::move(handler)](Answer reply) {
    const auto chosen = std::find(items.begin(), items.end(), reply.text);
    if (chosen == items.end()) {
      return refuse(notAmongChoices(reply.text));
    }
    reply.index = static_cast<std::size_t>(chosen - items.begin());
    return handler(reply);
  });
}

CommandEnd Debugger::askBits(const std::string& text, const Words& items, AnswerHandler handler) {
  user.askBits(text, items);
  return await(AnswerKind::kBits, [this, items, handler = std::move(handler)](const Answer& reply) {
    for (const std::string& bit : reply.items) {
      if (std::find(items.begin(), items.end(), bit) == items.end()) {
        return refuse(notAmongChoices(bit));
      }
    }
    return handler(reply);
  });
}

CommandEnd Debugger::askParameters(const std::string& text, const Words& definitions,
                                   AnswerHandler handler) {
  user.askParameters(text, definitions);
  return await(AnswerKind::kParameters, std::move(handler));
}

CommandEnd Debugger::askFile(const FileFilter& filter, AnswerHandler handler) {
  user.askFile(filter, sessionData.directory.path());
  return await(AnswerKind::kFile, std::move(handler));
}

CommandEnd Debugger::askDirectory(AnswerHandler handler) {
  user.askDirectory(sessionData.directory.path());
  return await(AnswerKind::kDirectory, std::move(handler));
}

void Debugger::offerSearch() {
  searchIsDue = true;
  if (!question) {
    offerDueSearch();
  }
}

void Debugger::offerDueSearch() {
  if (searchIsDue) {
    user.offerSearch(searchLists(system));
    searchIsDue = false;
    searchIsOffered = true;
  }
}

void Debugger::takeCancel() {
  if (std::exchange(searchIsOffered, false)) {
    print("Search cancelled.");
  }
}

}  // namespace tester
