#include "framework/core/show_together.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <X11/Intrinsic.h>

namespace {

int openScopes = 0;
std::vector<Widget> waiting;

int depthOf(Widget widget) {
  int depth = 0;
  for (Widget above = XtParent(widget); above != nullptr; above = XtParent(above)) {
    ++depth;
  }
  return depth;
}

// What stands in others first: it costs nothing there until they come up themselves.
void manageAll(std::vector<Widget> widgets) {
  const auto place = [](Widget widget) { return std::pair(-depthOf(widget), XtParent(widget)); };
  std::stable_sort(widgets.begin(), widgets.end(),
                   [&](Widget a, Widget b) { return place(a) < place(b); });
  for (auto first = widgets.begin(); first != widgets.end();) {
    const auto end = std::find_if(
        first, widgets.end(), [&](Widget widget) { return XtParent(widget) != XtParent(*first); });
    XtManageChildren(&*first, static_cast<Cardinal>(end - first));
    first = end;
  }
}

}  // namespace

ziShowTogetherScope::ziShowTogetherScope() {
  ++openScopes;
}

ziShowTogetherScope::~ziShowTogetherScope() {
  if (--openScopes == 0) {
    manageAll(std::exchange(waiting, {}));
  }
}

void manageWidget(Widget widget, bool shown) {
  std::erase(waiting, widget);
  if (!shown) {
    XtUnmanageChild(widget);
  } else if (openScopes > 0) {
    waiting.push_back(widget);
  } else {
    XtManageChild(widget);
  }
}
