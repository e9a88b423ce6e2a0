#include "tests/ui/app_object/box_view.h"

#include <algorithm>
#include <stdexcept>

#include "framework/core/xm_handles_xm.h"
#include "tests/ui/support/test_application.h"
#include "tests/ui/support/windows.h"

#include <Xm/XmAll.h>

namespace {

std::string labelOf(Widget label) {
  XmString string = nullptr;
  XtVaGetValues(label, XmNlabelString, &string, nullptr);
  XmParseTable table = nullptr;
  XmString lineFeed = XmStringSeparatorCreate();
  XmParseMapping mapping = nullptr;
  Arg arguments[] = {{const_cast<char*>(XmNpattern), reinterpret_cast<XtArgVal>("\n")},
                     {const_cast<char*>(XmNpatternType), XmCHARSET_TEXT},
                     {const_cast<char*>(XmNsubstitute), reinterpret_cast<XtArgVal>(lineFeed)}};
  mapping = XmParseMappingCreate(arguments, XtNumber(arguments));
  table = &mapping;
  // XmStringGetLtoR would stop at the first line.
  auto* text = static_cast<char*>(
      XmStringUnparse(string, nullptr, XmCHARSET_TEXT, XmCHARSET_TEXT, table, 1, XmOUTPUT_ALL));
  XmParseMappingFree(mapping);
  XmStringFree(lineFeed);
  XmStringFree(string);
  return takeXtText(text);
}

}  // namespace

BoxView::BoxView(const std::string& title) {
  Widget shell = XtWindowToWidget(ui::display(), ui::windowWithTitle(title));
  box = shell == nullptr ? nullptr : XtNameToWidget(shell, const_cast<char*>("MessageBox"));
  if (box == nullptr) {
    throw std::runtime_error("no message box " + title);
  }
}

std::vector<Widget> BoxView::buttons() const {
  std::vector<Widget> found;
  for (const unsigned char child :
       {XmDIALOG_OK_BUTTON, XmDIALOG_CANCEL_BUTTON, XmDIALOG_HELP_BUTTON}) {
    Widget button = XmMessageBoxGetChild(box, child);
    if (XtIsManaged(button)) {
      found.push_back(button);
    }
  }
  std::sort(found.begin(), found.end(),
            [](Widget a, Widget b) { return ui::areaOf(a).x < ui::areaOf(b).x; });
  return found;
}

std::vector<std::string> BoxView::buttonLabels() const {
  std::vector<std::string> labels;
  for (Widget button : buttons()) {
    labels.push_back(labelOf(button));
  }
  return labels;
}

Widget BoxView::button(const std::string& label) const {
  for (Widget candidate : buttons()) {
    if (labelOf(candidate) == label) {
      return candidate;
    }
  }
  throw std::runtime_error("no button " + label);
}

Widget BoxView::focusedButton() const {
  Widget focus = XmGetFocusWidget(box);
  const std::vector<Widget> all = buttons();
  return std::find(all.begin(), all.end(), focus) == all.end() ? nullptr : focus;
}

std::string BoxView::text() const {
  Widget scrolled = XtNameToWidget(box, const_cast<char*>("*MessageText"));
  if (scrolled != nullptr) {
    return takeXtText(XmTextGetString(scrolled));
  }
  return labelOf(XmMessageBoxGetChild(box, XmDIALOG_MESSAGE_LABEL));
}

std::string BoxView::icon() const {
  unsigned char type = 0;
  XtVaGetValues(box, XmNdialogType, &type, nullptr);
  switch (type) {
    case XmDIALOG_ERROR:
      return "error";
    case XmDIALOG_QUESTION:
      return "question";
    case XmDIALOG_WARNING:
      return "warning";
    case XmDIALOG_INFORMATION:
      return "information";
    case XmDIALOG_MESSAGE:
      return "plain";
    default:
      return "unknown";
  }
}

int BoxView::modality() const {
  unsigned char style = 0;
  XtVaGetValues(box, XmNdialogStyle, &style, nullptr);
  return style;
}

bool BoxView::isOnTheScreen() const {
  const ui::ScreenArea area = ui::areaOf(XtParent(box));
  Screen* screen = XtScreen(box);
  return area.x >= 0 && area.y >= 0 && area.x + area.width <= WidthOfScreen(screen) &&
         area.y + area.height <= HeightOfScreen(screen);
}
