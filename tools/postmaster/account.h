#pragma once

#include "postmaster/message.h"

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace postmaster {

/// What is still open between the tools: commands that the tester has not confirmed or that wait
/// for one to come, questions that the user has not answered, and what an external tool waits for.
class Account {
 public:
  /// A message that goes on its way.
  void note(const Message& message);

  /// A command that waits for the tester that comes.
  void keep(const Message& command) { keptCommands.push_back(command); }
  /// The tester has come: the commands that it is sent now, in their order.
  const std::deque<Message>& testerCame();
  /// The commands that waited; they wait no more.
  std::deque<Message> takeKept() { return std::exchange(keptCommands, {}); }
  /// The commands that the tester did not confirm; nobody will.
  std::deque<Message> takeUnconfirmed() { return std::exchange(unconfirmedCommands, {}); }

  /// The Postmaster itself has asked the user.
  void noteOwnQuestion() { questions.push_back(true); }
  /// Whether the frame, from the user interface, answers a question of the Postmaster's own. It
  /// closes the newest question, whosever that is: boxes lie one above the other.
  bool closesOwnQuestion(const FrameHeader& header);
  /// The answer to the Postmaster's own question, once: whether it was OK.
  std::optional<bool> takeAnswer() { return std::exchange(answer, std::nullopt); }

  /// Whether an external tool that has sent the tester a command gets a copy of the message: of
  /// what the tester tells the window until it confirms the command.
  bool visitorHears(const Message& message);
  void visitorLeft() { visitorsCommand.clear(); }

 private:
  std::deque<Message> keptCommands;         ///< for the tester that comes
  std::deque<Message> unconfirmedCommands;  ///< that the tester was sent
  std::vector<bool> questions;  ///< 2001 that are open, newest last: whether it is our own
  std::optional<bool> answer;
  std::string visitorsCommand;  ///< payload of what EXTERNAL has sent and waits for; empty for none
};

}  // namespace postmaster
