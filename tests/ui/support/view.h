#pragma once

#include <string>
#include <vector>

#include "framework/draw/xtfwd.h"
#include "tests/support/screen/screen.h"

/// What a user sees of widgets and gadgets.
namespace ui {

/// The widget called `name` in `root`, or in the viewable window with a title; popup shells
/// included. Null when there is none.
Widget part(Widget root, const std::string& name);
Widget part(const std::string& title, const std::string& name);

/// The managed widgets and gadgets in a container, line by line as they stand on the screen.
std::vector<Widget> partsOf(Widget container);

/// All that a label, button, menu item, text or text field shows, in all its lines. An item of a
/// menu reads as it is given: "&Open...\tCtrl+O".
std::string textOf(Widget widget);
/// All rows of a list.
std::vector<std::string> rowsOf(Widget list);

/// "X,Y WIDTHxHEIGHT"
std::string placeView(const screen::ScreenArea& area);

/// Everything that is seen of a widget and what is in it, line by line:
///
///   text          of a label          [text]    button           <text>   text field
///   (x) text      a set toggle button ( ) text  one that is not  ---      separator
///   | row         of a list, as far as in view  |*row            a selected one
///   {icon}        picture of a message box ("error", "question", ...), {} another one
///   bar 2 of 0 to 9 by 4              scroll bar: value, limits, size of its slider
///
/// Behind that: " default", " focus" (keyboard) and " greyed".
std::string look(Widget root);
std::string look(const std::string& title);

/// A resource that is a number or an enumeration (a negative one only if it is an int), or a
/// widget.
int resource(Widget widget, const char* name);
/// Several numbers, each with a blank behind it.
std::string numbers(Widget widget, std::initializer_list<const char*> names);
Widget widgetResource(Widget widget, const char* name);

/// Replaces what a text widget or text field holds.
void setText(Widget text, const std::string& value);
/// What a text holds, the selection in brackets and the caret as "^".
std::string textView(Widget text);
/// Where the caret of a text is.
int caretOf(Widget text);
/// The line at the upper edge of a text, counted from 0, and whether its end is on the screen.
int topLineOf(Widget text);
bool isEndInView(Widget text);

/// Clicks on a row of a list that is in view; never the second click of a double one.
void clickRow(Widget list, int row);
void doubleClickRow(Widget list, int row);

}  // namespace ui
