// The widgets of the edit controls, and the room of a single line.

#include <algorithm>

#include "framework/controls/edit.h"
#include "framework/controls/text_widget_xm.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/xm_handles_xm.h"
#include "framework/draw/x_font_xm.h"
#include "support/line_text.h"

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
    add(XmNtraversalOn, (style & kStyleTabStop) != 0 ? True : False);
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
  watchScrollBars();
  finishCreation(kKindEdit, box, scrolled);
}

void zEditBase::watchScrollBars() {
  if (vertScrollWidget != nullptr) {
    connectScrollBar<zVertScrollProc>(vertScrollWidget, this);
  }
  if (horzScrollWidget != nullptr) {
    connectScrollBar<zHorzScrollProc>(horzScrollWidget, this);
  }
}
