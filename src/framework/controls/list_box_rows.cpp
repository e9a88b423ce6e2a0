#include "framework/controls/list_box_rows.h"

#include <algorithm>
#include <memory>

#include "framework/controls/sort_position.h"
#include "framework/core/xm_handles_xm.h"

namespace {

// The tag by which list texts are made and read.
constexpr char kTag[] = "FONTLIST_DEFAULT_TAG_STRING";

// One segment: unlike zXmString, a line feed in the text doesn't end the first line.
class RowString {
 public:
  explicit RowString(const char* text)
      : string(XmStringCreate(const_cast<char*>(text), const_cast<char*>(kTag))) {}
  RowString(const RowString&) = delete;
  RowString& operator=(const RowString&) = delete;
  ~RowString() { XmStringFree(string); }
  XmString get() const { return string; }

 private:
  XmString string;
};

int intResource(Widget widget, const char* name) {
  int value = 0;
  XtVaGetValues(widget, name, &value, nullptr);
  return value;
}

}  // namespace

int ziListRows::count() const {
  return list == nullptr ? 0 : intResource(list, XmNitemCount);
}

std::string ziListRows::text(int row) const {
  if (row < 0 || row >= count()) {
    return {};
  }
  XmStringTable items = nullptr;
  XtVaGetValues(list, XmNitems, &items, nullptr);
  char* text = nullptr;
  if (XmStringGetLtoR(items[row], const_cast<char*>(kTag), &text) == False) {
    return {};
  }
  return takeXtText(text);
}

int ziListRows::find(const char* text) const {
  return list == nullptr ? kNone : XmListItemPos(list, RowString(text).get()) - 1;
}

int ziListRows::append(const char* text) {
  const int row = count();
  isSorted = false;
  addAt(text, row);
  return row;
}

int ziListRows::addSorted(const char* text) {
  const int rows = count();
  const int row = sortedPosition(
      text, rows, [this](int i) { return this->text(i); },
      isSorted || rows == 0 ? ziRowOrder::kSorted : ziRowOrder::kUnknown);
  isSorted = isSorted || rows == 0;
  addAt(text, row);
  return row;
}

int ziListRows::insert(const char* text, int row) {
  const int rows = count();
  const int place = row < 0 || row > rows ? rows : row;
  isSorted = false;
  addAt(text, place);
  return place;
}

void ziListRows::addAt(const char* text, int row) {
  if (list != nullptr) {
    // Never selected by itself, even if a selected row has the same text.
    XmListAddItemUnselected(list, RowString(text).get(), row + 1);
  }
}

bool ziListRows::remove(int row) {
  if (row < 0 || row >= count()) {
    return false;
  }
  XmListDeletePos(list, row + 1);
  return true;
}

void ziListRows::clear() {
  if (list != nullptr) {
    XmListDeleteAllItems(list);
  }
}

void ziListRows::select(int row) {
  XmListSelectPos(list, row + 1, False);
  XmListSetKbdItemPos(list, row + 1);
}

void ziListRows::addToSelection(int row) {
  // An extended list replaces its selection otherwise.
  unsigned char policy = XmBROWSE_SELECT;
  XtVaGetValues(list, XmNselectionPolicy, &policy, nullptr);
  XtVaSetValues(list, XmNselectionPolicy, XmMULTIPLE_SELECT, nullptr);
  XmListSelectPos(list, row + 1, False);
  XtVaSetValues(list, XmNselectionPolicy, policy, nullptr);
}

void ziListRows::deselectAll() {
  if (list != nullptr) {
    XmListDeselectAllItems(list);
  }
}

std::vector<int> ziListRows::selectedRows() const {
  std::vector<int> rows;
  int* positions = nullptr;
  int found = 0;
  if (list != nullptr && XmListGetSelectedPos(list, &positions, &found) != False) {
    std::transform(positions, positions + found, std::back_inserter(rows),
                   [](int position) { return position - 1; });
    XtFree(reinterpret_cast<char*>(positions));
  }
  return rows;
}

int ziListRows::keyboardRow() const {
  return selectedRows().empty() ? kNone : XmListGetKbdItemPos(list) - 1;
}

int ziListRows::pageSize() const {
  return list == nullptr ? 1 : std::max(1, intResource(list, XmNvisibleItemCount));
}
