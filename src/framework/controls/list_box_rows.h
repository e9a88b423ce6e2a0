#pragma once

#include <string>
#include <vector>

#include "framework/draw/xtfwd.h"

/// The rows of a Motif list widget, counted from 0; -1 stands for no row. The widget is the only
/// place where the texts are. A text is one row whatever it holds, line feeds included.
class ziListRows {
 public:
  static constexpr int kNone = -1;

  void attach(Widget listWidget) { list = listWidget; }

  int count() const;
  /// The text of a row; empty when there is no such row.
  std::string text(int row) const;
  /// The first row with exactly this text.
  int find(const char* text) const;

  /// Adds at the end, or in the order of sorted lists; returns the new row.
  int append(const char* text);
  int addSorted(const char* text);
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
  std::vector<int> selectedRows() const;
  /// The row of the keyboard position; none while no row is selected.
  int keyboardRow() const;
  /// How many whole rows are in view, at least 1.
  int pageSize() const;

 private:
  void addAt(const char* text, int row);

  Widget list = nullptr;
  bool isSorted = true;  ///< every row came by addSorted
};
