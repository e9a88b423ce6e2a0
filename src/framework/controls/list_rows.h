#pragma once

#include <string_view>
#include <vector>

#include "framework/draw/xtfwd.h"
#include "support/rwc_string.h"

/// The order of sorted lists, shared by list boxes and combo boxes: by the upper-case forms of the
/// texts, and between texts that are equal in these by the bytes of the texts themselves.

/// Whether the rows are known to stand in the order of sorted lists.
enum class ziRowOrder { kUnknown, kSorted };

/// True if `other` comes behind `text` in a sorted list.
bool sortsBefore(std::string_view text, std::string_view other);

/// The row at which `text` enters a list: that of the first row that is greater, else one behind
/// the last. Rows that are known to be sorted are halved, others are walked from the start; for
/// sorted rows both give the same.
int sortedPosition(std::string_view text, const std::vector<RWCString>& rows, ziRowOrder order);

/// The rows of a Motif list widget, counted from 0; -1 stands for no row. A text is one row
/// whatever it holds and however long it is; the widget shows as much of it as makes sense in a
/// row.
class ziListRows {
 public:
  static constexpr int kNone = -1;

  void attach(Widget listWidget) { list = listWidget; }

  int count() const { return static_cast<int>(texts.size()); }
  /// The text of a row; empty when there is no such row.
  RWCString text(int row) const;
  /// The first row from `from` on with exactly this text.
  int find(std::string_view text, int from = 0) const;

  /// Adds at the end, or in the order of sorted lists; returns the new row.
  int append(const char* text);
  int addSorted(const char* text);
  /// Adds many at once, as if one by one; returns where row `followed`, which may be none, stands
  /// then. The selection stays with its rows.
  int addAll(const std::vector<RWCString>& added, bool sorted, int followed);
  /// Puts `text` at `row`, or at the end when there is no such row; returns the new row.
  int insert(const char* text, int row);
  /// False when there is no such row.
  bool remove(int row);
  void clear();

  /// Selects a row, which must be there, gives it the keyboard position and brings it into view.
  /// Calls no callback.
  void select(int row);
  /// The same where several rows can be selected: the others stay as they are.
  void addToSelection(int row);
  void deselectAll();
  /// Brings the first row into view.
  void showFirst();
  std::vector<int> selectedRows() const;
  /// The row of the keyboard position; none while no row is selected.
  int keyboardRow() const;
  /// How many whole rows are in view, at least 1.
  int pageSize() const;

 private:
  void addAt(const char* text, int row);
  int mergeFrom(int firstNew, int followed);
  void showRows(int row, int number);

  Widget list = nullptr;
  std::vector<RWCString> texts;
  bool isSorted = true;  ///< every row came in the order of sorted lists
};
