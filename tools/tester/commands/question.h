#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tester/commands/command_table.h"

namespace tester {

enum class AnswerKind {
  kYes,
  kNo,
  kAcknowledged,  ///< an error box was read and closed
  kText,
  kNumber,  ///< digits, or kAllNumbers
  kChoice,
  kBits,
  kParameters,
  kFile,
  kDirectory,
  kCancelled,
};

/// What the user answered.
struct Answer {
  AnswerKind kind = AnswerKind::kNo;
  std::string text = {};                ///< of all kinds that have one; as the user gave it
  std::vector<std::string> items = {};  ///< of kBits
  std::size_t index = 0;                ///< of kChoice: of the item that was chosen
};

/// Goes on with the command that asked. It may ask again or begin a run: kOpen then; after kDone
/// the command is confirmed.
using AnswerHandler = std::function<CommandEnd(const Answer&)>;

/// A question that the user has not answered yet.
class OpenQuestion {
 public:
  /// `answerKinds` are those that answer this question; others are left alone.
  OpenQuestion(std::vector<AnswerKind> answerKinds, AnswerHandler answerHandler)
      : kinds(std::move(answerKinds)), handler(std::move(answerHandler)) {}

  bool isAnsweredBy(const Answer& answer) const {
    return std::find(kinds.begin(), kinds.end(), answer.kind) != kinds.end();
  }
  CommandEnd answer(const Answer& answer) const { return handler(answer); }

 private:
  std::vector<AnswerKind> kinds;
  AnswerHandler handler;
};

}  // namespace tester
