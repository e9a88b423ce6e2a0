// zControl: the holder and the widget in it. Whatever concerns the place on the screen is done to
// the holder; the parent's layout never sees the widget. The holder takes no part in negotiations
// about sizes, so no font and no text ever moves or shrinks the widget in it.

#include "framework/controls/control.h"

#include "framework/controls/widgets_xm.h"
#include "framework/core/show_together.h"
#include "framework/core/window_events_xm.h"

namespace {

constexpr zEventKinds kHolderEvents{StructureNotifyMask};
// Before the widget's own, so that an event can be kept from it.
constexpr zEventKinds kWidgetEvents{kWindowEvents.mask, false, XtListHead};

bool isUnknown(const zDimension& size) {
  return size.width == kNotSet || size.height == kNotSet;
}

}  // namespace

zControl::zControl(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* initialText,
                   int id)
    : zChildWin(parent, sizer, style) {
  markClass(kClassControl);
  setClassName("CtrlWindowCL");
  setId(id);
  zWindow::text = initialText;
}

zControl::~zControl() {
  if (outerForm == nullptr) {
    return;
  }
  disconnect<&zControl::onHolderEvent>(outerForm, kHolderEvents, this);
  if (mainWidget != nullptr) {
    zControl::removeEventHandlers();
  }
  // The holder takes all widgets with it.
  mainWidget = outerForm;
  inner = nullptr;
}

void zControl::removeEventHandlers() {
  disconnect<&zControl::onWidgetEvent>(mainWidget, kWidgetEvents, this);
}

void zControl::settleSize(zDimension unknownSize) {
  zSizer* above = sizer()->parent();
  if (isUnknown(sizer()->size()) && above != nullptr && !isUnknown(above->size())) {
    above->update(nullptr);
  }
  if (isUnknown(sizer()->size())) {
    sizer()->setSize(unknownSize);
  }
  const zPoint pos = sizer()->pos();
  sizer()->setPos({pos.x == kNotSet ? 0 : pos.x, pos.y == kNotSet ? 0 : pos.y});
}

Widget zControl::createHolder(HolderClass holderClass, zDimension unknownSize) {
  settleSize(unknownSize);
  const zRect place = sizer()->rect();
  const bool isForm = holderClass == HolderClass::form;
  Widget outer = parent()->widget();
  outerForm = XtVaCreateWidget(
      isForm ? "Form" : "BulletinBoard", isForm ? xmFormWidgetClass : xmBulletinBoardWidgetClass,
      outer, XmNuserData, this, XmNmarginWidth, 0, XmNmarginHeight, 0, XmNresizePolicy,
      XmRESIZE_NONE, XmNx, toXCoord(place.left), XmNy, toXCoord(place.top), XmNwidth,
      toWidgetExtent(place.width()), XmNheight, toWidgetExtent(place.height()), nullptr);
  if (XmIsFrame(outer)) {
    // A frame lays out one child; the controls in a group box have their own places.
    XtVaSetValues(outerForm, XmNframeChildType, XmFRAME_GENERIC_CHILD, nullptr);
  }
  connect<&zControl::onHolderEvent>(outerForm, kHolderEvents, this);
  return outerForm;
}

void zControl::finishCreation(zControlKind newKind, Widget realWidget, Widget filler) {
  controlKind = newKind;
  mainWidget = realWidget;
  filling = filler != nullptr ? filler : realWidget;
  XtVaSetValues(realWidget, XmNuserData, this, nullptr);
  if (XmIsForm(outerForm)) {
    XtVaSetValues(filling, XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM,
                  XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM, nullptr);
  }
  XtManageChild(realWidget);
  if (filling != realWidget) {
    XtManageChild(filling);
  }
  connect<&zControl::onWidgetEvent>(realWidget, kWidgetEvents, this);
  if ((style() & kStyleDisabled) != 0) {
    applySensitivity(false);
  }
  takeParentsFont();
  if (takesParentColour()) {
    setBackground(parent()->backgroundColour());
  }
  if ((style() & kStyleVisible) != 0) {
    show(kShowNormal);
  }
}

bool zControl::takesParentColour() const {
  return (controlKind == kKindButton || controlKind == kKindStatic) &&
         parent()->background() != kNoBackground;
}

void zControl::setText(const char* newText) {
  zWindow::text = newText;
}

RWCString zControl::text() const {
  return zWindow::text;
}

int zControl::storeData() {
  return 0;
}

int zControl::showData() {
  return 0;
}

int zControl::storeChildren() {
  if (zChildWin::storeChildren() == 0) {
    return 0;
  }
  storeData();
  return 1;
}

int zControl::notifyParent(int code, XEvent* xevent) {
  if (parent() == nullptr) {
    return 0;
  }
  zEvent event = zEvent::of(kMsgCommand, id(), this);
  event.lparam = code;
  event.xevent = xevent;
  return zDispatch(event, parent());
}

int zControl::typingArrived(zEvent& /*event*/) {
  return 0;
}

int zControl::keyArrived(zEvent& event, bool typed) {
  if (!typed) {
    return 0;
  }
  event.message = kMsgChar;
  return character(&event);
}

void zControl::show(int state) {
  if (!hasState(kShown)) {
    setState(kShown, true);
    setStyle(state != kShowHide ? style() | kStyleVisible : style());
  }
  setShowState(state);
}

void zControl::setShowState(int state) {
  if (outerForm == nullptr) {
    return;
  }
  manageWidget(outerForm, state != kShowHide);
}

void zControl::moveResize(int x, int y, int width, int height) {
  if (outerForm != nullptr) {
    configureWidget(outerForm, x, y, width, height);
  }
  sizer()->setPos({x, y});
  sizer()->setSize({width, height});
}

void zControl::setBackground(const zColor& colour) {
  zChildWin::setBackground(colour);
  applyBackground();
}

void zControl::applyBackground() {
  for (Widget painted : {outerForm, filling, mainWidget}) {
    colourWidget(painted, background());
  }
}

void zControl::colourWidget(Widget painted, std::uint32_t pixel) {
  if (painted != nullptr) {
    // Shadows and the text's colour follow the background.
    XmChangeColor(painted, pixel);
  }
}
