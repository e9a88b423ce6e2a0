#include "framework/core/show_together_xm.h"

#include <algorithm>
#include <utility>
#include <vector>

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
  std::vector<std::pair<int, Widget>> byDepth;
  for (Widget widget : widgets) {
    byDepth.emplace_back(-depthOf(widget), widget);
  }
  std::stable_sort(byDepth.begin(), byDepth.end(), [](const auto& a, const auto& b) {
    return std::pair(a.first, XtParent(a.second)) < std::pair(b.first, XtParent(b.second));
  });
  for (auto first = byDepth.begin(); first != byDepth.end();) {
    std::vector<Widget> siblings;
    Widget parent = XtParent(first->second);
    for (; first != byDepth.end() && XtParent(first->second) == parent; ++first) {
      siblings.push_back(first->second);
    }
    XtManageChildren(siblings.data(), static_cast<Cardinal>(siblings.size()));
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
