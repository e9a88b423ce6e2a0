#include "tests/ui/controls/scroll_bar_view.h"

#include <initializer_list>

#include <Xm/XmAll.h>

namespace {

std::vector<int> read(Widget bar, std::initializer_list<const char*> names) {
  std::vector<int> view;
  for (const char* name : names) {
    XtVaGetValues(bar, name, &view.emplace_back(), nullptr);
  }
  return view;
}

}  // namespace

std::vector<int> viewOfBar(Widget bar) {
  return read(bar, {XmNminimum, XmNmaximum, XmNsliderSize, XmNvalue});
}

std::vector<int> stepsOfBar(Widget bar) {
  return read(bar, {XmNincrement, XmNpageIncrement});
}
