#pragma once

#include <memory>
#include <span>
#include <vector>

#include "app/main_bars.h"
#include "buttons/button_host.h"
#include "framework/core/frame.h"
#include "framework/visuals/status_line.h"
#include "session/session.h"

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
  /// Builds everything and shows the window. The session outlives it.
  WMain(zWindow* parent, const char* title, Session& session);
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

  /// Searches the log from its start, and lets the user go on with Find next.
  void findFirst(const Search& search);

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

  // What commands do that takes more than a line.
  void openSymbolFile();
  void exit();
  void findNext();
  void findSelection();
  void copy();
  void paste();
  void toggleLineNumbering();

  int onViewMenuShown(zEvent* event);
  int onViewMenuSelect(zEvent* event);
  void enableSelectionItems(bool on);

  struct Command {
    int id;
    void (*run)(WMain& window);
  };
  static const Command kCommands[];
  void bindCommands();
  /// Runs a command of the table and gives the focus back.
  int onCommand(zEvent* event);

  Session& session;
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
};

/// The main window; null before it is made and after.
extern WMain* g_MainWindow;

/// The resource id of the main icon, for dialogs.
extern int g_MainIconId;
