#pragma once

#include <memory>

#include "framework/core/frame.h"

class MyPane;

/// The main window: it frames the log and the command line, and is the gate through which the
/// program closes.
class WMain : public zAppFrame {
 public:
  /// Builds everything and shows the window.
  WMain(zWindow* parent, const char* title);
  ~WMain() override;

  /// 1 if the program may end. The answer is final once it has been yes.
  int canExit();

  /// Sends `line` to the tester, piece by piece; an empty one asks for the list of commands.
  void executeCommandLine(const RWCString& line);

  int handle(zEvent* event) override;
  int activate(zEvent* event) override;
  int close(zEvent* event) override;
  int focus(zEvent* event) override;

 private:
  void createMargins();

  std::unique_ptr<zSizer> topSpacer;
  std::unique_ptr<zSizer> bottomSpacer;
  std::unique_ptr<zSizer> leftSpacer;
  std::unique_ptr<zSizer> rightSpacer;
  std::unique_ptr<MyPane> myPane;
};

/// The main window; null before it is made and after.
extern WMain* g_MainWindow;

/// 1 once the user has agreed to the end of the program.
extern int g_ExitConfirmed;
