// The buttons: push buttons, toggles and the frame of a group; and static texts, which are labels
// as they are.
//
// A push button may be placed in little more than the height of its text (rows of command buttons
// are), so the toolkit's margins are not used, and shadow and focus rectangle get thin before the
// text is cut.

#include "framework/controls/button.h"

#include <algorithm>
#include <utility>

#include "framework/controls/widgets_xm.h"
#include "framework/core/window_events_xm.h"

#include <Xm/PrimitiveP.h>

namespace {

constexpr int kShadow = 2;
constexpr int kHighlight = 2;
// Marks a default button. The toolkit's own mark takes sixteen pixels off the height.
constexpr Dimension kDefaultBorder = 1;

XtTranslations returnTranslations() {
  static const XtTranslations parsed = XtParseTranslationTable(
      "\t<Key>Return: ArmAndActivate()\n\t<Key>osfActivate: ArmAndActivate()");
  return parsed;
}

// The toolkit's action gives the button the focus if traversal may reach it. Its resource says so
// too, but setting that one also replaces translations.
void armWithoutFocus(Widget button, XEvent* press) {
  Boolean& isReachable = reinterpret_cast<XmPrimitiveWidget>(button)->primitive.traversal_on;
  const Boolean before = std::exchange(isReachable, Boolean{False});
  XtCallActionProc(button, "Arm", press, nullptr, 0);
  isReachable = before;
}

}  // namespace

zButton::zButton(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* initialText,
                 int id)
    : zControl(parent, sizer, style, initialText, id) {
  markClass(kClassButton);
}

void zButton::createPushButton(bool isDefault) {
  Arg args[1];
  Widget button =
      XmCreatePushButton(createHolder(), const_cast<char*>("PushButton"), args, Cardinal{0});
  const Dimension border = isDefault ? kDefaultBorder : borderWidth(style());
  XtVaSetValues(button, XmNrecomputeSize, False, XmNtraversalOn, isTabStop(style()), XmNborderWidth,
                border, XmNmarginHeight, 0, XmNmarginWidth, 0, XmNshadowThickness, kShadow,
                nullptr);
  XtOverrideTranslations(button, returnTranslations());
  showLabelText(button, zWindow::text);
  if ((style() & kButtonImage) != 0) {
    showStockImage(button, id());
  }
  connect<&zButton::onPressed<XmAnyCallbackStruct>>(button, callback::activate, this);
  finishCreation(kKindButton, button);
  fitEdges();
}

// Gives shadow and focus rectangle the room that the text leaves of a push button's height. The
// holder is asked: it has its size before the button is laid out in it.
void zButton::fitEdges() {
  if (!XmIsPushButton(widget())) {
    return;
  }
  Dimension height = 0;
  Dimension border = 0;
  XtVaGetValues(holder(), XmNheight, &height, nullptr);
  XtVaGetValues(widget(), XmNborderWidth, &border, nullptr);
  const int room = std::max((height - 2 * border - labelTextSize(widget()).height) / 2, 0);
  const int shadow = std::clamp(room - 1, 1, kShadow);
  XtVaSetValues(widget(), XmNshadowThickness, shadow, XmNhighlightThickness,
                std::clamp(room - shadow, 0, kHighlight), nullptr);
}

void zButton::createToggle(const char* name, unsigned char indicator) {
  Arg args[1];
  const unsigned char mark = indicator == XmN_OF_MANY ? XmINDICATOR_CHECK_BOX : XmINDICATOR_FILL;
  Widget toggle = XmCreateToggleButton(createHolder(), const_cast<char*>(name), args, Cardinal{0});
  XtVaSetValues(toggle, XmNrecomputeSize, False, XmNindicatorType, indicator, XmNalignment,
                XmALIGNMENT_BEGINNING, XmNindicatorOn, mark, XmNtraversalOn, isTabStop(style()),
                XmNborderWidth, borderWidth(style()), XmNmarginHeight, 0, nullptr);
  showLabelText(toggle, zWindow::text);
  connect<&zButton::onPressed<XmToggleButtonCallbackStruct>>(toggle, callback::toggled, this);
  finishCreation(kKindButton, toggle);
}

template <class Data>
void zButton::onPressed(Data* data) {
  notifyParent(kNotifyClicked, data->event);
}

bool zButton::pressArrived(zEvent& event) {
  if (takesFocus) {
    return zControl::pressArrived(event);
  }
  const XButtonEvent& press = event.xevent->xbutton;
  if (press.button == Button1 && !isControlDown(press.state)) {
    armWithoutFocus(widget(), event.xevent);
  }
  return true;
}

