// The questions: one message each, or a run of them for a long list, and what is checked of an
// answer.

#include <algorithm>
#include <charconv>
#include <utility>

#include "link/message_numbers.h"
#include "tester_link/user_link.h"

namespace tester_link {

namespace {

/// The user interface answers some questions by itself, which it knows by this caption.
constexpr char kSelectCaption[] = "Korvane Select";
constexpr char kDirectoryCaption[] = "Select Source Directory";

/// As the low limit: the user may choose all instead of a number.
constexpr std::int32_t kAllAllowed = -1;

/// Which list of the search dialog a message fills.
enum class SearchMode : std::int32_t { kProcesses = 1, kSignals = 2, kTimers = 3 };

/// Bounds of one message of a list, so that it is well below what a frame holds.
constexpr std::size_t kMaxItems = 100;
constexpr std::size_t kMaxItemBytes = 8000;

/// The items of each message, in their order; one empty part when there are none.
std::vector<Items> splitItems(const Items& items) {
  std::vector<Items> parts(1);
  std::size_t bytes = 0;
  for (const std::string& item : items) {
    bytes += item.size();
    if (parts.back().size() == kMaxItems || (bytes > kMaxItemBytes && !parts.back().empty())) {
      parts.emplace_back();
      bytes = item.size();
    }
    parts.back().push_back(item);
  }
  return parts;
}

bool isInRange(const std::string& text, const NumberRange& range) {
  if (text == kAllNumbers) {
    return range.isAllAllowed;
  }
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number >= range.low &&
         number <= range.high;
}

/// The run of messages that brings a list.
std::vector<OutgoingMessage> listMessages(int tag, const std::string& message, const Items& items) {
  std::vector<OutgoingMessage> messages;
  std::vector<Items> parts = splitItems(items);
  for (Items& part : parts) {
    const std::int32_t more = &part == &parts.back() ? 0 : 1;
    messages.push_back({tag, {kSelectCaption, message, more, std::move(part)}});
  }
  return messages;
}

Answer notAmongChoices(const std::string& text) {
  return {AnswerKind::kWrong, '"' + text + "\" is none of the choices."};
}

}  // namespace

void UserLink::ask(Question asked) {
  if (!userPresent) {
    return;
  }
  if (question) {
    waitingQuestions.push_back(std::move(asked));
    return;
  }
  for (OutgoingMessage& message : asked.messages) {
    enqueue(message.tag, std::move(message.parameters));
  }
  asked.messages.clear();
  question.emplace(std::move(asked));
}

void UserLink::askWaiting() {
  if (!question && !waitingQuestions.empty()) {
    Question next = std::move(waitingQuestions.front());
    waitingQuestions.pop_front();
    ask(std::move(next));
  }
}

void UserLink::takeAnswer(const Answer& reply) {
  const auto fits = [&reply](const Question& open) {
    return std::find(open.kinds.begin(), open.kinds.end(), reply.kind) != open.kinds.end();
  };
  if (question && fits(*question)) {
    answer(reply);
  } else if (reply.kind == AnswerKind::kCancelled && std::exchange(searchIsOffered, false)) {
    print("Search cancelled.\n");
  }
}

void UserLink::answer(const Answer& reply) {
  // Closed before its handler runs, which may ask the next one.
  const Question answered = std::move(*question);
  question.reset();
  const bool isChecked =
      !answered.check || reply.kind == AnswerKind::kCancelled || reply.kind == AnswerKind::kTooLong;
  answered.handler(isChecked ? reply : answered.check(reply));
  askWaiting();
}

void UserLink::askYesNo(const std::string& caption, const std::string& message,
                        AnswerHandler handler) {
  ask({{{MSG_T_QUESTION, {caption, message}}},
       {AnswerKind::kYes, AnswerKind::kNo},
       std::move(handler)});
}

void UserLink::showError(const std::string& caption, const std::string& message,
                         AnswerHandler handler) {
  ask({{{MSG_T_ERROR_BOX, {caption, message}}}, {AnswerKind::kAcknowledged}, std::move(handler)});
}

void UserLink::askText(const std::string& message, AnswerHandler handler) {
  ask({{{MSG_T_ASK_STRING, {kSelectCaption, message}}},
       {AnswerKind::kText, AnswerKind::kCancelled},
       std::move(handler)});
}

void UserLink::askNumber(const std::string& message, AnswerHandler handler) {
  ask({{{MSG_T_ASK_INTEGER, {kSelectCaption, message}}},
       {AnswerKind::kNumber, AnswerKind::kCancelled},
       std::move(handler)});
}

void UserLink::askNumberInRange(const std::string& message, const NumberRange& range,
                                AnswerHandler handler) {
  const std::int32_t low = range.isAllAllowed ? kAllAllowed : range.low;
  ask({{{MSG_T_ASK_RANGE, {kSelectCaption, message, low, range.high}}},
       {AnswerKind::kNumber, AnswerKind::kCancelled},
       std::move(handler),
       [range](const Answer& reply) {
         return isInRange(reply.text, range)
                    ? reply
                    : Answer{AnswerKind::kWrong, '"' + reply.text + "\" is no number from " +
                                                     std::to_string(range.low) + " to " +
                                                     std::to_string(range.high) + '.'};
       }});
}

void UserLink::askChoice(const std::string& message, const Items& items, AnswerHandler handler) {
  ask({listMessages(MSG_T_ASK_LIST, message, items),
       {AnswerKind::kChoice, AnswerKind::kCancelled},
       std::move(handler),
       [items](const Answer& reply) {
         const auto chosen = std::find(items.begin(), items.end(), reply.text);
         if (chosen == items.end()) {
           return notAmongChoices(reply.text);
         }
         Answer checked = reply;
         checked.index = static_cast<std::size_t>(chosen - items.begin());
         return checked;
       }});
}

void UserLink::askBits(const std::string& message, const Items& items, AnswerHandler handler) {
  ask({{{MSG_T_ASK_BITS, {kSelectCaption, message, items}}},
       {AnswerKind::kBits, AnswerKind::kCancelled},
       std::move(handler),
       [items](const Answer& reply) {
         for (const std::string& bit : reply.items) {
           if (std::find(items.begin(), items.end(), bit) == items.end()) {
             return notAmongChoices(bit);
           }
         }
         return reply;
       }});
}

void UserLink::askParameters(const std::string& message, const Items& definitions,
                             AnswerHandler handler) {
  ask({listMessages(MSG_T_ASK_SIGNAL_PARAM, message, definitions),
       {AnswerKind::kParameters, AnswerKind::kCancelled},
       std::move(handler)});
}

void UserLink::askFile(const FileFilter& filter, const std::string& directory,
                       AnswerHandler handler) {
  ask({{{MSG_T_ASK_FILE, {filter.title, directory, filter.extension, filter.label}}},
       {AnswerKind::kFile, AnswerKind::kCancelled},
       std::move(handler)});
}

void UserLink::askDirectory(const std::string& directory, AnswerHandler handler) {
  ask({{{MSG_T_ASK_DIRECTORY, {kDirectoryCaption, directory}}},
       {AnswerKind::kDirectory, AnswerKind::kCancelled},
       std::move(handler)});
}

void UserLink::offerDueSearch() {
  if (question || !dueSearch) {
    return;
  }
  const std::pair<SearchMode, const Items*> fillings[] = {
      {SearchMode::kProcesses, &dueSearch->processes},
      {SearchMode::kSignals, &dueSearch->signals},
      {SearchMode::kTimers, &dueSearch->timers}};
  for (const auto& [mode, items] : fillings) {
    std::vector<Items> parts = splitItems(*items);
    for (Items& part : parts) {
      const bool isLast = mode == SearchMode::kTimers && &part == &parts.back();
      enqueue(MSG_T_FIND, {isLast ? 0 : 1, static_cast<std::int32_t>(mode), std::move(part)});
    }
  }
  dueSearch.reset();
  searchIsOffered = true;
}

}  // namespace tester_link
