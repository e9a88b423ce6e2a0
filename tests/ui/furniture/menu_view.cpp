#include "tests/ui/furniture/menu_view.h"

#include <algorithm>
#include <utility>

#include "framework/core/xm_handles_xm.h"

#include <X11/IntrinsicP.h>
#include <Xm/RowColumnP.h>

namespace {

std::string takeString(XmString string) {
  char* text = nullptr;
  if (string != nullptr) {
    XmStringGetLtoR(string, const_cast<char*>(XmFONTLIST_DEFAULT_TAG), &text);
    XmStringFree(string);
  }
  return takeXtText(text);
}

}  // namespace

MenuItemView menuItemView(Widget gadget) {
  XmString label = nullptr;
  XmString accelerator = nullptr;
  KeySym mnemonic = NoSymbol;
  XtVaGetValues(gadget, XmNlabelString, &label, XmNacceleratorText, &accelerator, XmNmnemonic,
                &mnemonic, nullptr);
  MenuItemView view;
  view.label = takeString(label);
  view.accelerator = takeString(accelerator);
  view.mnemonic = static_cast<char>(mnemonic);
  view.isChecked = XmIsToggleButtonGadget(gadget) && XmToggleButtonGadgetGetState(gadget) != False;
  view.isSensitive = XtIsSensitive(gadget) != False;
  return view;
}

std::vector<Widget> menuGadgets(Widget container) {
  WidgetList children = nullptr;
  Cardinal count = 0;
  XtVaGetValues(container, XmNchildren, &children, XmNnumChildren, &count, nullptr);
  std::vector<Widget> gadgets;
  std::copy_if(children, children + count, std::back_inserter(gadgets),
               [](Widget child) { return XtIsManaged(child); });
  return gadgets;
}

std::vector<std::string> menuLabels(Widget container) {
  std::vector<std::string> labels;
  for (Widget gadget : menuGadgets(container)) {
    labels.push_back(XmIsSeparatorGadget(gadget) ? "-" : menuItemView(gadget).label);
  }
  return labels;
}

Widget pulldownOf(Widget cascade) {
  Widget pulldown = nullptr;
  XtVaGetValues(cascade, XmNsubMenuId, &pulldown, nullptr);
  return pulldown;
}

Widget containerOf(Widget gadget) {
  return XtParent(gadget);
}

Widget helpGadget(Widget bar) {
  Widget help = nullptr;
  XtVaGetValues(bar, XmNmenuHelpWidget, &help, nullptr);
  return help;
}

int popupCount(Widget widget) {
  return static_cast<int>(widget->core.num_popups);
}

void destroyWidget(Widget widget) {
  XtDestroyWidget(widget);
}

namespace {

int layouts = 0;
XtWidgetProc realProcedure = nullptr;

void countLayout(Widget menu) {
  ++layouts;
  realProcedure(menu);
}

}  // namespace

int menuLayoutsDuring(const std::function<void()>& action) {
  XtWidgetProc& procedure = xmRowColumnClassRec.composite_class.change_managed;
  realProcedure = std::exchange(procedure, countLayout);
  layouts = 0;
  action();
  procedure = realProcedure;
  return layouts;
}
