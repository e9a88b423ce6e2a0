#pragma once

#include <string>
#include <vector>

#include "support/rwc_string.h"
#include "tests/ui/support/ui_test.h"

/// What tests look at in the widgets of controls, beside what all tests do.

std::vector<int> numbers(Widget widget, const std::vector<const char*>& resources);

/// What a label or button shows, and the mnemonic behind "|" if it has one.
std::string labelOf(Widget label);
/// Height of that, pixels.
int labelHeight(Widget label);

/// The selected rows of a list, as the widget has it.
std::vector<int> selectedRows(Widget list);
/// Whether the whole row can be seen in the list's window.
bool isRowInView(Widget list, int row);

/// The text of a text widget with the selection in brackets and the caret as "^".
std::string textView(Widget text);

/// The texts of all rows of a list or combo box.
template <class List>
std::vector<std::string> textsOf(const List& list) {
  std::vector<std::string> texts;
  for (int row = 0; row < list.count(); ++row) {
    RWCString text;
    list.itemText(text, row);
    texts.push_back(text.str());
  }
  return texts;
}
