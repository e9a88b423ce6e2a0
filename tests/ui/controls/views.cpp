#include "tests/ui/controls/control_fixture.h"

#include <Xm/XmAll.h>

std::vector<int> numbers(Widget widget, const std::vector<const char*>& resources) {
  std::vector<int> values;
  for (const char* resource : resources) {
    values.push_back(ui::resource(widget, resource));
  }
  return values;
}

std::string labelOf(Widget label) {
  const int mnemonic = ui::resource(label, XmNmnemonic);
  return ui::textOf(label) + (mnemonic == 0 ? "" : std::string("|") + static_cast<char>(mnemonic));
}

int labelHeight(Widget label) {
  XmString string = nullptr;
  XmFontList fonts = nullptr;
  XtVaGetValues(label, XmNlabelString, &string, XmNfontList, &fonts, nullptr);
  const int height = XmStringHeight(fonts, string);
  XmStringFree(string);
  return height;
}

std::vector<int> selectedRows(Widget list) {
  std::vector<int> rows;
  for (int row = 0; row < ui::resource(list, XmNitemCount); ++row) {
    if (XmListPosSelected(list, row + 1) != False) {
      rows.push_back(row);
    }
  }
  return rows;
}

bool isRowInView(Widget list, int row) {
  const int top = ui::resource(list, XmNtopItemPosition);
  return row + 1 >= top && row + 1 < top + ui::resource(list, XmNvisibleItemCount);
}

std::string textView(Widget text) {
  std::string view = ui::textOf(text);
  const auto caret = static_cast<std::size_t>(ui::caretOf(text));
  XmTextPosition left = 0;
  XmTextPosition right = 0;
  if (XmTextGetSelectionPosition(text, &left, &right) == False || left >= right) {
    return view.insert(caret, "^");
  }
  const bool isAtEnd = caret == static_cast<std::size_t>(right);
  view.insert(static_cast<std::size_t>(right), isAtEnd ? "]^" : "]");
  return view.insert(static_cast<std::size_t>(left), isAtEnd ? "[" : "^[");
}
