#include "postmaster/account.h"

#include "link/message_numbers.h"

namespace postmaster {

void Account::note(const Message& message) {
  constexpr std::size_t kMaxNoted = 1000;
  const FrameHeader& header = message->header;
  if (header.tag == MSG_UI_COMMAND && header.sender == EXTERNAL) {
    visitorsCommand = message->payload;
  }
  if (header.tag == MSG_UI_COMMAND && header.dest == NELKV) {
    unconfirmedCommands.push_back(message);
  }
  const bool isConfirmed = header.sender == NELKV && header.tag == MSG_T_PROMPT;
  if (!unconfirmedCommands.empty() && (isConfirmed || unconfirmedCommands.size() > kMaxNoted)) {
    unconfirmedCommands.pop_front();
  }
  if (header.tag == MSG_T_QUESTION && header.dest == NELKVUI) {
    questions.push_back(false);
  }
}

const std::deque<Message>& Account::testerCame() {
  unconfirmedCommands = takeKept();
  return unconfirmedCommands;
}

bool Account::closesOwnQuestion(const FrameHeader& header) {
  const bool isAnswer = header.tag == MSG_UI_OK || header.tag == MSG_UI_NOT_OK;
  if (header.sender != NELKVUI || !isAnswer || questions.empty()) {
    return false;
  }
  const bool isOwn = questions.back();
  questions.pop_back();
  if (isOwn) {
    answer = header.tag == MSG_UI_OK;
  }
  return isOwn;
}

bool Account::visitorHears(const Message& message) {
  const FrameHeader& header = message->header;
  const bool isNews = header.sender == NELKV && header.dest == NELKVUI &&
                      (header.tag == MSG_T_TEXT || header.tag == MSG_T_PROMPT);
  if (visitorsCommand.empty() || !isNews) {
    return false;
  }
  if (header.tag == MSG_T_PROMPT && message->payload == visitorsCommand) {
    visitorsCommand.clear();
  }
  return true;
}

}  // namespace postmaster
