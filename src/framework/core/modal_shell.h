#pragma once

#include "framework/draw/xtfwd.h"

/// Says, for its own lifetime, that what comes up on the screen is not the user's doing: he may be
/// typing something else at that moment.
class zUnaskedScope {
 public:
  zUnaskedScope();
  zUnaskedScope(const zUnaskedScope&) = delete;
  zUnaskedScope& operator=(const zUnaskedScope&) = delete;
  ~zUnaskedScope();

  static bool isActive();
};

/// Keeps keys from answering a dialog that the user cannot have seen yet: those typed before its
/// shell has had the focus for g_XSettings.promptKeyDelay milliseconds, by the time at which they
/// were typed, however late they are handled.
///
/// Characters and BackSpace go on to the text that had the focus when the dialog came up, and so
/// does Return if that is the main window's: commands typed ahead must not run into one. All other
/// keys are dropped; Return in the text of another dialog would answer that one.
class ziKeyGuard {
 public:
  ziKeyGuard() = default;
  ziKeyGuard(const ziKeyGuard&) = delete;
  ziKeyGuard& operator=(const ziKeyGuard&) = delete;
  ~ziKeyGuard() { stop(); }

  /// Watches over `shell`, which is about to come up, until stop(); the shell must live as long.
  void start(Widget shell);
  void stop();

 private:
  /// Takes the place of the toolkit's dispatcher of key presses.
  static char dispatchKey(XEvent* event) noexcept;
  void shellEvent(XEvent& event);
  void textGone() { typedInto = nullptr; }
  bool holds(const XEvent& key);
  void handOn(const XEvent& key) const;

  Widget watched = nullptr;
  Widget typedInto = nullptr;  ///< gets what is typed meanwhile; null for nothing
  bool hasFocus = false;
  unsigned long focusTime = 0;  ///< by the server's clock
  bool isOpen = false;          ///< from now on all keys are the dialog's
};

/// The shell of a modal dialog, box or form while it is on the screen. What the user did not ask
/// for guards its keys, and where the main window is an icon it brings that back: window managers
/// hide the dialogs of an icon, and the program behind the question waits for its answer.
class ziModalShell {
 public:
  ziModalShell() = default;
  ziModalShell(const ziModalShell&) = delete;
  ziModalShell& operator=(const ziModalShell&) = delete;
  ~ziModalShell() { down(); }

  /// To be called right before `shell` comes up. Its destruction counts as down().
  void up(Widget shell);
  void down();
  bool isUp() const { return shell != nullptr; }

  /// Puts the dialog in front of the others and gives it the focus.
  void raise() const;
  /// The same for the dialog that came up last, if there is any.
  static void raiseNewest();

 private:
  void focusChanged(XEvent& event);
  void callUser();

  Widget shell = nullptr;
  bool isCalling = false;  ///< the main window asks for attention
  ziKeyGuard keyGuard;
};

/// A modal box of the toolkit's own, from its creation to its end. Everything may happen while it
/// waits, the destruction of its widgets included; and they may live on for a moment, but nothing
/// comes from them any more once this is gone.
class ziModalBox {
 public:
  ziModalBox() = default;
  ziModalBox(const ziModalBox&) = delete;
  ziModalBox& operator=(const ziModalBox&) = delete;
  virtual ~ziModalBox();

  void show();

 protected:
  /// Takes over `made`, a box in a shell of its own, and tells its window type and title.
  void take(Widget made, const char* title);
  virtual void onOk() = 0;
  virtual void onCancel() = 0;
  virtual void onHelp() {}
  /// The window manager asks to close it.
  virtual void onClose() { onCancel(); }
  /// The widgets are being destroyed.
  virtual void onGone() = 0;

  Widget box = nullptr;  ///< null once it is gone

 private:
  void destroyed();

  ziModalShell modalShell;
};

class zWindow;

/// The shell that a dialog of `parent` belongs to: the parent's own, or the main window's where the
/// parent is null or has no widget. Null when there is no main window either.
Widget shellAbove(zWindow* parent);
