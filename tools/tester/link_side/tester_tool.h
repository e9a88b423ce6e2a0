#pragma once

#include "link/tool_message.h"
#include "tester/commands/debugger.h"
#include "tester/link_side/link_dialogue.h"

namespace tester {

/// A message from another tool, decoded. Valid during the call of its handler.
struct IncomingMessage {
  int sender = 0;
  int tag = 0;
  const ToolMessage& parameters;
};

/// The tester as a tool of the Postmaster: connects, hands messages to their functions and
/// alternates between the link and the run of the system, sleeping when there is neither. One per
/// process, as the link is.
///
/// The greeting: a user interface tells its coming by 9001, but one that came before the tester
/// told nobody. The Postmaster's 8000 counts the connected tools, the new one included; if there
/// were others, the greeting goes out with the Postmaster's answer to our own 9001, on the chance
/// that the user interface is among them. Each 9001 of a user interface is greeted again: its log
/// is empty. Whatever happened, the first message of one that was not greeted brings the greeting.
class TesterTool {
 public:
  TesterTool(Debugger& toolDebugger, LinkDialogue& toolDialogue);
  TesterTool(const TesterTool&) = delete;
  TesterTool& operator=(const TesterTool&) = delete;
  ~TesterTool();

  /// Runs until the user interface leaves, the Postmaster shuts down or the link breaks. The
  /// process's exit status; may end the process as the link's functions say.
  int run();

 private:
  struct Route;
  static const Route kRoutes[];
  static TesterTool* active;

  static void handleMessage(int sender, int tag, int length, const char* payload);
  void handle(int sender, int tag, int length, const char* payload);
  void greet();

  void newUser();

  void onCommand(const IncomingMessage& message);
  void onAnswer(const IncomingMessage& message);
  void onFind(const IncomingMessage& message);
  void onUiExit(const IncomingMessage& message);
  void onConnected(const IncomingMessage& message);
  void onToolLeft(const IncomingMessage& message);
  void onToolReady(const IncomingMessage& message);
  void onPollingStarts(const IncomingMessage& message);

  void receive();
  void pump();
  void sleep();

  Debugger& debugger;
  LinkDialogue& dialogue;
  bool greeted = false;
  bool ended = false;
  bool wasFruitless = false;  ///< the last wake-up for reading brought no frame
};

}  // namespace tester
