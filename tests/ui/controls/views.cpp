#include <sstream>

#include "tests/ui/controls/control_fixture.h"

#include <Xm/XmAll.h>

std::string numbers(Widget widget, std::initializer_list<const char*> resources) {
  std::string values;
  for (const char* resource : resources) {
    values += std::to_string(ui::resource(widget, resource)) + " ";
  }
  return values;
}

std::string rowsIn(Widget list) {
  std::string all;
  for (const std::string& row : ui::rowsOf(list)) {
    all += row + " ";
  }
  return all;
}

std::string chosenIn(Widget list) {
  std::istringstream rows(ui::look(list));
  std::string chosen;
  for (std::string row; std::getline(rows, row);) {
    chosen += row.starts_with("|*") ? row.substr(2) + " " : "";
  }
  return chosen;
}

std::string textView(Widget text) {
  std::string view = ui::textOf(text);
  view.insert(static_cast<std::size_t>(ui::caretOf(text)), "^");
  XmTextPosition left = 0;
  XmTextPosition right = 0;
  if (XmTextGetSelectionPosition(text, &left, &right) != False && left < right) {
    view.insert(static_cast<std::size_t>(right), "]");
    view.insert(static_cast<std::size_t>(left), "[");
  }
  return view;
}

void focus(const zControl& control) {
  Widget target = control.innerWidget() != nullptr ? control.innerWidget() : control.widget();
  XmProcessTraversal(target, XmTRAVERSE_CURRENT);
  ui::waitForFocus(target);
}

std::string ControlTest::placesOf(std::initializer_list<Widget> widgets) {
  ui::drain();
  const ui::ScreenArea board = ui::areaOf(frame.widget());
  std::ostringstream places;
  for (Widget widget : widgets) {
    const ui::ScreenArea area = ui::areaOf(widget);
    places << area.x - board.x << "," << area.y - board.y << " " << area.width << "x" << area.height
           << "; ";
  }
  return places.str();
}
