#include "tests/ui/dialogs/file_form_view.h"

#include <stdexcept>

#include "framework/core/xm_handles_xm.h"
#include "tests/ui/support/test_application.h"
#include "tests/ui/support/windows.h"

#include <Xm/XmAll.h>

FileFormView::FileFormView(const std::string& title) {
  Widget shell = XtWindowToWidget(ui::display(), ui::windowWithTitle(title));
  box = shell == nullptr ? nullptr : XtNameToWidget(shell, const_cast<char*>("FileSelectionBox"));
  if (box == nullptr) {
    throw std::runtime_error("no file form " + title);
  }
}

Widget FileFormView::child(unsigned char which) const {
  return XmFileSelectionBoxGetChild(box, which);
}

std::string FileFormView::selection() const {
  return takeXtText(XmTextFieldGetString(child(XmDIALOG_TEXT)));
}

void FileFormView::setSelection(const std::string& text) const {
  XmTextFieldSetString(child(XmDIALOG_TEXT), const_cast<char*>(text.c_str()));
}

std::string FileFormView::filter() const {
  return takeXtText(XmTextFieldGetString(child(XmDIALOG_FILTER_TEXT)));
}

std::vector<std::string> FileFormView::files() const {
  int count = 0;
  XmStringTable items = nullptr;
  XtVaGetValues(fileList(), XmNitemCount, &count, XmNitems, &items, nullptr);
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) {
    char* text = nullptr;
    XmStringGetLtoR(items[i], const_cast<char*>(XmFONTLIST_DEFAULT_TAG), &text);
    names.push_back(takeXtText(text));
  }
  return names;
}

bool FileFormView::selectionHasFocus() const {
  return ui::focusIs(child(XmDIALOG_TEXT));
}

bool FileFormView::hasHelpButton() const {
  return XtIsManaged(child(XmDIALOG_HELP_BUTTON)) != False;
}

bool FileFormView::isOnTheScreen() const {
  const ui::ScreenArea area = ui::areaOf(XtParent(box));
  Screen* screen = XtScreen(box);
  return area.x >= 0 && area.y >= 0 && area.x + area.width <= WidthOfScreen(screen) &&
         area.y + area.height <= HeightOfScreen(screen);
}

Widget FileFormView::okButton() const {
  return child(XmDIALOG_OK_BUTTON);
}

Widget FileFormView::fileList() const {
  return child(XmDIALOG_LIST);
}
