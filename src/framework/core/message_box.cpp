// Message boxes on Motif's message dialogs. The three buttons of such a dialog are called OK,
// Cancel and Help by Motif, whatever they are labelled.
//
// Everything may happen while a box waits: another box, the end of the application, the end of the
// parent and with it of the dialog. The wait looks at all of them, and nothing refers to the box's
// object once its constructor returns, although Motif may destroy the widget later.

#include "framework/core/message_box.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/core/modal_shell.h"
#include "framework/core/window.h"

#include "framework/core/connect_xm.h"
#include "framework/core/xm_handles_xm.h"

namespace {

// Shared by all boxes, so that an inner box's end ends the wait of an outer one.
bool done = false;

struct Button {
  const char* label = "NotRequired";
  int value = kAnswerNone;

  bool isUsed() const { return value != kAnswerNone; }
};

using Buttons = std::array<Button, 3>;

constexpr Button kOkButton{"OK", kAnswerOk};
constexpr Button kCancelButton{"Cancel", kAnswerCancel};
constexpr Button kRetryButton{"Retry", kAnswerRetry};
constexpr Button kYesButton{"Yes", kAnswerYes};
constexpr Button kNoButton{"No", kAnswerNo};

Buttons buttonsOf(int style) {
  switch (style & kBoxButtonsMask) {
    case kBoxOk:
      return {kOkButton};
    case kBoxAbortRetryIgnore:
      return {Button{"Abort", kAnswerAbort}, kRetryButton, Button{"Ignore", kAnswerIgnore}};
    case kBoxYesNoCancel:
      return {kYesButton, kNoButton, kCancelButton};
    case kBoxYesNo:
      return {kYesButton, kNoButton};
    case kBoxRetryCancel:
      return {kRetryButton, kCancelButton};
    default:
      return {kOkButton, kCancelButton};
  }
}

using DialogMaker = Widget (*)(Widget parent, char* name, Arg* arguments, Cardinal count);

DialogMaker makerOf(int style) {
  switch (style & kBoxIconMask) {
    case kBoxStop:
      return XmCreateErrorDialog;
    case kBoxQuestion:
      return XmCreateQuestionDialog;
    case kBoxWarning:
      return XmCreateWarningDialog;
    case kBoxInformation:
      return XmCreateInformationDialog;
    default:
      return XmCreateMessageDialog;
  }
}

unsigned char dialogStyleOf(int style) {
  switch (style & kBoxModalityMask) {
    case kBoxSystemModal:
      return XmDIALOG_SYSTEM_MODAL;
    case kBoxFullModal:
      return XmDIALOG_FULL_APPLICATION_MODAL;
    default:
      return XmDIALOG_PRIMARY_APPLICATION_MODAL;
  }
}

// A text beyond this is shown in a scrolled area, so that the buttons stay on the screen.
constexpr int kMostLines = 40;
constexpr int kMostColumns = 140;
constexpr short kScrolledRows = 30;
constexpr short kScrolledColumns = 100;

bool fitsLabel(std::string_view text) {
  int lines = 1;
  int columns = 0;
  for (const char c : text) {
    columns = c == '\n' ? 0 : columns + 1;
    lines += c == '\n' ? 1 : 0;
    if (lines > kMostLines || columns > kMostColumns) {
      return false;
    }
  }
  return true;
}

void addScrolledText(Widget box, const char* text) {
  Arg arguments[] = {
      {const_cast<char*>(XmNeditMode), XmMULTI_LINE_EDIT},
      {const_cast<char*>(XmNeditable), False},
      {const_cast<char*>(XmNcursorPositionVisible), False},
      {const_cast<char*>(XmNtraversalOn), False},
      {const_cast<char*>(XmNwordWrap), True},
      {const_cast<char*>(XmNscrollHorizontal), False},
      {const_cast<char*>(XmNrows), kScrolledRows},
      {const_cast<char*>(XmNcolumns), kScrolledColumns},
  };
  Widget area =
      XmCreateScrolledText(box, const_cast<char*>("MessageText"), arguments, XtNumber(arguments));
  XmTextSetString(area, const_cast<char*>(text));
  XtManageChild(area);
}

}  // namespace

/// The dialog of one box.
class ziMessageBox final : public ziModalBox {
 public:
  ziMessageBox(zMessage& owner, Widget shell, const char* text, const char* title, int style);
  ~ziMessageBox() override;

 private:
  void onOk() override { pressed(0); }
  void onCancel() override { pressed(1); }
  void onHelp() override { pressed(2); }
  void onClose() override { answer(closeValue); }
  void onGone() override { done = true; }
  bool onKey(XEvent& event);
  void pressed(std::size_t button);
  void answer(int value);

  void setUpButtons(const Buttons& buttons);
  void softenModality();

  static constexpr zEventKinds kKeys{KeyPressMask, false, XtListHead};

  zMessage& message;
  std::array<int, 3> values{};  ///< answers of the buttons
  int closeValue = kAnswerNone;
};