void zButton::comeUp() {
  XtCallActionProc(widget(), "Disarm", nullptr, nullptr, 0);
}

void zButton::setText(const char* newText) {
  zControl::setText(newText);
  showLabelText(labelWidget(), zWindow::text);
}

void zButton::moveResize(int x, int y, int width, int height) {
  zControl::moveResize(x, y, width, height);
  fitEdges();
}

void zButton::applyFontToWidget() {
  zControl::applyFontToWidget();
  fitEdges();
}

zPushButton::zPushButton(zWindow* parent, zSizer* sizer, std::uint32_t style,
                         const char* initialText, int id)
    : zButton(parent, sizer, style, initialText, id) {
  markClass(kClassPushButton);
  createPushButton(false);
}

zDefPushButton::zDefPushButton(zWindow* parent, zSizer* sizer, std::uint32_t style,
                               const char* initialText, int id)
    : zButton(parent, sizer, style, initialText, id) {
  markClass(kClassDefPushButton);
  createPushButton(true);
}

void ziToggle::check(bool on) {
  XmToggleButtonSetState(widget(), on ? True : False, False);
}

bool ziToggle::checked() const {
  return XmToggleButtonGetState(widget()) != False;
}

int ziToggle::storeData() {
  if (boundValue == nullptr) {
    return 0;
  }
  *boundValue = checked() ? 1 : 0;
  return 1;
}

int ziToggle::showData() {
  if (boundValue == nullptr) {
    return 0;
  }
  check(*boundValue != 0);
  return 1;
}

zCheckBox::zCheckBox(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* initialText,
                     int id)
    : ziToggle(parent, sizer, style, initialText, id) {
  markClass(kClassCheckBox);
  createToggle("CheckBox", XmN_OF_MANY);
}

zRadioButton::zRadioButton(zWindow* parent, zSizer* sizer, std::uint32_t style,
                           const char* initialText, int id)
    : ziToggle(parent, sizer, style, initialText, id) {
  markClass(kClassRadioButton);
  createToggle("RadioButton", XmONE_OF_MANY);
}

zGroupBox::zGroupBox(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* initialText,
                     int id)
    : zButton(parent, sizer, style, initialText, id) {
  markClass(kClassGroupBox);
  Widget frame = XtVaCreateWidget("Frame", xmFrameWidgetClass, createHolder(), XmNborderWidth,
                                  borderWidth(style), nullptr);
  title = XtVaCreateWidget("Label", xmLabelWidgetClass, frame, XmNframeChildType,
                           XmFRAME_TITLE_CHILD, nullptr);
  setText(zWindow::text.c_str());
  finishCreation(kKindButton, frame);
}

void zGroupBox::setText(const char* newText) {
  zButton::setText(newText);
  // An empty title would still cut a gap into the frame's upper edge.
  if (zWindow::text.isEmpty()) {
    XtUnmanageChild(title);
  } else {
    XtManageChild(title);
  }
}

void zGroupBox::setRelief(Relief relief) {
  unsigned char shadow = XmSHADOW_ETCHED_IN;
  if (relief != Relief::etched) {
    shadow = relief == Relief::sunken ? unsigned{XmSHADOW_IN} : unsigned{XmSHADOW_OUT};
  }
  XtVaSetValues(widget(), XmNshadowType, shadow, nullptr);
}

void zGroupBox::applyFontToWidget() {
  showFont(title, fontObject());
}

void zGroupBox::applyBackground() {
  zButton::applyBackground();
  colourWidget(title, background());
}

zStaticText::zStaticText(zWindow* parent, zSizer* sizer, std::uint32_t style,
                         const char* initialText, int id)
    : zControl(parent, sizer, style, initialText, id) {
  markClass(kClassStaticText);
  const unsigned char alignment =
      (style & kStaticCentred) != 0 ? XmALIGNMENT_CENTER : XmALIGNMENT_BEGINNING;
  Widget label =
      XtVaCreateWidget("Label", xmLabelWidgetClass, createHolder(), XmNrecomputeSize, False,
                       XmNalignment, alignment, XmNborderWidth, borderWidth(style), XmNtraversalOn,
                       isTabStop(style), XmNmarginHeight, 0, nullptr);
  showLabelText(label, zWindow::text);
  finishCreation(kKindStatic, label);
}

void zStaticText::setText(const char* newText) {
  zControl::setText(newText);
  showLabelText(widget(), zWindow::text);
}

zDimension zStaticText::textSize() const {
  return labelTextSize(widget());
}
