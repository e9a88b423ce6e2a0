// The edit controls on the toolkit's text widget. Every operation that the log uses costs the same
// whatever the length of the text: none of them reads the text out. Notifications go out from
// inside the widget's callbacks, so an operation that changes the text may destroy the control.

#include "framework/controls/edit.h"

#include <algorithm>
#include <utility>

#include "framework/controls/widgets_xm.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/xm_handles_xm.h"
#include "framework/draw/x_font_xm.h"
#include "support/text.h"

#include <X11/IntrinsicP.h>

namespace {

constexpr Dimension kLineWidth = 100;
constexpr Dimension kTextMargin = 1;
// Room for the left half of the I-beam before the first letter.
constexpr Dimension kTextSideMargin = 4;
constexpr int kLineHighlight = 2;
constexpr Dimension kBorderShadow = 2;
constexpr Dimension kPlainShadow = 1;
constexpr Dimension kScrollSpacing = 1;

// Resources of text widgets of either kind, in the form of the toolkit's creation calls.
class TextArgs {
 public:
  TextArgs(std::uint32_t style, unsigned char editMode, const RWCString& text) {
    const bool isReadOnly = (style & kEditReadOnly) != 0;
    add(XmNeditMode, editMode);
    add(XmNvalue, text.c_str());
    add(XmNwordWrap, True);
    add(XmNverifyBell, False);
    add(XmNeditable, isReadOnly ? False : True);
    add(XmNcursorPositionVisible, isReadOnly ? False : True);
    add(XmNtraversalOn, isTabStop(style));
    add(XmNshadowThickness, (style & kStyleBorder) != 0 ? kBorderShadow : kPlainShadow);
    add(XmNmarginWidth, kTextSideMargin);
    add(XmNmarginHeight, kTextMargin);
  }

  template <class Value>
  void add(const char* name, Value value) {
    XtSetArg(args[count], const_cast<char*>(name), value);
    ++count;
  }
  Arg* list() { return args; }
  Cardinal size() const { return count; }

 private:
  static constexpr int kMaximum = 20;
  Arg args[kMaximum];
  Cardinal count = 0;
};

}  // namespace

zEditBase::zEditBase(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* initialText,
                     int id)
    : zControl(parent, sizer, style, initialText, id) {
  markClass(kClassEditBase);
  if ((style & kEditMultiLine) != 0) {
    createBox();
  } else {
    createLine();
  }
  tieCallbacks(true);
}

zEditBase::~zEditBase() {
  tieCallbacks(false);
  // The bars die with the holder; the window must not destroy them one by one.
  if (Widget bar = std::exchange(vertScrollWidget, nullptr)) {
    disconnectScrollBar<zVertScrollProc>(bar, this);
  }
  if (Widget bar = std::exchange(horzScrollWidget, nullptr)) {
    disconnectScrollBar<zHorzScrollProc>(bar, this);
  }
}

void zEditBase::tieCallbacks(bool made) {
  const Tie state = made ? Tie::made : Tie::undone;
  Widget edit = widget();
  using Verify = XmTextVerifyCallbackStruct;
  using Any = XmAnyCallbackStruct;
  tie<&zEditBase::onVerify<Verify>>(state, edit, callback::modifyVerify, this);
  tie<&zEditBase::onChanged<Any>>(state, edit, callback::textChanged, this);
  tie<&zEditBase::onLosingFocus<Verify>>(state, edit, callback::losingFocus, this);
  tie<&zEditBase::onFocus<Any>>(state, edit, callback::focus, this);
  tie<&zEditBase::onActivate<Any>>(state, edit, callback::activate, this);
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
    XmTextSetSelection(widget(), first, last, XtLastTimestampProcessed(XtDisplay(widget())));
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

void zEditBase::createLine() {
  lastText = zWindow::text;
  const RWCString shown(singleLine(zWindow::text.view()));
  TextArgs args(style(), XmSINGLE_LINE_EDIT, shown);
  // A text that outgrows its holder in height would be resized without end.
  args.add(XmNresizeHeight, False);
  args.add(XmNresizeWidth, False);
  args.add(XmNscrollHorizontal, False);
  args.add(XmNscrollVertical, False);
  args.add(XmNwidth, kLineWidth);
  Widget line = XmCreateText(createHolder(), xmText("TextField"), args.list(), args.size());
  finishCreation(kKindEdit, line);
}

// Dialogs follow the size of their font, which at a low resolution leaves a line little height: the
// letters go before the margin and the focus rectangle.
void zEditBase::fitLine() {
  const zFont* current = fontObject();
  if (!isLine() || current == nullptr || current->xFont() == nullptr) {
    return;
  }
  Dimension height = 0;
  Dimension shadow = 0;
  XtVaGetValues(holder(), XmNheight, &height, nullptr);
  XtVaGetValues(widget(), XmNshadowThickness, &shadow, nullptr);
  const int room = (height - current->xFont()->height()) / 2 - shadow;
  const int highlight = std::clamp(room, 0, kLineHighlight);
  const int margin = std::clamp(room - highlight, 0, static_cast<int>(kTextMargin));
  XtVaSetValues(widget(), XmNhighlightThickness, highlight, XmNmarginHeight, margin, nullptr);
}

void zEditBase::createBox() {
  TextArgs args(style(), XmMULTI_LINE_EDIT, zWindow::text);
  args.add(XmNscrollHorizontal, (style() & kStyleHorzScroll) != 0 ? True : False);
  args.add(XmNscrollVertical, (style() & kStyleVertScroll) != 0 ? True : False);
  Widget box = XmCreateScrolledText(createHolder(), xmText("Text"), args.list(), args.size());
  Widget scrolled = XtParent(box);
  XtVaSetValues(scrolled, XmNspacing, kScrollSpacing, nullptr);
  XtVaGetValues(scrolled, XmNverticalScrollBar, &vertScrollWidget, XmNhorizontalScrollBar,
                &horzScrollWidget, nullptr);
  if (vertScrollWidget != nullptr) {
    connectScrollBar<zVertScrollProc>(vertScrollWidget, this);
  }
  if (horzScrollWidget != nullptr) {
    connectScrollBar<zHorzScrollProc>(horzScrollWidget, this);
  }
  finishCreation(kKindEdit, box, scrolled);
}
