#pragma once

#include <memory>
#include <span>
#include <vector>

#include "app/main_menu.h"
#include "buttons/button_host.h"
#include "framework/core/frame.h"
#include "framework/visuals/status_line.h"
#include "prompts/find_dlg.h"

class ClMainToolBar;
class ControlPane;
class MyPane;
class zGravSizer;
class zMenu;
class zStatusLineEZ;

/// The main window: it frames the log and the command line, binds every menu command and
/// accelerator, and is the gate through which the program closes.
class WMain : public zAppFrame, private ziButtonHost {
 public:
  /// Builds everything and shows the window.
  WMain(zWindow* parent, const char* title);
  ~WMain() override;

  /// 1 if the program may end. The answer is final once it has been yes. While the question about
  /// unsaved buttons is up it is no: that question decides.
  int canExit();

  /// Ends the program, for whose link there is no more hope: the user is still asked about unsaved
  /// buttons, but cannot stay. May end the process.
  void endWithoutLink();

  /// Sends `line` to the tester, piece by piece; an empty one asks for the list of commands.
  void executeCommandLine(const RWCString& line) override;

  /// Shows `text` in the status line.
  void showStatus(const RWCString& text) override;

  /// Searches the log for `wanted` from its start, remembers it and how it was searched for, and
  /// lets the user go on with Find next.
  void findFirst(const RWCString& wanted, bool matchCase, bool regexp);
  /// What the Find dialog is to start with.
  FindSettings findSettings() const;

  int handle(zEvent* event) override;
  int activate(zEvent* event) override;
  int close(zEvent* event) override;
  int focus(zEvent* event) override;

 private:
  static constexpr int kHelpItemId = 4711;

  /// A strip at an edge of the window that the user can hide. The window tree owns both.
  struct Strip {
    zWindow* window = nullptr;
    zGravSizer* sizer = nullptr;
    zDimension size;  ///< when visible
    bool isVisible = true;
  };

  // What the button set asks for.
  zWindow& window() override { return *this; }
  zMenu& mainMenu() override { return *menuBar; }
  RWCString applicationTitle() override;
  int toolBarHeight() override;
  void setMenuHelp(std::span<const zHelpText> rows) override;

  void createMenu();
  void createToolBar();
  void createStatusLine();
  void createMargins();
  void createPanes();
  void toggleStrip(Strip& strip);

  // Handlers of commands, in the order of the menus.
  int onOpen(zEvent* event);
  int onSetDirectory(zEvent* event);
  int onExit(zEvent* event);
  int onFind(zEvent* event);
  int onFindNext(zEvent* event);
  int onFindSelection(zEvent* event);
  int onCopy(zEvent* event);
  int onPaste(zEvent* event);
  int onLineNumbering(zEvent* event);
  int onClearText(zEvent* event);
  int onButtonSet(zEvent* event);
  int onHelp(zEvent* event);
  int onAbout(zEvent* event);
  int onToggleToolBar(zEvent* event);
  int onToggleStatusLine(zEvent* event);
  int onOrganizer(zEvent* event);
  int onZoomIn(zEvent* event);
  int onZoomOut(zEvent* event);
  int onViewMenuShown(zEvent* event);
  int onViewMenuSelect(zEvent* event);
  void enableSelectionItems(bool on);

  struct CommandRow {
    int id;
    int (WMain::*run)(zEvent* event);
  };
  static const CommandRow kCommands[];
  void bindCommands();
  /// Runs a command of the table and gives the focus back.
  int onCommand(zEvent* event);

  zMenu* menuBar = nullptr;  ///< owned by the frame
  MainPulldowns pulldowns;
  ClMainToolBar* toolBar = nullptr;  ///< a child, as is the next
  zStatusLineEZ* statusLine = nullptr;
  Strip toolBarStrip;
  Strip statusLineStrip;
  std::vector<zHelpText> helpTexts;  ///< the status line's, ended by a null
  std::unique_ptr<zSizer> topSpacer;
  std::unique_ptr<zSizer> bottomSpacer;
  std::unique_ptr<zSizer> leftSpacer;
  std::unique_ptr<zSizer> rightSpacer;
  std::unique_ptr<ControlPane> controlPane;
  std::unique_ptr<MyPane> myPane;
  bool isAskingToExit = false;  ///< the question about unsaved buttons is up
  bool hasNoLink = false;       ///< the program cannot stay
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
