// The queue of messages: what waits for what, and what leaves when.

#include "tester_link/user_link.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "link/message_numbers.h"

namespace tester_link {

namespace {

/// Whether a command waits for the answer to this message, or a user for its dialog.
bool isAwaited(int tag) {
  static constexpr int kToldOnly[] = {MSG_T_TEXT, MSG_T_PROMPT,        MSG_T_TITLE,      MSG_T_BUSY,
                                      MSG_T_IDLE, MSG_T_SYSTEM_OPENED, MSG_T_WARNING_BOX};
  return std::find(std::begin(kToldOnly), std::end(kToldOnly), tag) == std::end(kToldOnly);
}

/// So many texts go out at once after a pause.
constexpr int kTextsAtOnce = 4;

}  // namespace

void UserLink::paceAllText(Clock::duration period) {
  pacesAll = true;
  textPeriod = period;
}

void UserLink::print(const std::string& lines) {
  if (!userPresent) {
    return;
  }
  text += lines;
  while (text.size() > kMaxText) {
    const std::size_t lineEnd = text.rfind('\n', kMaxText - 1);
    const std::size_t size = lineEnd == std::string::npos ? kMaxText : lineEnd + 1;
    enqueueText(text.substr(0, size));
    text.erase(0, size);
  }
}

void UserLink::enqueueText(std::string lines) {
  queuedText += lines.size();
  queue.push_back({MSG_T_TEXT, {std::move(lines)}});
}

void UserLink::closeText() {
  if (!text.empty()) {
    enqueueText(std::exchange(text, {}));
  }
}

void UserLink::enqueue(int tag, std::vector<OutgoingParameter> parameters) {
  if (userPresent) {
    closeText();
    queue.push_back({tag, std::move(parameters)});
  }
}

void UserLink::confirm(const std::string& command) {
  enqueue(MSG_T_PROMPT, {command});
  leaving = leave.has_value();
  if (leaving) {
    enqueue(*leave == Leave::kAtOnce ? MSG_T_EXIT : MSG_T_EXIT_CONFIRM);
  }
  leave.reset();
}

void UserLink::showBusy(bool isBusy) {
  busy = isBusy;
  enqueue(isBusy ? MSG_T_BUSY : MSG_T_IDLE);
  unlimited = isBusy && !pacesAll ? queue.size() : 0;
}

void UserLink::showTitle(const std::string& title) {
  if (std::exchange(lastTitle, title) != title) {
    enqueue(MSG_T_TITLE, {title});
  }
}

void UserLink::showSystem(const std::string& directory, const std::string& name) {
  enqueue(MSG_T_SYSTEM_OPENED, {directory, name});
}

void UserLink::showWarning(const std::string& caption, const std::string& warning) {
  enqueue(MSG_T_WARNING_BOX, {caption, warning});
}

void UserLink::setUserPresent(bool isPresent) {
  userPresent = isPresent;
  lastTitle.clear();
  question.reset();
  waitingQuestions.clear();
  dueSearch.reset();
  searchIsOffered = false;
  if (!isPresent) {
    queue.clear();
    queuedText = 0;
    text.clear();
    unlimited = 0;
  }
}

void UserLink::pump(Clock::time_point now, const Sender& send) {
  do {
    offerDueSearch();
    sendDue(now, send);
  } while (tellRefusal());
}

void UserLink::sendDue(Clock::time_point now, const Sender& send) {
  blocked = false;
  const bool isPaced = busy || pacesAll;
  if (!isPaced || (queue.empty() && now >= nextText)) {
    closeText();
  }
  while (!queue.empty()) {
    const OutgoingMessage& first = queue.front();
    const bool isLimited = isPaced && unlimited == 0 && first.tag == MSG_T_TEXT;
    if (isLimited && now < nextText) {
      return;
    }
    const SendResult result = send(first);
    blocked = result == SendResult::kLater;
    if (blocked) {
      return;
    }
    if (result == SendResult::kRefused) {
      dropFirst();
      continue;
    }
    if (isLimited) {
      // Where all is paced, a pause is made up for: a short answer in several texts does not wait.
      const auto unused = pacesAll ? (kTextsAtOnce - 1) * textPeriod : Clock::duration{};
      nextText = std::max(nextText, now - unused) + textPeriod;
    }
    popFirst();
  }
}

void UserLink::popFirst() {
  if (queue.front().tag == MSG_T_TEXT) {
    queuedText -= std::get<std::string>(queue.front().parameters.front()).size();
  }
  queue.pop_front();
  unlimited -= unlimited > 0 ? 1 : 0;
}

/// Drops the first message and those that continue its list.
void UserLink::dropFirst() {
  const int tag = queue.front().tag;
  refused = refused || isAwaited(tag);
  do {
    popFirst();
  } while (!queue.empty() && queue.front().tag == tag && tag != MSG_T_TEXT);
}

/// False when there is none to tell of.
bool UserLink::tellRefusal() {
  if (!std::exchange(refused, false)) {
    return false;
  }
  print("What there is to ask or to tell is too long for a message.\n");
  if (question) {
    answer({AnswerKind::kTooLong});
  }
  return true;
}

}  // namespace tester_link
