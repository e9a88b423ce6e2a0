#pragma once

#include <cstdint>

#include "framework/core/window.h"
#include "support/geometry.h"

/// The family of a control.
enum zControlKind : int {
  kKindButton = 0,
  kKindList = 1,
  kKindScrollBar = 2,
  kKindStatic = 3,
  kKindEdit = 4,
  kKindCombo = 5,
  kKindNone = 6,  ///< until the widget has been made
};

/// Base of all controls: the child window that stands for one widget of the toolkit. A control
/// makes a holder (a form, for a combo box a board) and in it the real widget, which fills the
/// holder. `widget()` is the real widget; the holder is what is placed, shown and destroyed.
///
/// X events of the real widget go to the handlers of this window and to its virtual operations;
/// what the user did to the control goes to the parent as a command (a notification) with this
/// control's id and a code. A handler may destroy the control.
class zControl : public zChildWin {
 public:
  static constexpr int kClassNumber = kClassControl;

  ~zControl() override;

  virtual void setText(const char* newText);
  /// The text as it was set, mnemonic signs included.
  virtual RWCString text() const;
  /// Gives the input focus to this control by the focus timer.
  void setFocus() { startFocusTimer(); }

  /// Takes the focus, at once, and the key press that another control got as if it were this one's.
  /// The control may be gone afterwards.
  void takeKeyPress(const zEvent& press);

  /// Binds the notification `code` of this control in the parent.
  void setNotify(zEvH* target, zHandler handler, int code) {
    addCtrlHandler(target, handler, code);
  }
  void removeNotify(zEvH* target, zHandler handler, int code) {
    removeCtrlHandler(target, handler, code);
  }

  /// Copies the control's content to the value that it is bound to; 0 when it is bound to none.
  virtual int storeData();
  /// Puts the bound value into the control; 0 when it is bound to none.
  virtual int showData();

  zControlKind kind() const { return controlKind; }
  Widget holder() const { return outerForm; }

  /// Does nothing: a control has its widgets from its construction on.
  void createWidgets() override {}

  // zWindow. What concerns the place is done to the holder.
  int storeChildren() override;
  void show(int state = kShowNormal) override;
  void setShowState(int state) override;
  void getExterior(zRect& rect) override;
  void moveResize(int x, int y, int width, int height) override;
  void setBackground(const zColor& colour) override;

 protected:
  enum class HolderClass { form, board };

  /// Makes no widgets; each concrete class makes its own at the end of its constructor.
  zControl(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);

  /// Makes the holder, unmanaged, in the parent's widget. Its size is the sizer's; when that is not
  /// set, what the parent's layout gives the sizer, otherwise `unknownSize`.
  Widget createHolder(HolderClass holderClass = HolderClass::form,
                      zDimension unknownSize = {100, 10});
  /// The last steps of creation: `realWidget`, made in the holder, is managed and becomes the
  /// control's widget with its attachments, user data and event handler; then the disabled bit,
  /// the parent's font (for buttons and static texts its colour too) and the visible bit take
  /// effect. `filler` is the holder's direct child where that is another one, such as a scrolled
  /// window.
  void finishCreation(zControlKind newKind, Widget realWidget, Widget filler = nullptr);

  /// Sends the parent a command with this control's id and `code`. The control may be gone after
  /// the call. Result as of zDispatch; 0 without a parent.
  int notifyParent(int code, XEvent* xevent = nullptr);

  /// Whether printable keys without Control or Alt go to the widget unasked, and key releases to
  /// nobody: true for controls in which the user types.
  virtual bool takesTyping() const { return false; }
  /// Such a printable key has come. Non-zero keeps it from the widget.
  virtual int typingArrived(zEvent& event);
  /// The last station of a key that no handler and no accelerator took (and of those that are not
  /// offered to them). `typed` says whether the key gives a character. Non-zero keeps the key from
  /// the widget.
  virtual int keyArrived(zEvent& event, bool typed);

  /// A press of a mouse button that no handler took: gives the control the focus. True keeps the
  /// press from the widget.
  virtual bool pressArrived(zEvent& event);

  /// Gives the widgets the background colour; a control with further widgets adds them.
  virtual void applyBackground();
  static void colourWidget(Widget painted, std::uint32_t pixel);

  void removeEventHandlers() override;

  Widget outerForm = nullptr;

 private:
  using Operation = int (zWindow::*)(zEvent*);

  void settleSize(zDimension unknownSize);
  bool takesParentColour() const;

  // The road of X events. The control may be gone after any of these; true if the event must not
  // reach the widget.
  bool onWidgetEvent(XEvent& xevent);
  bool takeKey(zEvent& event);
  bool offerKey(zEvent& event);
  bool offerToDialog(zEvent& event);
  bool offerMouse(zEvent& event, int message, Operation operation);
  void offerKeyRelease(zEvent& event);
  void onHolderEvent(XEvent& xevent);

  zControlKind controlKind = kKindNone;
  Widget filling = nullptr;  ///< the holder's direct child
};

/// What a mouse event says.
struct zPointer {
  unsigned button = 0;  ///< the button that was pressed or released; 0 for any other event
  zPoint pos;           ///< in the window of the event, pixels
};
zPointer pointerOf(const zEvent& event);

/// Sends all mouse events to `window` until the release, wherever the pointer goes; without this
/// the program's other windows take those over them. To be released before the window goes: the
/// toolkit would look for it there.
void grabPointer(const zWindow& window);
void releasePointer(const zWindow& window);
/// Whether the first button is up and no event waits: a release that was to come went elsewhere,
/// such as to a dialog that opened meanwhile.
bool isReleaseLost(const zWindow& window);

/// Makes the controls of this folder known to dialogs that are filled from resources. Once, before
/// the first such dialog.
void registerRecordControls();
