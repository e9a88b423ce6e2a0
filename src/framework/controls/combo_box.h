#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/controls/control.h"
#include "framework/controls/list_rows.h"
#include "framework/core/interfaces.h"

/// Notification codes of combo boxes.
enum zComboCode : int {
  kComboSelectionChanged = 1,  ///< by the user; also when typing has deselected the row
  kComboDoubleClick = 2,
  kComboFocusOut = 3,
  kComboFocusIn = 4,
  kComboEditChanged = 5,  ///< the user has changed the entry
  kComboEditUpdate = 6,   ///< the user is about to change the entry
  kComboShown = 7,        ///< the list has dropped down
  kComboHidden = 8,
};

/// Base of the combo boxes: an entry, an arrow and a list that drops down in a shell of its own,
/// over other windows and without taking the focus. `widget()` and `innerWidget()` are the entry.
///
/// The sizer's height is that of the entry and the list together; the holder on the screen is only
/// as high as the entry, except in the simple kind. The entry is a single line whatever the text
/// that it shows. Rows count from 0; -1 is no row. The list holds the texts of the rows, `curSel()`
/// is the row that the entry shows.
class zComboBoxBase : public zControl, public ziDropDown {
 public:
  static constexpr int kClassNumber = kClassComboBoxBase;

  ~zComboBoxBase() override;

  /// Adds a text, in order where the list is sorted, else at the end; returns its row.
  int add(const char* newText);
  /// The same for many texts at once, which is fast also where the list is on the screen.
  void addAll(const std::vector<RWCString>& texts);
  /// Puts a text at a row, or at the end when there is no such row; returns its row.
  int insert(const char* newText, int row);
  /// Removes a row and selects its successor, or the new last row. 1, or 0 when there is no such
  /// row.
  int remove(int row);
  int count() const { return rows.count(); }
  /// Selects a row and shows its text in the entry; -1 empties the entry and deselects. Tells
  /// nobody. Returns `row`, or -1 when there is no such row.
  int setCurSel(int row);
  int curSel() const { return currentItem; }
  /// The text of a row; "" and 0 when there is no such row.
  int itemText(RWCString& out, int row) const;
  /// Selects the first row with exactly this text and returns it; -1 when there is none.
  int selectString(const char* wanted);

  /// The text of the entry.
  RWCString text() const override;
  void text(RWCString& out) const { out = text(); }
  /// Sets the entry and leaves the list as it is. Tells nobody.
  void setText(const char* newText) override;

  /// Both do nothing in the simple kind and when there is nothing to change. The control may be
  /// gone afterwards, since they notify the parent.
  void showDropDown();
  void hideDropDown() override;
  bool isDropDownShown() const { return openCombo == this; }

  // zWindow. The size of the holder is not that of the control.
  void sizeChildren(zEvent* event) override;
  int size(zEvent* event) override;
  void moveResize(int x, int y, int width, int height) override;
  void setShowState(int state) override;

 protected:
  enum class Entry { editable, fixed };

  /// Makes the widgets.
  zComboBoxBase(zWindow* parent, zSizer* sizer, std::uint32_t style, int id, Entry entry);

  /// The form in which `inserted`, typed or set, goes into the entry behind `before`.
  virtual std::string entryForm(std::string_view inserted, std::string_view before) const;
  int keyArrived(zEvent& event, bool typed) override;
  void applyFontToWidget() override;
  void applySensitivity(bool on) override;
  void applyBackground() override;

 private:
  bool isSimple() const { return (style() & kStyleSubtypeMask) == kComboSimple; }
  bool isSorted() const { return (style() & kComboSortMask) == kComboSorted; }

  void createParts();
  void createEntry();
  void createArrow();
  void createDropDown();
  void createList(Widget listParent);
  void layOut();
  void sizeList(const zDimension& size);

  void setEntry(const char* newText);
  void placeCaret();
  void shiftCurrent(int insertedRow);

  // What the widgets report. The control may be gone after each of these.
  void tieCallbacks(bool made);
  void onArrow();
  template <class Data>
  void onRowChosen(Data* data);
  template <class Data>
  void onRowActivated(Data* data);
  template <class Data>
  void onEntryChanging(Data* data);
  template <class Data>
  void onEntryChanged(Data* data);
  bool onFocus(XEvent& event);
  bool onPress(XEvent& event);

  // Keys.
  std::optional<int> rowForKey(unsigned long key, int current) const;
  int rowForLetter(char letter, int current) const;
  void selectByKey(int row, XEvent* xevent);
  bool caretWorkDue();

  // The drop-down list.
  void placeList();
  void popUp();
  void popDown();
  void toggleDropDown();
  void watchOutside();
  void stopWatching();
  bool onFrameEvent(XEvent& event);
  static char pressDispatched(XEvent* event);

  ziListRows rows;
  Entry entryKind;
  Widget rowColumn = nullptr;
  Widget form = nullptr;
  Widget arrow = nullptr;  ///< none in the simple kind
  Widget shell = nullptr;  ///< none in the simple kind
  Widget listHolder = nullptr;
  Widget listWidget = nullptr;
  int textHeight = 0;
  int currentItem = ziListRows::kNone;
  bool settingEntry = false;    ///< the program, not the user, changes the entry
  unsigned long caretWork = 0;  ///< pending work procedure, or 0
  bool inListClick = false;     ///< the last press since the list came down was in it
};

/// The kind whose list is always shown.
class zComboBox : public zComboBoxBase {
 public:
  static constexpr int kClassNumber = kClassComboBox;
  zComboBox(zWindow* parent, zSizer* sizer, std::uint32_t style, int id);
};

/// The kind with an editable entry and a drop-down list.
class zComboBoxFull : public zComboBoxBase {
 public:
  static constexpr int kClassNumber = kClassComboBoxFull;
  zComboBoxFull(zWindow* parent, zSizer* sizer, std::uint32_t style, int id);
};

/// The kind whose entry can't be edited.
class zComboBoxStatic : public zComboBoxBase {
 public:
  static constexpr int kClassNumber = kClassComboBoxStatic;
  zComboBoxStatic(zWindow* parent, zSizer* sizer, std::uint32_t style, int id);
};

/// Where a drop-down list of the size `list` goes on a screen, given the rectangle of its entry in
/// screen coordinates: below the entry; above it where only that stays on the screen; on the side
/// with more room, and shorter, where neither does. It is never cut at the left or right either, as
/// far as the screen is wide enough.
zRect dropDownRect(const zRect& entry, const zDimension& list, const zDimension& screen);
