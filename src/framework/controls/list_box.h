#pragma once

#include <vector>

#include "framework/controls/control.h"
#include "framework/controls/list_rows.h"

/// Notification codes of list boxes.
enum zListCode : int {
  kListSelectionChanged = 1,
  kListDoubleClick = 2,  ///< comes after kListSelectionChanged; Return in the list gives it too
};

/// Base of the list boxes: a scrolled list that shows the first line of each text. Rows count from
/// 0; -1 is no row.
class zListBoxBase : public zControl {
 public:
  static constexpr int kClassNumber = kClassListBoxBase;

  ~zListBoxBase() override;

  /// Adds a text, in order where the list is sorted, else at the end; returns its row.
  virtual int add(const char* text);
  /// The same for many texts at once, which is fast also when the list is on the screen.
  void addAll(const std::vector<RWCString>& texts);
  void clear();
  /// 1, or 0 when there is no such row (extra/).
  int remove(int row);
  int count() const { return rows.count(); }
  /// The row that was chosen last, by the user or by setCurSel; deselecting doesn't change it.
  int selection() const { return selected; }
  /// Selects a row and brings it into view; a negative one deselects all. Tells nobody. 1, or 0
  /// when there is no such row.
  int setCurSel(int row);
  /// The text of a row, of selection() with -1; "" and 0 when there is no such row.
  int itemText(RWCString& out, int row) const;
  /// Selects the first row with exactly this text and returns it; -1 when there is none.
  int selectString(const char* text);

  /// Binds the chosen text to `string`, which must outlive the binding; null unbinds.
  void setBoundString(RWCString* string) { boundString = string; }
  int storeData() override;
  int showData() override;

 protected:
  /// Makes the widget. `order` says whether the sorted bit of the style counts.
  enum class Order { byStyle, asAdded };
  zListBoxBase(zWindow* parent, zSizer* sizer, std::uint32_t style, int id, Order order);

  ziListRows rows;

 private:
  void createList();
  void shrinkBars();
  void tieCallbacks(bool made);
  template <class Data>
  void onChosen(Data* data);
  template <class Data>
  void onActivated(Data* data);
  bool isMultiple() const { return (style() & kListMultiple) != 0; }

  int selected = ziListRows::kNone;
  RWCString* boundString = nullptr;
  bool isSorted;
};

/// A list box that sorts if its style says so.
class zListBox : public zListBoxBase {
 public:
  static constexpr int kClassNumber = kClassListBox;
  zListBox(zWindow* parent, zSizer* sizer, std::uint32_t style, int id);
};

/// A list box that never sorts, whatever its style says.
class zListBoxUnsorted : public zListBoxBase {
 public:
  static constexpr int kClassNumber = kClassListBoxUnsorted;
  zListBoxUnsorted(zWindow* parent, zSizer* sizer, std::uint32_t style, int id);
};

/// A list box in which any number of rows can be selected.
class zMultiList : public zListBoxBase {
 public:
  /// Adds kListMultiple to the style.
  zMultiList(zWindow* parent, zSizer* sizer, std::uint32_t style, int id);

  /// The selected rows, first to last.
  std::vector<int> selections() const { return rows.selectedRows(); }

  /// Binds the texts of the selected rows to `list`, which must outlive the binding; null unbinds.
  void setBoundList(std::vector<RWCString>* list) { boundList = list; }
  /// Replaces the bound list by the texts of the selected rows, in the order of the rows.
  int storeData() override;
  /// Selects a row for each text in the bound list, the first that is left of those with this text,
  /// and no others.
  int showData() override;

 private:
  std::vector<RWCString>* boundList = nullptr;
};
