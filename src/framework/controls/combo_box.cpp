// zComboBoxBase: its rows and its entry. The widgets are made in combo_box_create.cpp, keys are
// handled in combo_box_keys.cpp, the drop-down list in combo_box_drop_down.cpp.
//
// Changes that the program makes tell nobody; what the user does ends in a notification, and the
// control may be gone after it.

#include "framework/controls/combo_box.h"

#include <algorithm>

#include "framework/controls/combo_box_callbacks_xm.h"
#include "framework/controls/text_widget_xm.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/xm_handles_xm.h"
#include "support/line_text.h"

zComboBoxBase::zComboBoxBase(zWindow* parent, zSizer* sizer, std::uint32_t style, int id,
                             Entry entry)
    : zControl(parent, sizer, style, "", id), entryKind(entry) {
  markClass(kClassComboBoxBase);
  createParts();
}

zComboBoxBase::~zComboBoxBase() {
  if (caretWork != 0) {
    XtRemoveWorkProc(caretWork);
  }
  if (isDropDownShown()) {
    popDown();
  }
  callbacks.reset();
  if (shell != nullptr) {
    // The holder doesn't take the window of a popup shell with it.
    destroyWidgetDeferred(shell);
  }
}

int zComboBoxBase::add(const char* newText) {
  const int row = isSorted() ? rows.addSorted(newText) : rows.append(newText);
  shiftCurrent(row);
  return row;
}

int zComboBoxBase::insert(const char* newText, int row) {
  const int place = rows.insert(newText, row);
  shiftCurrent(place);
  return place;
}

void zComboBoxBase::addAll(const std::vector<RWCString>& texts) {
  currentItem = rows.addAll(texts, isSorted(), currentItem);
}

// The current row keeps its text when one is inserted above it.
void zComboBoxBase::shiftCurrent(int insertedRow) {
  if (insertedRow <= currentItem) {
    ++currentItem;
    rows.select(currentItem);
  }
}

int zComboBoxBase::remove(int row) {
  const bool wasCurrent = row == currentItem;
  if (!rows.remove(row)) {
    return 0;
  }
  currentItem = ziListRows::kNone;
  if (count() > 0) {
    setCurSel(std::min(row, count() - 1));
  } else if (wasCurrent) {
    setCurSel(ziListRows::kNone);
  }
  return 1;
}

void zComboBoxBase::clear() {
  rows.clear();
  setCurSel(ziListRows::kNone);
}

int zComboBoxBase::setCurSel(int row) {
  if (row == ziListRows::kNone) {
    rows.deselectAll();
    currentItem = ziListRows::kNone;
    setEntry("");
    return ziListRows::kNone;
  }
  if (row < 0 || row >= count()) {
    return ziListRows::kNone;
  }
  rows.select(row);
  currentItem = row;
  setEntry(rows.text(row).c_str());
  return row;
}

int zComboBoxBase::itemText(RWCString& out, int row) const {
  out = rows.text(row);
  return row >= 0 && row < count() ? 1 : 0;
}

int zComboBoxBase::selectString(const char* wanted) {
  const int row = rows.find(wanted);
  return row == ziListRows::kNone ? row : setCurSel(row);
}

RWCString zComboBoxBase::text() const {
  return takeXtText(XmTextGetString(widget()));
}

void zComboBoxBase::setText(const char* newText) {
  zControl::setText(newText);
  setEntry(newText);
}

void zComboBoxBase::setEntry(const char* newText) {
  settingEntry = true;
  XmTextSetString(widget(), const_cast<char*>(entryForm(newText, {}).c_str()));
  settingEntry = false;
  placeCaret();
}

std::string zComboBoxBase::entryForm(std::string_view inserted, std::string_view /*before*/) const {
  return singleLine(inserted);
}

void zComboBoxBase::placeCaret() {
  if (XmGetFocusWidget(widget()) == widget()) {
    selectForTyping(widget());
  } else {
    XmTextSetInsertionPosition(widget(), XmTextGetLastPosition(widget()));
  }
}

// The user has changed the entry: it no longer shows a row of the list.
void zComboBoxBase::entryEdited(XEvent* xevent) {
  const ziAlive alive(this);
  const bool wasSelected = currentItem != ziListRows::kNone;
  if (wasSelected) {
    rows.deselectAll();
    currentItem = ziListRows::kNone;
  }
  notifyParent(kComboEditChanged, xevent);
  if (wasSelected && alive) {
    notifyParent(kComboSelectionChanged, xevent);
  }
}

zComboBox::zComboBox(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
    : zComboBoxBase(parent, sizer, (style & ~kStyleSubtypeMask) | kComboSimple, id,
                    Entry::editable) {
  markClass(kClassComboBox);
}

zComboBoxFull::zComboBoxFull(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
    : zComboBoxBase(parent, sizer, style, id, Entry::editable) {
  markClass(kClassComboBoxFull);
}

zComboBoxStatic::zComboBoxStatic(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
    : zComboBoxBase(parent, sizer, style, id, Entry::fixed) {
  markClass(kClassComboBoxStatic);
}
