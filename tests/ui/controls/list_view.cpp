#include "tests/ui/controls/list_view.h"

#include <algorithm>

#include "framework/core/xm_handles_xm.h"
#include "tests/ui/support/ui_test.h"

namespace {

struct Bounds {
  Position x = 0;
  Position y = 0;
  Dimension width = 0;
  Dimension height = 0;
};

Bounds boundsOf(Widget list, int row) {
  Bounds bounds;
  XmListPosToBounds(list, row + 1, &bounds.x, &bounds.y, &bounds.width, &bounds.height);
  return bounds;
}

constexpr int kInset = 4;

void clickAt(Widget list, int row) {
  const Bounds bounds = boundsOf(list, row);
  ui::click(list, bounds.x + kInset, bounds.y + bounds.height / 2);
}

void waitOutDoubleClick() {
  const Milliseconds tooLate(XtGetMultiClickTime(ui::display()) + 1);
  const Deadline deadline(tooLate);
  ui::waitFor([&] { return deadline.hasPassed(); }, "a click of its own");
}

}  // namespace

Widget part(Widget root, const char* name) {
  return XtNameToWidget(root, ("*" + std::string(name)).c_str());
}

bool isRowSelected(Widget list, int row) {
  return XmListPosSelected(list, row + 1) != False;
}

bool isRowInView(Widget list, int row) {
  int top = 0;
  int visible = 0;
  XtVaGetValues(list, XmNtopItemPosition, &top, XmNvisibleItemCount, &visible, nullptr);
  return row + 1 >= top && row + 1 < top + visible;
}

void clickRow(Widget list, int row) {
  waitOutDoubleClick();
  clickAt(list, row);
}

void doubleClickRow(Widget list, int row) {
  clickRow(list, row);
  clickAt(list, row);
}

std::string selectedText(Widget text) {
  return takeXtText(XmTextGetSelection(text));
}

int caretPosition(Widget text) {
  return static_cast<int>(XmTextGetInsertionPosition(text));
}

std::vector<int> takeCodes(ControlFrame& frame, const std::vector<int>& ignored) {
  std::vector<int> codes;
  for (const Notification& notification : frame.takeCommands()) {
    if (std::find(ignored.begin(), ignored.end(), notification.code) == ignored.end()) {
      codes.push_back(notification.code);
    }
  }
  return codes;
}
