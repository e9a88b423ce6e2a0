#pragma once

#include <memory>
#include <vector>

#include "app/main_menu.h"
#include "framework/core/frame.h"

class MyPane;
class zGravSizer;
class zMenu;

/// The main window: it frames the log and the command line, binds every menu command and
/// accelerator, and is the gate through which the program closes.
class WMain : public zAppFrame {
 public:
  /// Builds everything and shows the window.
  WMain(zWindow* parent, const char* title);
  ~WMain() override;

  /// 1 if the program may end. The answer is final once it has been yes.
  int canExit();

  /// Sends `line` to the tester, piece by piece; an empty one asks for the list of commands.
  void executeCommandLine(const RWCString& line);

  /// Searches the log for `wanted` from its start, remembers it and how it was searched for, and
  /// lets the user go on with Find next.
  void findFirst(const RWCString& wanted, bool matchCase, bool regexp);

  int handle(zEvent* event) override;
  int activate(zEvent* event) override;
  int close(zEvent* event) override;
  int focus(zEvent* event) override;

 private:
  /// A strip at an edge of the window that the user can hide.
  struct Strip {
    std::unique_ptr<zGravSizer> sizer;
    zDimension size;  ///< when visible
    bool isVisible = true;
  };

  void createMenu();
  void createStrips();
  void createMargins();
  void createRest();
  void toggleStrip(Strip& strip);

  // Handlers of commands, in the order of the menus.
  int onSetDirectory(zEvent* event);
  int onExit(zEvent* event);
  int onFind(zEvent* event);
  int onFindNext(zEvent* event);
  int onFindSelection(zEvent* event);
  int onCopy(zEvent* event);
  int onPaste(zEvent* event);
  int onLineNumbering(zEvent* event);
  int onClearText(zEvent* event);
  int onHelp(zEvent* event);
  int onToggleToolBar(zEvent* event);
  int onToggleStatusLine(zEvent* event);
  int onOrganizer(zEvent* event);
  int onZoomIn(zEvent* event);
  int onZoomOut(zEvent* event);
  int onViewMenuShown(zEvent* event);

  void bindCommands();

  zMenu* menuBar = nullptr;  ///< owned by the frame
  MainPulldowns pulldowns;
  Strip toolBar;
  Strip statusLine;
  std::unique_ptr<zSizer> topSpacer;
  std::unique_ptr<zSizer> bottomSpacer;
  std::unique_ptr<zSizer> leftSpacer;
  std::unique_ptr<zSizer> rightSpacer;
  std::unique_ptr<zSizer> buttonArea;
  std::unique_ptr<MyPane> myPane;
  bool findRegexp = false;
  bool findMatchCase = false;
  std::vector<RWCString> findHistory;  ///< texts searched for, newest last
};

/// The main window; null before it is made and after.
extern WMain* g_MainWindow;

/// 1 once the user has agreed to the end of the program.
extern int g_ExitConfirmed;

/// The resource id of the main icon, for dialogs.
extern int g_MainIconId;

/// Text of Copy and Paste; private to the program, the X clipboard is not used.
extern RWCString copyBuffer;
