// Part of the framework's interface that this program does not use; compiled, its behaviour is not
// under test: what is left of the classes of this folder.

#include "framework/controls/combo_box.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/controls/scroll_bar.h"
#include "framework/controls/widgets_xm.h"
#include "framework/core/event.h"
#include "framework/core/window_events_xm.h"

namespace {

Time now(Widget widget) {
  return XtLastTimestampProcessed(XtDisplay(widget));
}

// Windows keep to themselves which scroller they have.
class ziScrolledWindow : public zWindow {
 public:
  static bool hasScroller(const zWindow& window) {
    return window.*(&ziScrolledWindow::scroller) != nullptr;
  }
};

// The toolkit's list needs both of its bars: one that is not wanted takes no room instead.
void shrinkBar(Widget list, const char* name, const char* thickness) {
  Widget bar = nullptr;
  XtVaGetValues(XtParent(list), name, &bar, nullptr);
  XtSetMappedWhenManaged(bar, False);
  XtVaSetValues(bar, thickness, 1, nullptr);
}

}  // namespace

void zControl::getExterior(zRect& rect) {
  if (outerForm == nullptr || !XtIsRealized(outerForm)) {
    getInterior(rect);
    return;
  }
  Position x = 0;
  Position y = 0;
  XtTranslateCoords(outerForm, 0, 0, &x, &y);
  rect = zRect(zPoint{x, y}, widgetSize(outerForm));
}

void zEditBase::replaceSelection(const char* newText) {
  const std::optional<zTextRange> range = selectionRange();
  if (!range) {
    insertAt(insertionPosition(), newText);
    return;
  }
  const Unverified change(*this);
  // A read-only widget refuses to be cut.
  if (XmTextCut(widget(), now(widget())) == False && change.isAlive()) {
    XmTextReplace(widget(), range->from, range->to, xmText(""));
  }
  if (change.isAlive()) {
    insertAt(range->from, newText);
  }
}

void zEditBase::cut() {
  XmTextCut(settledWidget(), now(widget()));
}

void zEditBase::copy() {
  XmTextCopy(settledWidget(), now(widget()));
}

void zEditBase::paste() {
  XmTextPaste(settledWidget());
}

void zEditBase::applyBackground() {
  zControl::applyBackground();
  colourWidget(vertScrollWidget, background());
  colourWidget(horzScrollWidget, background());
}

void zComboBoxBase::applyBackground() {
  zControl::applyBackground();
  for (Widget painted : {form, arrow}) {
    colourWidget(painted, background());
  }
}

void zListBoxBase::shrinkBars() {
  if ((style() & kStyleVertScroll) == 0) {
    shrinkBar(inner, XmNverticalScrollBar, XmNwidth);
  }
  if ((style() & kStyleHorzScroll) == 0) {
    shrinkBar(inner, XmNhorizontalScrollBar, XmNheight);
  }
}

int zListBoxBase::remove(int row) {
  if (!rows.remove(row)) {
    return 0;
  }
  if (row == selected) {
    selected = ziListRows::kNone;
  } else if (row < selected) {
    --selected;
  }
  return 1;
}

zScrollPos* zScrollerBase::ownersPosition(int message) const {
  if (served == nullptr) {
    return nullptr;
  }
  if (const auto* bar = windowCast<zScrollBarBase>(served); bar != nullptr) {
    return bar->scrollPos();
  }
  const ziScrollBar* wanted = message == kMsgVertScroll ? served->vertBar() : served->horzBar();
  zWindowDlist::Iter walk(served->children());
  while (zWindow* child = walk.next()) {
    const auto* bar = windowCast<zScrollBarBase>(child);
    if (bar != nullptr && bar->scrollPos() == wanted) {
      return bar->scrollPos();
    }
  }
  return nullptr;
}

int zScrollerBase::dispatch(zEvent* event) {
  announce(event);
  if (event->message != kMsgVertScroll && event->message != kMsgHorzScroll) {
    return 0;
  }
  const zScrollPos* pos = ownersPosition(event->message);
  if (pos == nullptr) {
    return 0;
  }
  if (pos->previousPosition() == pos->position()) {
    return 1;
  }
  return ziScrolledWindow::hasScroller(*served) ? act(event) : 0;
}
