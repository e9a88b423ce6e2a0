#include "framework/core/application.h"
#include "framework/core/frame.h"

#include "framework/core/shell_xm.h"

Widget shellAbove(zWindow* parent) {
  if (parent == nullptr || parent->widget() == nullptr) {
    parent = zApp::instance()->mainWindow();
  }
  Widget widget = parent == nullptr ? nullptr : parent->widget();
  while (widget != nullptr && !XtIsShell(widget)) {
    widget = XtParent(widget);
  }
  return widget;
}
