#pragma once

#include <deque>
#include <string>

#include "link/tool_message.h"
#include "tester_link/user_link.h"

namespace tester_link {

/// A tester as the link sees it. It answers through the UserLink.
class Tester {
 public:
  virtual ~Tester() = default;

  /// The link is there and has taken its signals. What it would not survive, children that end
  /// above all, can be seen to from here on.
  virtual void start() {}

  /// A user interface has come; its log is empty.
  virtual void greet() = 0;

  /// A command as the user typed it. One that comes while a question is open is handed on after
  /// the answer: the user interface may have sent it before the question came up there.
  virtual void takeCommand(const std::string& command) = 0;

  /// The user interface that sent the present command has gone.
  virtual void userLeft() = 0;

  /// The user wants to search his log: UserLink::offerSearch() answers, at once or later.
  virtual void search() = 0;

  /// Whether there is something to do now without the user, a run of the system as a rule, and a
  /// little of it.
  virtual bool isWorking() const = 0;
  virtual void work() = 0;

  /// A descriptor whose input ends the tester's sleep as news from the link do, besides work();
  /// none when it is negative. onWake() takes that input.
  virtual int wakeDescriptor() const { return -1; }
  virtual void onWake() {}
  /// The tester's tool is about to sleep until the link or the descriptor has input.
  virtual void prepareSleep() {}
};

/// A tester as a tool of the Postmaster: connects, hands messages on and alternates between the
/// link and the tester's work, sleeping when there is neither. One per process, as the link is.
///
/// The greeting: a user interface tells its coming by 9001, but one that came before the tester
/// told nobody. The Postmaster's 8000 counts the connected tools, the new one included; if there
/// were others, the greeting goes out with the Postmaster's answer to our own 9001, on the chance
/// that the user interface is among them. Each 9001 of a user interface is greeted again: its log
/// is empty. Whatever happened, the first message of one that was not greeted brings the greeting.
class TesterTool {
 public:
  /// Both must outlive the tool.
  TesterTool(Tester& toolTester, UserLink& toolUser);
  TesterTool(const TesterTool&) = delete;
  TesterTool& operator=(const TesterTool&) = delete;
  ~TesterTool();

  /// Runs until the user interface leaves, the Postmaster shuts down or the link breaks. The
  /// process's exit status, after a line on standard error under `name` when there is no
  /// connection; may end the process as the link's functions say.
  int run(const char* name);

 private:
  struct Route;
  static const Route kRoutes[];
  static TesterTool* active;

  static void handleMessage(int sender, int tag, int length, const char* payload);
  void handle(int sender, int tag, int length, const char* payload);
  void greet();
  void newUser();
  void handOnCommands();

  void onCommand(int sender, const ToolMessage& message);
  void onFind(int sender, const ToolMessage& message);
  void onUiExit(int sender, const ToolMessage& message);
  void onConnected(int sender, const ToolMessage& message);
  void onToolLeft(int sender, const ToolMessage& message);
  void onToolReady(int sender, const ToolMessage& message);
  void onPollingStarts(int sender, const ToolMessage& message);

  void receive();
  void pump();
  void sleep();

  Tester& tester;
  UserLink& user;
  std::deque<std::string> commands;  ///< that wait for the answer to a question
  bool greeted = false;
  bool ended = false;
  bool wasFruitless = false;  ///< the last wake-up for reading brought no frame
};

/// Whether the Postmaster has closed the connection and nothing of it is left to read. The link's
/// reader takes the end of the stream for silence.
bool hasHungUp();

}  // namespace tester_link
