#pragma once

#include <Xm/XmAll.h>

class zComboBoxBase;

/// What the widgets of a combo box report, and what is watched while its list is down. Ties itself
/// to the widgets for its own lifetime. The combo box may be gone after each report.
class ziComboCallbacks {
 public:
  explicit ziComboCallbacks(zComboBoxBase& owner);
  ziComboCallbacks(const ziComboCallbacks&) = delete;
  ziComboCallbacks& operator=(const ziComboCallbacks&) = delete;
  ~ziComboCallbacks();

  /// Closes the list when the window that the combo box is in moves or disappears, and when the
  /// user presses a mouse button elsewhere in the program.
  void watchOutside();
  void stopWatching();

 private:
  template <auto Member>
  void tieEvents(Widget widget, EventMask mask, XtListPosition position);
  template <auto Member>
  void untieEvents(Widget widget, EventMask mask);

  void arrowActivated(XmArrowButtonCallbackStruct* data);
  void rowChosen(XmListCallbackStruct* data);
  void rowActivated(XmListCallbackStruct* data);
  void entryChanging(XmTextVerifyCallbackStruct* data);
  void entryChanged(XmAnyCallbackStruct* data);

  void focusChanged(Widget entry, XEvent* event, Boolean* toWidget);
  void entryPressed(Widget entry, XEvent* event, Boolean* toWidget);
  void frameChanged(Widget frame, XEvent* event, Boolean* toWidget);

  static Boolean pressDispatched(XEvent* event);

  zComboBoxBase& combo;
  Widget watchedFrame = nullptr;
  bool inListClick = false;  ///< the last press since the list came down was in it
};
