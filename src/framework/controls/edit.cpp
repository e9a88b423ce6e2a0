// The edit controls on the toolkit's text widget. Every operation that the log uses costs the same
// whatever the length of the text: none of them reads the text out. Notifications go out from
// inside the widget's callbacks, so an operation that changes the text may destroy the control. The
// widgets are made in edit_create.cpp.

#include "framework/controls/edit.h"

#include <algorithm>
#include <utility>

#include "framework/controls/text_widget_xm.h"
#include "framework/core/connect_xm.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/xm_handles_xm.h"
#include "framework/draw/x_font_xm.h"
#include "support/line_text.h"

#include <X11/IntrinsicP.h>

namespace {

Time lastTime(Widget text) {
  return XtLastTimestampProcessed(XtDisplay(text));
}

}  // namespace

/// The program's own changes are not put to verifyChange. Lives through the control's destruction.
class zEditBase::Unverified {
 public:
  explicit Unverified(zEditBase& changed) : edit(changed), alive(&changed) {
    previous = std::exchange(edit.verifying, false);
  }
  Unverified(const Unverified&) = delete;
  Unverified& operator=(const Unverified&) = delete;
  ~Unverified() {
    if (alive) {
      edit.verifying = previous;
    }
  }
  bool isAlive() const { return static_cast<bool>(alive); }

 private:
  zEditBase& edit;
  ziAlive alive;
  bool previous;
};

zEditBase::zEditBase(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* initialText,
                     int id)
    : zControl(parent, sizer, style, initialText, id) {
  markClass(kClassEditBase);
  if ((style & kEditMultiLine) != 0) {
    createBox();
  } else {
    createLine();
  }
  connect<&zEditBase::onVerify<XmTextVerifyCallbackStruct>>(widget(), callback::modifyVerify, this);
  connect<&zEditBase::onChanged<XmAnyCallbackStruct>>(widget(), callback::textChanged, this);
  connect<&zEditBase::onLosingFocus<XmTextVerifyCallbackStruct>>(widget(), callback::losingFocus,
                                                                 this);
  connect<&zEditBase::onFocus<XmAnyCallbackStruct>>(widget(), callback::focus, this);
  connect<&zEditBase::onActivate<XmAnyCallbackStruct>>(widget(), callback::activate, this);
}

zEditBase::~zEditBase() {
  disconnect<&zEditBase::onVerify<XmTextVerifyCallbackStruct>>(widget(), callback::modifyVerify,
                                                               this);
  disconnect<&zEditBase::onChanged<XmAnyCallbackStruct>>(widget(), callback::textChanged, this);
  disconnect<&zEditBase::onLosingFocus<XmTextVerifyCallbackStruct>>(widget(), callback::losingFocus,
                                                                    this);
  disconnect<&zEditBase::onFocus<XmAnyCallbackStruct>>(widget(), callback::focus, this);
  disconnect<&zEditBase::onActivate<XmAnyCallbackStruct>>(widget(), callback::activate, this);
  // The bars die with the holder; the window must not destroy them one by one.
  if (Widget bar = std::exchange(vertScrollWidget, nullptr)) {
    disconnectScrollBar<zVertScrollProc>(bar, this);
  }
  if (Widget bar = std::exchange(horzScrollWidget, nullptr)) {
    disconnectScrollBar<zHorzScrollProc>(bar, this);
  }
}

void zEditBase::applyFontToWidget() {
  zControl::applyFontToWidget();
  fitLine();
  // The widget counts the lines that it can show only when it draws or is resized; until then it
  // takes positions for visible that are not any more.
  if ((style() & kEditMultiLine) != 0) {
    XtClass(widget())->core_class.resize(widget());
  }
}

void zEditBase::moveResize(int x, int y, int width, int height) {
  zControl::moveResize(x, y, width, height);
  fitLine();
}

void zEditBase::applyBackground() {
  zControl::applyBackground();
  colourWidget(vertScrollWidget, background());
  colourWidget(horzScrollWidget, background());
}

template <class Data>
void zEditBase::onVerify(Data* data) {
  if (!verifying) {
    return;
  }
  if (isStrayKey(*data)) {
    data->doit = False;
    return;
  }
  if (isLine()) {
    replaceInserted(*data, singleLine(insertedText(*data)));
  }
  const zTextRange range{static_cast<int>(data->startPos), static_cast<int>(data->endPos)};
  data->doit = verifyChange(range, insertedText(*data)) ? True : False;
}

template <class Data>
void zEditBase::onChanged(Data* data) {
  notifyParent(kEditChanged, data->event);
}

template <class Data>
void zEditBase::onFocus(Data* data) {
  notifyParent(kEditFocusGained, data->event);
}

template <class Data>
void zEditBase::onLosingFocus(Data* data) {
  notifyParent(kEditFocusLost, data->event);
}

template <class Data>
void zEditBase::onActivate(Data* data) {
  notifyParent(kEditReturn, data->event);
}

bool zEditBase::verifyChange(zTextRange /*range*/, std::string_view /*inserted*/) {
  return true;
}

int zEditBase::keyArrived(zEvent& /*event*/, bool /*typed*/) {
  return 0;
}

