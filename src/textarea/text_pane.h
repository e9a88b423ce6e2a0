#pragma once

#include <functional>
#include <memory>

#include "framework/controls/edit.h"
#include "framework/core/timer.h"
#include "textarea/find_text.h"
#include "textarea/line_numbering.h"

/// The log: a read-only text to which everything that the tester shows is appended. It has no bound
/// on lines or characters; only Clear shortens it.
class TextPane : public zEditBox {
 public:
  static constexpr int kMaxZoomLevel = 20;

  TextPane(zWindow* parent, zSizer* sizer);
  ~TextPane() override;

  /// The only way in for output of the tester. Drops the user's selection, takes the view to the
  /// end and shows the text at once.
  void appendText(const char* newText);
  /// The same for a text that others are about to follow: they are shown together, which costs as
  /// much as one of them. That is done after 20 milliseconds at the latest, and before anyone looks
  /// at the log or changes it.
  void holdText(const char* newText);
  /// Shows what is held.
  void showHeld();
  /// Replaces the whole log by the line that says so.
  void clear();
  /// After the text has been replaced by Clear's banner.
  void resetCounters();

  // Rewrite the whole text.
  void numberLines();
  void unnumberLines();
  bool numbering() const { return counters.numbering; }
  void setNumbering(bool on) { counters.numbering = on; }

  void zoomIn();
  void zoomOut();
  int zoomLevel() const { return zoom; }
  /// Told which zoom command is possible after each zoom.
  void setZoomListener(std::function<void(int command, bool possible)> listener) {
    zoomListener = std::move(listener);
  }

  void pageUp();
  void pageDown();
  void scrollToTop();
  void scrollToEnd();
  void selectAll();
  /// Selects the next hit for `wanted` and brings it into view; from the start, with the view at
  /// the top, unless `goOn`. A box tells when there is none (after `goOn` it offers to search from
  /// the start), when `wanted` is no regular expression, or one that is too complex; the pane may
  /// be gone after it. Escape stops a search that lasts, without a box.
  void findText(const RWCString& wanted, bool goOn, bool matchCase, bool regexp);

  /// The Control latch, shared with the command line: set by a press of Control in either, cleared
  /// not by its release but by the pointer crossing either's edge. Intended.
  bool controlHeld() const { return controlLatch; }
  void setControlHeld(bool held) { controlLatch = held; }

  /// Does what a key does to the log in either control: the page keys and left Control. False for
  /// other keys.
  bool takePagingKey(std::intptr_t code);

  int lineCount() const { return counters.lineCount; }
  int textEnd() const { return counters.textEnd; }
  int linesPerPage() const { return pageLines; }

  /// Keys of the log are taken, all others left to the accelerators and to the widget.
  int handle(zEvent* event) override;
  int size(zEvent* event) override;
  void moveResize(int x, int y, int width, int height) override;

 protected:
  /// What is typed belongs to the command line.
  int typingArrived(zEvent& event) override;

 private:
  void settle() const override;
  static int heldLongEnough(zEvH* pane);
  void insertAtEnd(const std::string& piece);
  void expandToHeld(const char* newText);
  void putHeld();
  void applyZoom();
  template <class Change>
  void changeView(Change change);
  int handleKey(const zEvent& event);
  FindResult selectNextHit(const FindRequest& request);
  void tellNotFound(const RWCString& wanted, bool goOn, bool matchCase, bool regexp);

  LogCounters counters;
  std::string heldText;  ///< counted, but not in the widget
  std::unique_ptr<zTimer> holdTimer;
  int charHeight = 1;
  int charWidth = 1;
  int pageLines = 0;
  int zoom;
  bool controlLatch = false;
  std::function<void(int command, bool possible)> zoomListener;
};

/// The log of the program; null before it is made and after.
extern TextPane* theTextPane;
