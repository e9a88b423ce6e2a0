#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/core/accelerator.h"
#include "framework/core/notify.h"
#include "framework/core/process_entry.h"
#include "framework/core/timer.h"

class zWindow;
class zFrameWin;

/// The application object: one a process. It opens the display, holds the accelerators, the idle
/// handlers and the application-wide event handlers, and runs the main loop.
class zApp {
 public:
  /// Opens the display; ends the process with status 1 and a line on standard error when there is
  /// no application context or no display. `commandLine` is the arguments joined by blanks.
  zApp(int argc, char** argv, std::string commandLine);
  zApp(const zApp&) = delete;
  zApp& operator=(const zApp&) = delete;
  ~zApp();

  /// The one application object; null before and after its life.
  static zApp* instance();

  /// Runs the main loop until quit() or stop().
  void go();
  /// Asks the main window to close; when it agrees the main loop ends.
  void quit();
  /// The window manager asked the main window to close; as quit(), but the window's handlers are
  /// asked by the whole dispatch.
  void closeMainWindow();
  /// Ends the main loop and all nested loops, waking them if they sleep.
  void stop();
  /// Makes a sleeping event loop look at its condition. Xt handles work procedures without leaving
  /// its wait, so what an idle handler changes is not seen before the next event otherwise.
  void wake();
  bool isRunning() const { return running; }
  /// Handles one event, timer, input or idle pass, waiting for it if there is none. Events go
  /// before timers and inputs, and let these through at least every 10 milliseconds.
  void processEvent();
  /// Whether an X event waits to be handled.
  bool hasPendingEvent() const;
  /// Handles all that is pending, then sleeps until there is an X event, `descriptor` (if it is not
  /// negative) can be read or `milliseconds` have passed.
  void pumpPending(int descriptor, int milliseconds);
  /// A nested event loop: runs while `condition` holds and the application has not been stopped.
  void pumpWhile(const std::function<bool()>& condition);

  /// Replaces the accelerator table; 1, or 0 if there is no such resource (the table is then
  /// empty).
  int loadAccelerators(int resourceId);
  /// Sends the command of the accelerator that `event` (a key press) is; 1 if it was one, also
  /// when its menu item is greyed and nothing is sent.
  int translateAccelerator(zEvent* event);
  void beep();

  const std::string& name() const { return appName; }
  void setName(std::string newName) { appName = std::move(newName); }
  const std::string& commandLine() const { return joinedArguments; }
  /// The path that the program was started by, as the process got it.
  std::string programPath() const { return arguments.empty() ? "" : arguments.front(); }

  zFrameWin* mainWindow() const { return mainFrame; }
  void setMainWindow(zFrameWin* frame) { mainFrame = frame; }
  zIdleList* idleList() { return idle.get(); }
  /// Handlers for events of all windows, asked after a window's own.
  zNotifyNodeDlist& handlers() { return applicationHandlers; }

  Display* display() const { return xDisplay; }
  XtAppContext context() const { return appContext; }
  /// The shell that was made last; deferred destruction sends its message there.
  Widget topShell() const { return lastShell; }
  void setTopShell(Widget shell) { lastShell = shell; }
  /// Reads the screen's measures and the Alt modifier. For frames; only the first one's call
  /// counts.
  void takeDisplay(Widget widget);
  unsigned altMask() const { return altModifiers; }
  int doubleClickTime() const { return doubleClickMs; }
  /// A menu that is on the screen, for as long as this lives.
  class PostedMenu {
   public:
    PostedMenu() { ++count; }
    PostedMenu(const PostedMenu&) = delete;
    PostedMenu& operator=(const PostedMenu&) = delete;
    ~PostedMenu() { --count; }
    static bool any() { return count > 0; }

   private:
    static inline int count = 0;
  };
  /// True while a menu is on the screen; the program's focus changes wait for its end.
  static bool isMenuPosted() { return PostedMenu::any(); }

  /// How many modal dialogs run; accelerators are silent while there is one.
  int modalDepth() const { return modalDialogs; }

  /// Holds the modal depth up for its own lifetime.
  class ModalScope {
   public:
    ModalScope() { ++instance()->modalDialogs; }
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;
    ~ModalScope() { --instance()->modalDialogs; }
  };

  /// Resources that hold when no file sets them; `resources` is ended by a null. Closes the display
  /// and opens it anew, so it is for the time before there are widgets and timers.
  void setFallbackResources(const char* const* resources);

 private:
  static constexpr int kDoubleClickMs = 400;

  void registerControlClasses();
  void setErrorHandlers();
  void openDisplay();
  void closeDisplay();
  void readScreen();
  void loadDefaultFont();
  void readAltMask();

  std::string joinedArguments;
  std::vector<char*> arguments;  ///< as given; the texts are the process's
  zFrameWin* mainFrame = nullptr;
  std::unique_ptr<zIdleList> idle;
  zNotifyNodeDlist applicationHandlers;
  int doubleClickMs = kDoubleClickMs;
  bool isDisplaySet = false;  ///< the first frame has given the display
  Display* xDisplay = nullptr;
  std::string appName = "zApp";
  std::vector<std::string> fallbackTexts;
  std::vector<char*> fallbackResources;
  XtAppContext appContext = nullptr;
  unsigned altModifiers = 0;
  std::vector<zAccel> accelerators;
  Widget lastShell = nullptr;
  std::optional<std::chrono::steady_clock::time_point> burstEnd;  ///< of the run of events
  bool running = true;
  int modalDialogs = 0;
};
