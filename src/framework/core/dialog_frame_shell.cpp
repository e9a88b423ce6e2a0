// A dialog's widgets: the shell with its two boards, how they come up and go, and which of the
// controls then has the keyboard.

#include "framework/core/dialog_frame.h"

#include <algorithm>
#include <span>
#include <utility>

#include "framework/core/application.h"
#include "framework/core/connect_xm.h"
#include "framework/core/desktop_properties.h"
#include "framework/core/modal_shell.h"
#include "framework/core/window_events_xm.h"

#include <Xm/DialogS.h>
#include <Xm/MwmUtil.h>

namespace {

constexpr int kDecorations = MWM_DECOR_BORDER | MWM_DECOR_TITLE | MWM_DECOR_MENU;
constexpr int kFunctions = MWM_FUNC_MOVE | MWM_FUNC_CLOSE;

Widget createBoard(Widget parent, unsigned char resizePolicy) {
  return XtVaCreateWidget("BulletinBoard", xmBulletinBoardWidgetClass, parent, XmNmarginWidth, 0,
                          XmNmarginHeight, 0, XmNshadowThickness, 0, XmNresizePolicy, resizePolicy,
                          XmNautoUnmanage, False, XmNdefaultPosition, False, nullptr);
}

bool canTakeFocus(zWindow* window) {
  return (window->style() & kStyleTabStop) != 0 && window->isEnabled();
}

// The entry of a combo box is an exclusive tab group, as its kind is to be; beside one Tab finds
// only other groups of that kind and sticky ones. So the holders of the other controls are sticky.
void makeTabStops(Widget board) {
  WidgetList parts = nullptr;
  Cardinal count = 0;
  XtVaGetValues(board, XmNchildren, &parts, XmNnumChildren, &count, nullptr);
  for (Widget part : std::span(parts, count)) {
    if (XmIsForm(part)) {
      XtVaSetValues(part, XmNnavigationType, XmSTICKY_TAB_GROUP, nullptr);
    }
    // A group box holds controls of its own.
    if (XmIsForm(part) || XmIsFrame(part)) {
      makeTabStops(part);
    }
  }
}

}  // namespace

void zDialogFrame::shellFocus(XEvent& event) {
  // At once, for keys that are typed right away, and by the timer for a focus that comes late.
  if (event.type == FocusIn && std::exchange(focusPending, false)) {
    focusFirst();
  }
}

void zDialogFrame::createWidgets() {
  Widget owner = shellAbove(parent());
  const zRect place = sizer()->rect();
  shellWidget = XtVaCreatePopupShell("DialogShell", xmDialogShellWidgetClass, owner, XmNtitle,
                                     text.c_str(), XmNuserData, this, XmNmwmDecorations,
                                     kDecorations, XmNmwmFunctions, kFunctions, XmNdeleteResponse,
                                     XmDO_NOTHING, XmNallowShellResize, True, nullptr);
  // The toolkit realizes the shell for its first child.
  inner = createBoard(shellWidget, XmRESIZE_ANY);
  announceWindow(shellWidget, ziWindowType::dialog, text.c_str());
  mainWidget = createBoard(inner, XmRESIZE_NONE);
  XtVaSetValues(mainWidget, XmNuserData, this, nullptr);
  XtManageChild(mainWidget);
  addEventHandlers();
  connect<&zDialogFrame::shellFocus>(shellWidget, kFocusEvents, this);
  connect<&zDialogFrame::endDialog>(shellWidget, kCloseRequest, this);
  takeParentsFont();
  zDialogFrame::moveResize(place.left, place.top, place.width(), place.height());
}

zDialogFrame::~zDialogFrame() {
  if (hasState(kWidgetGone)) {
    return;
  }
  disconnect<&zDialogFrame::shellFocus>(shellWidget, kFocusEvents, this);
  disconnect<&zDialogFrame::endDialog>(shellWidget, kCloseRequest, this);
  popDown();
}

void zDialogFrame::focusFirst() {
  zWindow* target = firstFocus;
  zWindowDlist::Iter walk(children());
  while (zWindow* child = target == nullptr ? walk.next() : nullptr) {
    target = canTakeFocus(child) ? child : nullptr;
  }
  if (target == nullptr) {
    return;
  }
  target->startFocusTimer();
  XmProcessTraversal(target->innerWidget() != nullptr ? target->innerWidget() : target->widget(),
                     XmTRAVERSE_CURRENT);
}

void zDialogFrame::moveResize(int x, int y, int width, int height) {
  // The toolkit realizes a dialog shell with its first child; the board comes with the first run.
  zDimension allowance;
  if (isRealized()) {
    zRect exterior;
    getExterior(exterior);
    allowance = decorationAllowance(exterior);
  }
  const zDimension client = notEmpty({width - allowance.width, height - allowance.height});
  XtVaSetValues(mainWidget, XmNx, 0, XmNy, 0, XmNwidth, client.width, XmNheight, client.height,
                nullptr);
  for (Widget outside : {inner, shellWidget}) {
    XtVaSetValues(outside, XmNx, x, XmNy, y, XmNwidth, client.width, XmNheight, client.height,
                  nullptr);
  }
  sizer()->setPos({x, y});
  sizer()->setSize({width, height});
}

zDimension zDialogFrame::clientSize(const zFrameWin& frame) {
  return widgetSize(frame.shell());
}

zDimension zDialogFrame::decorationOfOwner() {
  zFrameWin* owner = zApp::instance()->mainWindow();
  if (owner == nullptr || owner->shell() == nullptr || !XtIsRealized(owner->shell())) {
    return {};
  }
  zRect whole;
  owner->getExterior(whole);
  const zDimension client = clientSize(*owner);
  return {std::max(whole.width() - client.width, 0), std::max(whole.height() - client.height, 0)};
}

void zDialogFrame::popUp(int fullModal) {
  if (modality == 0) {
    const int inputMode =
        fullModal == 1 ? MWM_INPUT_FULL_APPLICATION_MODAL : MWM_INPUT_PRIMARY_APPLICATION_MODAL;
    XtVaSetValues(shellWidget, XmNmwmInputMode, inputMode, nullptr);
  }
  focusPending = true;
  makeTabStops(mainWidget);
  modalShell.up(shellWidget);
  XtManageChild(inner);
  XtPopup(shellWidget, XtGrabNone);
}

void zDialogFrame::popDown() {
  modalShell.down();
  // With its child the toolkit takes the shell off the screen.
  XtUnmanageChild(inner);
}
