#pragma once

#include <string>
#include <vector>

#include "framework/draw/xtfwd.h"
#include "tests/ui/controls/control_fixture.h"

/// What tests of list boxes and combo boxes look at.

/// The widget of this name somewhere in `root`, popup shells included; null when there is none.
Widget part(Widget root, const char* name);

bool isRowSelected(Widget list, int row);
/// Whether the whole row can be seen in the list's window.
bool isRowInView(Widget list, int row);
/// Clicks on a row that is in view; never the second click of a double one.
void clickRow(Widget list, int row);
void doubleClickRow(Widget list, int row);

/// The selected characters of a text widget.
std::string selectedText(Widget text);
int caretPosition(Widget text);

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

/// The notification codes that the parent got since the last call, those in `ignored` left out.
std::vector<int> takeCodes(ControlFrame& frame, const std::vector<int>& ignored = {});
