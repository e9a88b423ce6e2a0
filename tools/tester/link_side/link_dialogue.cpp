#include "tester/link_side/link_dialogue.h"

#include "link/message_numbers.h"

#include <algorithm>
#include <iterator>

namespace tester {

namespace {

/// Whether a command waits for the answer to this message, or a user for its dialog.
bool isAwaited(int tag) {
  static constexpr int kToldOnly[] = {MSG_T_TEXT, MSG_T_PROMPT,        MSG_T_TITLE,      MSG_T_BUSY,
                                      MSG_T_IDLE, MSG_T_SYSTEM_OPENED, MSG_T_WARNING_BOX};
  return std::find(std::begin(kToldOnly), std::end(kToldOnly), tag) == std::end(kToldOnly);
}

}  // namespace

void LinkDialogue::show(const std::string& lines) {
  if (!userPresent) {
    return;
  }
  batch.append(lines);
  while (auto piece = batch.takeFull()) {
    enqueue(MSG_T_TEXT, {std::move(*piece)});
  }
}

void LinkDialogue::closeBatch() {
  if (!batch.isEmpty()) {
    enqueue(MSG_T_TEXT, {batch.takeRest()});
  }
}

void LinkDialogue::enqueue(int tag, std::vector<OutgoingParameter> parameters) {
  if (userPresent) {
    queue.push_back({tag, std::move(parameters)});
  }
}

void LinkDialogue::enqueueAfterText(int tag, std::vector<OutgoingParameter> parameters) {
  closeBatch();
  enqueue(tag, std::move(parameters));
}

void LinkDialogue::confirm(const std::string& command) {
  enqueueAfterText(MSG_T_PROMPT, {command});
  exitAsked = exitIsDue;
  if (exitIsDue) {
    enqueue(MSG_T_EXIT_CONFIRM);
  }
  exitIsDue = false;
}

void LinkDialogue::showBusy(bool isBusy) {
  busy = isBusy;
  enqueueAfterText(isBusy ? MSG_T_BUSY : MSG_T_IDLE, {});
  unlimited = isBusy ? queue.size() : 0;
}

void LinkDialogue::showTitle(const std::string& title) {
  if (title == lastTitle) {
    return;
  }
  lastTitle = title;
  enqueueAfterText(MSG_T_TITLE, {title});
}

void LinkDialogue::askYesNo(const std::string& caption, const std::string& text) {
  enqueueAfterText(MSG_T_QUESTION, {caption, text});
}

void LinkDialogue::showError(const std::string& caption, const std::string& text) {
  enqueueAfterText(MSG_T_ERROR_BOX, {caption, text});
}

void LinkDialogue::showWarning(const std::string& caption, const std::string& text) {
  enqueueAfterText(MSG_T_WARNING_BOX, {caption, text});
}

void LinkDialogue::setUserPresent(bool isPresent) {
  userPresent = isPresent;
  lastTitle.clear();
  if (isPresent) {
    return;
  }
  queue.clear();
  unlimited = 0;
  batch.takeRest();
}

void LinkDialogue::pump(Clock::time_point now, const Sender& send) {
  blocked = false;
  if (!busy || (queue.empty() && now >= nextText)) {
    closeBatch();
  }
  while (!queue.empty()) {
    const OutgoingMessage& first = queue.front();
    const bool isLimited = busy && unlimited == 0 && first.tag == MSG_T_TEXT;
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
      nextText = now + kTextPeriod;
    }
    popFirst();
  }
}

void LinkDialogue::popFirst() {
  queue.pop_front();
  unlimited -= unlimited > 0 ? 1 : 0;
}

/// Drops the first message and those that continue its list.
void LinkDialogue::dropFirst() {
  const int tag = queue.front().tag;
  refused = refused || isAwaited(tag);
  do {
    popFirst();
  } while (!queue.empty() && queue.front().tag == tag && tag != MSG_T_TEXT);
}

}  // namespace tester
