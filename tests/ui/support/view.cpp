#include "tests/ui/support/ui_test.h"  // brings view.h

#include <algorithm>

#include "framework/core/xm_handles_xm.h"

#include <Xm/XmAll.h>

namespace ui {

namespace {

/// As the toolkit hands it out: a shorter resource fills the lower bytes only.
long rawResource(Widget widget, const char* name) {
  long value = 0;
  XtVaGetValues(widget, name, &value, nullptr);
  return value;
}

/// All lines of a compound string.
std::string plain(XmString string) {
  return takeXtText(string != nullptr ? XmCvtXmStringToCT(string) : nullptr);
}

/// The text of a resource that the widget hands out a copy of.
std::string takePlain(Widget widget, const char* name) {
  auto* const string = reinterpret_cast<XmString>(rawResource(widget, name));
  std::string text = plain(string);
  XmStringFree(string);
  return text;
}

bool isA(Widget widget, WidgetClass one, WidgetClass other) {
  return XtIsSubclass(widget, one) || XtIsSubclass(widget, other);
}

bool isText(Widget widget) {
  return isA(widget, xmTextWidgetClass, xmTextFieldWidgetClass);
}

bool isPushButton(Widget widget) {
  return isA(widget, xmPushButtonWidgetClass, xmPushButtonGadgetClass);
}

std::string picture(Widget label) {
  // By the numbers of the kinds of message box.
  constexpr const char* kNames[] = {"{}", "{error}",    "{information}",
                                    "{}", "{question}", "{warning}"};
  return kNames[resource(XtParent(label), XmNdialogType)];
}

std::string listInView(Widget list) {
  const std::vector<std::string> rows = rowsOf(list);
  const auto top = static_cast<std::size_t>(resource(list, XmNtopItemPosition));
  const auto seen = static_cast<std::size_t>(resource(list, XmNvisibleItemCount));
  std::string lines;
  for (std::size_t row = top; row < top + seen && row <= rows.size(); ++row) {
    const bool isSelected = XmListPosSelected(list, static_cast<int>(row)) != False;
    lines += (isSelected ? "|*" : "| ") + rows[row - 1] + "\n";
  }
  return lines;
}

/// Empty for what is seen by its parts only.
std::string bareLook(Widget widget) {
  const auto number = [&](const char* name) { return std::to_string(resource(widget, name)); };
  if (isText(widget)) {
    return "<" + textOf(widget) + ">";
  }
  if (isA(widget, xmSeparatorWidgetClass, xmSeparatorGadgetClass)) {
    return "---";
  }
  if (isA(widget, xmToggleButtonWidgetClass, xmToggleButtonGadgetClass)) {
    return (resource(widget, XmNset) != 0 ? "(x) " : "( ) ") + textOf(widget);
  }
  if (XmIsScrollBar(widget)) {
    return "bar " + number(XmNvalue) + " of " + number(XmNminimum) + " to " + number(XmNmaximum) +
           " by " + number(XmNsliderSize);
  }
  const bool isLabel = isA(widget, xmLabelWidgetClass, xmLabelGadgetClass);
  if (isLabel && resource(widget, XmNlabelType) == XmPIXMAP) {
    return picture(widget);
  }
  if (isPushButton(widget) || isA(widget, xmArrowButtonWidgetClass, xmDrawnButtonWidgetClass)) {
    return "[" + textOf(widget) + "]";
  }
  return isLabel ? textOf(widget) : "";
}

std::string marks(Widget widget) {
  const bool isDefault = isPushButton(widget) && resource(widget, XmNshowAsDefault) != 0;
  return std::string(isDefault ? " default" : "") +
         (XmGetFocusWidget(widget) == widget ? " focus" : "") +
         (XtIsSensitive(widget) ? "" : " greyed");
}

void clickRowHere(Widget list, int row) {
  constexpr int kInset = 4;
  Position x = 0;
  Position y = 0;
  Dimension width = 0;
  Dimension height = 0;
  XmListPosToBounds(list, row + 1, &x, &y, &width, &height);
  click(list, x + kInset, y + height / 2);
}

}  // namespace

Widget part(Widget root, const std::string& name) {
  return root != nullptr ? XtNameToWidget(root, ("*" + name).c_str()) : nullptr;
}

Widget part(const std::string& title, const std::string& name) {
  return part(XtWindowToWidget(display(), windowWithTitle(title)), name);
}

std::vector<Widget> partsOf(Widget container) {
  if (!XtIsComposite(container)) {
    return {};
  }
  WidgetList children = nullptr;
  Cardinal count = 0;
  XtVaGetValues(container, XmNchildren, &children, XmNnumChildren, &count, nullptr);
  std::vector<Widget> parts;
  std::copy_if(children, children + count, std::back_inserter(parts), [](Widget child) {
    // A gadget has no such resource.
    return XtIsManaged(child) && (!XtIsWidget(child) || resource(child, XmNmappedWhenManaged) != 0);
  });
  const auto left = [](Widget part) { return static_cast<short>(resource(part, XmNx)); };
  const auto middle = [](Widget part) {
    return static_cast<short>(resource(part, XmNy)) + resource(part, XmNheight) / 2;
  };
  // What has its middle at about the same height is one line; lines stand further apart.
  std::ranges::stable_sort(parts, [&](Widget one, Widget other) {
    constexpr int kTolerance = 4;
    const int below = middle(one) - middle(other);
    return std::abs(below) > kTolerance ? below < 0 : left(one) < left(other);
  });
  return parts;
}

std::string textOf(Widget widget) {
  if (isText(widget)) {
    return takeXtText(XmTextGetString(widget));
  }
  std::string text = takePlain(widget, XmNlabelString);
  if (XmIsRowColumn(XtParent(widget))) {
    const auto mnemonic = static_cast<char>(resource(widget, XmNmnemonic));
    const std::size_t at = mnemonic != '\0' ? text.find(mnemonic) : std::string::npos;
    text.insert(at != std::string::npos ? at : 0, at != std::string::npos ? "&" : "");
    const std::string accelerator = takePlain(widget, XmNacceleratorText);
    text += accelerator.empty() ? "" : "\t" + accelerator;
  }
  return text;
}

std::string placeView(const ScreenArea& area) {
  return std::to_string(area.x) + "," + std::to_string(area.y) + " " + std::to_string(area.width) +
         "x" + std::to_string(area.height);
}

std::vector<std::string> rowsOf(Widget list) {
  auto* const items = reinterpret_cast<XmStringTable>(rawResource(list, XmNitems));
  std::vector<std::string> rows;
  for (int i = 0; i < resource(list, XmNitemCount); ++i) {
    rows.push_back(plain(items[i]));
  }
  return rows;
}

std::string look(Widget root) {
  if (XmIsList(root)) {
    return listInView(root);
  }
  const std::string seen = bareLook(root);
  std::string lines = seen.empty() ? "" : seen + marks(root) + "\n";
  if (seen.empty()) {
    for (Widget part : partsOf(root)) {
      lines += look(part);
    }
  }
  return lines;
}

std::string look(const std::string& title) {
  Widget shell = XtWindowToWidget(display(), windowWithTitle(title));
  return shell != nullptr ? look(shell) : "no window \"" + title + "\"";
}

int resource(Widget widget, const char* name) {
  return static_cast<int>(rawResource(widget, name));
}

Widget widgetResource(Widget widget, const char* name) {
  return reinterpret_cast<Widget>(rawResource(widget, name));
}

std::string numbers(Widget widget, std::initializer_list<const char*> names) {
  std::string values;
  for (const char* name : names) {
    values += std::to_string(resource(widget, name)) + " ";
  }
  return values;
}

void setText(Widget text, const std::string& value) {
  XmTextSetString(text, const_cast<char*>(value.c_str()));
}

std::string textView(Widget text) {
  std::string view = textOf(text);
  view.insert(static_cast<std::size_t>(caretOf(text)), "^");
  XmTextPosition left = 0;
  XmTextPosition right = 0;
  if (XmTextGetSelectionPosition(text, &left, &right) != False && left < right) {
    view.insert(static_cast<std::size_t>(right), "]");
    view.insert(static_cast<std::size_t>(left), "[");
  }
  return view;
}

int caretOf(Widget text) {
  return static_cast<int>(XmTextGetInsertionPosition(text));
}

int topLineOf(Widget text) {
  const std::string all = textOf(text);
  return static_cast<int>(std::count(all.begin(), all.begin() + XmTextGetTopCharacter(text), '\n'));
}

bool isEndInView(Widget text) {
  Position x = 0;
  Position y = 0;
  return XmTextPosToXY(text, XmTextGetLastPosition(text), &x, &y) != False;
}

void clickRow(Widget list, int row) {
  const Deadline deadline(Milliseconds(XtGetMultiClickTime(display()) + 1));
  waitFor([&] { return deadline.hasPassed(); }, "a click of its own");
  clickRowHere(list, row);
}

void doubleClickRow(Widget list, int row) {
  clickRow(list, row);
  clickRowHere(list, row);
}

}  // namespace ui