namespace {

constexpr unsigned char kButtonChildren[] = {XmDIALOG_OK_BUTTON, XmDIALOG_CANCEL_BUTTON,
                                             XmDIALOG_HELP_BUTTON};
constexpr const char* kLabelResources[] = {XmNokLabelString, XmNcancelLabelString,
                                           XmNhelpLabelString};

Widget buttonWidget(Widget box, std::size_t index) {
  return XmMessageBoxGetChild(box, kButtonChildren[index]);
}

Widget createBox(zMessage& message, Widget shell, const char* text, const char* title, int style) {
  const bool isShort = fitsLabel(text);
  const zXmString messageString(isShort ? text : "");
  const zXmString titleString(title);
  Arg arguments[] = {
      {const_cast<char*>(XmNdialogTitle), reinterpret_cast<XtArgVal>(titleString.get())},
      {const_cast<char*>(XmNmessageString), reinterpret_cast<XtArgVal>(messageString.get())},
      {const_cast<char*>(XmNmessageAlignment), XmALIGNMENT_BEGINNING},
      {const_cast<char*>(XmNdefaultPosition), True},
      {const_cast<char*>(XmNuserData), reinterpret_cast<XtArgVal>(&message)},
      {const_cast<char*>(XmNdeleteResponse), XmDO_NOTHING},
      {const_cast<char*>(XmNautoUnmanage), False},
      {const_cast<char*>(XmNdialogStyle), dialogStyleOf(style)},
  };
  Widget box =
      makerOf(style)(shell, const_cast<char*>("MessageBox"), arguments, XtNumber(arguments));
  if (!isShort) {
    addScrolledText(box, text);
  }
  return box;
}

}  // namespace

ziMessageBox::ziMessageBox(zMessage& owner, Widget shell, const char* text, const char* title,
                           int style)
    : message(owner) {
  const Buttons buttons = buttonsOf(style);
  values = {buttons[0].value, buttons[1].value, buttons[2].value};
  const bool hasCancel = std::find(values.begin(), values.end(), kAnswerCancel) != values.end();
  closeValue = hasCancel ? kAnswerCancel : values[1];
  take(createBox(message, shell, text, title, style), title);
  setUpButtons(buttons);
  softenModality();
  // Motif's own Escape presses the second button, which is not the one called Cancel everywhere and
  // may not be there.
  connect<&ziMessageBox::onKey>(box, kKeys, this);
}

ziMessageBox::~ziMessageBox() {
  if (box != nullptr) {
    disconnect<&ziMessageBox::onKey>(box, kKeys, this);
  }
}

void ziMessageBox::setUpButtons(const Buttons& buttons) {
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    const zXmString label(buttons[i].label);
    XtVaSetValues(box, kLabelResources[i], label.get(), nullptr);
    Widget button = buttonWidget(box, i);
    XtVaSetValues(button, XmNnavigationType, XmTAB_GROUP, nullptr);
    if (!buttons[i].isUsed()) {
      XtUnmanageChild(button);
    }
  }
}

// The window manager would give the keyboard to nothing else, not even to a dialog that comes up
// over the box: neither could then be answered.
void ziMessageBox::softenModality() {
  int inputMode = MWM_INPUT_MODELESS;
  XtVaGetValues(XtParent(box), XmNmwmInputMode, &inputMode, nullptr);
  if (inputMode == MWM_INPUT_SYSTEM_MODAL) {
    XtVaSetValues(XtParent(box), XmNmwmInputMode, MWM_INPUT_FULL_APPLICATION_MODAL, nullptr);
  }
}

bool ziMessageBox::onKey(XEvent& event) {
  Modifiers used = 0;
  KeySym keysym = NoSymbol;
  XtTranslateKeycode(XtDisplay(box), static_cast<KeyCode>(event.xkey.keycode), event.xkey.state,
                     &used, &keysym);
  if (keysym == osfXK_Cancel) {
    answer(closeValue);
  }
  return keysym == osfXK_Cancel;
}

// The keys that mean a button may come where it is not there.
void ziMessageBox::pressed(std::size_t button) {
  if (values[button] != kAnswerNone) {
    answer(values[button]);
  }
}

void ziMessageBox::answer(int value) {
  message.result = value;
  done = true;
}

zMessage::zMessage(zWindow* parent, const char* text, const char* title, int style) {
  Widget shell = shellAbove(parent);
  if (shell == nullptr) {
    return;
  }
  done = false;
  zApp* app = zApp::instance();
  {
    ziMessageBox box(*this, shell, text == nullptr ? "" : text, title == nullptr ? "" : title,
                     style);
    box.show();
    // What a program that is on its way out still asks gets its answer.
    const bool wasRunning = app->isRunning();
    while (!done && app->isRunning() == wasRunning) {
      app->processEvent();
    }
  }
  // An outer loop may stand in an idle pass, which hides the end of this box from it.
  app->wake();
}