void zEditBase::setText(const char* newText) {
  Widget edit = settledWidget();
  // A second copy of a log is not kept.
  lastText = isLine() ? RWCString(newText) : RWCString();
  if (edit == nullptr) {
    zWindow::text = newText;
    return;
  }
  const Unverified change(*this);
  std::string line;
  const char* shown = shownForm(newText, line);
  if (!XtIsManaged(edit)) {
    XtVaSetValues(edit, XmNvalue, shown, nullptr);
    return;
  }
  XmTextSetString(edit, xmText(shown));
  if (change.isAlive()) {
    XmTextSetInsertionPosition(edit, XmTextGetLastPosition(edit));
  }
}

// Several lines go in as they are: a copy of a log would cost more than its insertion.
const char* zEditBase::shownForm(const char* newText, std::string& line) const {
  if (!isLine()) {
    return newText;
  }
  line = singleLine(newText);
  return line.c_str();
}

RWCString zEditBase::text() const {
  // Straight into the string, without the toolkit's copy: a log may be large.
  std::string all(static_cast<std::size_t>(textLength()), '\0');
  const int count = static_cast<int>(all.size());
  XmTextGetSubstring(widget(), 0, count, count + 1, all.data());
  return RWCString(std::move(all));
}

Widget zEditBase::settledWidget() const {
  settle();
  return widget();
}

int zEditBase::textLength() const {
  return static_cast<int>(XmTextGetLastPosition(settledWidget()));
}

void zEditBase::setSelection(int from, int to) {
  if (XtIsRealized(settledWidget())) {
    // A range past the end would select nothing at all; cut to nothing it clears the selection.
    const int last = std::clamp(to, 0, textLength());
    const int first = std::clamp(from, 0, last);
    XmTextSetSelection(widget(), first, last, lastTime(widget()));
  }
  XmTextSetInsertionPosition(widget(), to);
}

void zEditBase::selectForTyping() {
  ::selectForTyping(settledWidget());
}

std::optional<zTextRange> zEditBase::selectionRange() const {
  XmTextPosition left = 0;
  XmTextPosition right = 0;
  if (XmTextGetSelectionPosition(settledWidget(), &left, &right) == False || left >= right) {
    return std::nullopt;
  }
  return zTextRange{static_cast<int>(left), static_cast<int>(right)};
}

RWCString zEditBase::selection() const {
  return takeXtText(XmTextGetSelection(settledWidget()));
}

int zEditBase::insertionPosition() const {
  return static_cast<int>(XmTextGetInsertionPosition(settledWidget()));
}

void zEditBase::replaceSelection(const char* newText) {
  const std::optional<zTextRange> range = selectionRange();
  if (!range) {
    insertAt(insertionPosition(), newText);
    return;
  }
  const Unverified change(*this);
  // A read-only widget refuses to be cut.
  if (XmTextCut(widget(), lastTime(widget())) == False && change.isAlive()) {
    XmTextReplace(widget(), range->from, range->to, xmText(""));
  }
  if (change.isAlive()) {
    insertAt(range->from, newText);
  }
}

void zEditBase::insertAt(int position, const char* newText) {
  Widget edit = settledWidget();
  const Unverified change(*this);
  const XmTextPosition before = XmTextGetLastPosition(edit);
  const XmTextPosition at = std::clamp<XmTextPosition>(position, 0, before);
  std::string line;
  XmTextInsert(edit, at, xmText(shownForm(newText, line)));
  if (change.isAlive()) {
    XmTextSetInsertionPosition(edit, at + (XmTextGetLastPosition(edit) - before));
  }
}

void zEditBase::setMaxLength(int length) {
  XmTextSetMaxLength(widget(), length == 0 ? kDefaultMaxLength : length);
}

void zEditBase::scroll(int lines) {
  XmTextScroll(settledWidget(), lines);
}

bool zEditBase::isInView(int position) const {
  Position x = 0;
  Position y = 0;
  return XtIsRealized(settledWidget()) != False &&
         XmTextPosToXY(widget(), position, &x, &y) != False;
}

void zEditBase::bringIntoView(int position) {
  XmTextShowPosition(settledWidget(), position);
}

int zEditBase::linesHeight() const {
  Dimension height = 0;
  Dimension shadow = 0;
  Dimension highlight = 0;
  Dimension margin = 0;
  XtVaGetValues(widget(), XmNheight, &height, XmNshadowThickness, &shadow, XmNhighlightThickness,
                &highlight, XmNmarginHeight, &margin, nullptr);
  return height - 2 * (shadow + highlight + margin);
}

void zEditBase::cut() {
  XmTextCut(settledWidget(), lastTime(widget()));
}

void zEditBase::copy() {
  XmTextCopy(settledWidget(), lastTime(widget()));
}

void zEditBase::paste() {
  XmTextPaste(settledWidget());
}

int zEditBase::storeData() {
  if (boundString == nullptr) {
    return 0;
  }
  RWCString current = text();
  const bool isUntouched = isLine() && current.view() == singleLine(lastText.view());
  *boundString = isUntouched ? lastText : std::move(current);
  return 1;
}

int zEditBase::showData() {
  if (boundString == nullptr) {
    return 0;
  }
  setText(boundString->c_str());
  return 1;
}

zEditLine::zEditLine(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* initialText,
                     int id)
    : zEditBase(parent, sizer, style & ~kEditMultiLine, initialText, id) {
  markClass(kClassEditLine);
}

zEditBox::zEditBox(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* initialText,
                   int id)
    : zEditBase(parent, sizer, style | kEditMultiLine, initialText, id) {
  markClass(kClassEditBox);
}
