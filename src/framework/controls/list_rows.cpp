#include "framework/controls/list_rows.h"

#include <algorithm>
#include <cctype>
#include <compare>
#include <iterator>
#include <span>
#include <string>

#include <Xm/XmAll.h>

namespace {

// What the widget shows of a text: its first line, and of that no more than fits into the 16 bits
// of the toolkit's lengths and of the server's widths.
std::string shownForm(std::string_view text) {
  constexpr std::size_t kLongest = 1000;
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  std::string shown(line.substr(0, kLongest));
  return line.size() > kLongest ? shown + "..." : shown;
}

// Rows in the widget's form.
class RowStrings {
 public:
  explicit RowStrings(std::span<const RWCString> texts) {
    for (const RWCString& text : texts) {
      std::string shown = shownForm(text.view());
      // One segment, also for an empty text.
      strings.push_back(
          XmStringCreate(shown.data(), const_cast<char*>("FONTLIST_DEFAULT_TAG_STRING")));
    }
  }
  RowStrings(const RowStrings&) = delete;
  RowStrings& operator=(const RowStrings&) = delete;
  ~RowStrings() { std::for_each(strings.begin(), strings.end(), XmStringFree); }
  XmStringTable table() { return strings.data(); }

 private:
  std::vector<XmString> strings;
};

int upperCase(char c) {
  return std::toupper(static_cast<unsigned char>(c));
}

bool sortsBeforeText(const RWCString& text, const RWCString& other) {
  return sortsBefore(text.view(), other.view());
}

int intResource(Widget widget, const char* name) {
  int value = 0;
  XtVaGetValues(widget, name, &value, nullptr);
  return value;
}

}  // namespace

bool sortsBefore(std::string_view text, std::string_view other) {
  const auto order = std::lexicographical_compare_three_way(
      text.begin(), text.end(), other.begin(), other.end(),
      [](char a, char b) { return upperCase(a) <=> upperCase(b); });
  return std::is_eq(order) ? text < other : std::is_lt(order);
}

int sortedPosition(std::string_view text, const std::vector<RWCString>& rows, ziRowOrder order) {
  const auto isNotGreater = [&](const RWCString& row) { return !sortsBefore(text, row.view()); };
  const auto place = order == ziRowOrder::kSorted
                         ? std::partition_point(rows.begin(), rows.end(), isNotGreater)
                         : std::find_if_not(rows.begin(), rows.end(), isNotGreater);
  return static_cast<int>(place - rows.begin());
}

RWCString ziListRows::text(int row) const {
  return row < 0 || row >= count() ? RWCString() : texts[static_cast<std::size_t>(row)];
}

int ziListRows::find(std::string_view text, int from) const {
  const auto found = std::find_if(texts.begin() + from, texts.end(),
                                  [&](const RWCString& row) { return row.view() == text; });
  return found == texts.end() ? kNone : static_cast<int>(found - texts.begin());
}

int ziListRows::append(const char* text) {
  return insert(text, count());
}

int ziListRows::addSorted(const char* text) {
  isSorted = isSorted || texts.empty();
  const int row =
      sortedPosition(text, texts, isSorted ? ziRowOrder::kSorted : ziRowOrder::kUnknown);
  addAt(text, row);
  return row;
}

int ziListRows::insert(const char* text, int row) {
  const int place = row < 0 || row > count() ? count() : row;
  isSorted = false;
  addAt(text, place);
  return place;
}

void ziListRows::addAt(const char* text, int row) {
  texts.insert(texts.begin() + row, text);
  showRows(row, 1);
}

int ziListRows::addAll(const std::vector<RWCString>& added, bool sorted, int followed) {
  if (sorted && !isSorted && !texts.empty()) {
    for (const RWCString& text : added) {
      followed += addSorted(text.c_str()) <= followed ? 1 : 0;
    }
    return followed;
  }
  isSorted = sorted;
  const int before = count();
  texts.insert(texts.end(), added.begin(), added.end());
  if (sorted) {
    return mergeFrom(before, followed);
  }
  showRows(before, count() - before);
  return followed;
}

int ziListRows::mergeFrom(int firstNew, int followed) {
  const auto middle = texts.begin() + firstNew;
  std::sort(middle, texts.end(), sortsBeforeText);
  const auto moved = [&](int row) {
    if (row < 0 || row >= firstNew) {
      return row;
    }
    const RWCString& text = texts[static_cast<std::size_t>(row)];
    return row +
           static_cast<int>(std::lower_bound(middle, texts.end(), text, sortsBeforeText) - middle);
  };
  std::vector<int> chosen = selectedRows();
  std::transform(chosen.begin(), chosen.end(), chosen.begin(), moved);
  const int keyboard = moved(keyboardRow());
  const int top = std::max(1, intResource(list, XmNtopItemPosition));
  followed = moved(followed);
  std::inplace_merge(texts.begin(), middle, texts.end(), sortsBeforeText);
  XmListDeleteAllItems(list);
  showRows(0, count());
  std::for_each(chosen.begin(), chosen.end(), [this](int row) { addToSelection(row); });
  if (keyboard != kNone) {
    XmListSetKbdItemPos(list, keyboard + 1);
  }
  XmListSetPos(list, top);
  return followed;
}

// Puts the texts of new rows into the widget.
void ziListRows::showRows(int row, int number) {
  const auto first = static_cast<std::size_t>(row);
  RowStrings strings{std::span(texts).subspan(first, static_cast<std::size_t>(number))};
  // Never selected by themselves, even if a selected row has the same text.
  XmListAddItemsUnselected(list, strings.table(), number, row + 1);
}

bool ziListRows::remove(int row) {
  if (row < 0 || row >= count()) {
    return false;
  }
  texts.erase(texts.begin() + row);
  XmListDeletePos(list, row + 1);
  return true;
}

void ziListRows::clear() {
  texts.clear();
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

void ziListRows::showFirst() {
  if (count() > 0) {
    XmListSetPos(list, 1);
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
