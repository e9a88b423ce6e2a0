#pragma once

#include <memory>
#include <vector>

#include "framework/core/pane.h"
#include "framework/core/timer.h"
#include "support/rwc_string.h"

/// The show state of a tip: shown, without the focus.
inline constexpr int kShowNoActivate = 8;

/// The tip of a control. An id of 0 ends a table.
struct zToolTipText {
  int id;
  const char* text;
};

/// A small text window on the screen: bare, above all others, without the focus. Its lines are
/// separated by line feeds.
class ziToolHelper : public zPane {
 public:
  /// A child of `parent`, not shown.
  explicit ziToolHelper(zWindow* parent);
  ~ziToolHelper() override;

  void createWidgets() override;
  int draw(zEvent* event) override;
  void show(int state = kShowNoActivate) override;
  void setFont(const zRCFont& newFont, int redraw) override;

  /// Shows `newText` near the pointer, which is at `pointer` on the screen; inside the screen, and
  /// never under the pointer.
  void showAt(const zPoint& pointer, const RWCString& newText);
  void hide();
  bool isShown() const { return shown; }
  const RWCString& tipText() const { return tip; }
  Widget shell() const { return tipShell; }

 private:
  zDimension neededSize();

  RWCString tip;
  Widget tipShell = nullptr;
  bool shown = false;
};

/// Shows tips for a set of windows: after the pointer has stayed on one for a moment, or at once
/// when it comes straight from one with a tip; until it leaves, a button is pressed, or the tip's
/// time is over. That window then has no tip again before the pointer has been on another one.
class zToolTipCtrl : public zEvH {
 public:
  /// Milliseconds.
  struct Delays {
    unsigned long show = 250;   ///< before a tip comes, and between looks at the pointer
    unsigned long hide = 5500;  ///< from the pointer's arrival
  };

  /// Tips are children of `owner`. May die before and after the owner and the watched windows.
  explicit zToolTipCtrl(zWindow* owner);
  ~zToolTipCtrl() override;

  /// The texts by the ids of windows; the table stays the caller's and must outlive this.
  void setTable(const zToolTipText* newTable) { table = newTable; }
  /// Watches `window`, which must have its widget.
  void add(zWindow* window);
  void setEnabled(bool on);
  bool isEnabled() const { return enabled; }
  /// The tip that is on the screen, or null.
  const ziToolHelper* shownTip() const;
  Widget tipShell() const;

  /// For all tips from now on; for tests.
  static void setDelays(const Delays& delays);

 private:
  struct Watched;

  bool isAlive(const zWindow* window) const;
  /// Whether the pointer has just left a window with a tip.
  bool isBetweenWindows() const { return currentWindow == nullptr && showTimer != nullptr; }
  void pointerOver(zWindow* window);
  void pointerLeft();
  /// Ends the tip of the window that the pointer is on.
  void endTip();
  void goAway();
  void look();
  void showTip();
  const char* textFor(int id) const;
  static int showTimerFired(zEvH* control);
  static int hideTimerFired(zEvH* control);

  zWindow* currentWindow = nullptr;  ///< under the pointer
  zWindow* shownWindow = nullptr;    ///< its tip ran out
  ziToolHelper* helper = nullptr;    ///< a child of the owner
  std::unique_ptr<ziAlive> helperAlive;
  zWindow* tipOwner;
  ziAlive ownerAlive;
  bool enabled = true;
  std::unique_ptr<zTimer> showTimer;
  std::unique_ptr<zTimer> hideTimer;
  const zToolTipText* table = nullptr;
  std::vector<std::unique_ptr<Watched>> watched;
};
