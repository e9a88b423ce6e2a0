#include "tests/ui/controls/scroll_bar_view.h"

#include <Xm/XmAll.h>

std::vector<int> viewOfBar(Widget bar) {
  std::vector<int> view;
  for (const char* name : {XmNminimum, XmNmaximum, XmNsliderSize, XmNvalue}) {
    XtVaGetValues(bar, name, &view.emplace_back(), nullptr);
  }
  return view;
}
