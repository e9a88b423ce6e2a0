// zComboBoxBase: its rows, its entry and what its widgets report. The widgets are made in
// combo_box_widgets.cpp, keys are handled in combo_box_keys.cpp, the drop-down list in
// combo_box_drop_down.cpp.
//
// Changes that the program makes tell nobody; what the user does ends in a notification, and the
// control may be gone after it.

#include "framework/controls/combo_box.h"

#include <algorithm>

#include "framework/controls/widgets_xm.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/xm_handles_xm.h"
#include "support/text.h"

namespace {

constexpr zEventKinds kEarlyFocusEvents{FocusChangeMask, false, XtListHead};

// Whether the focus change that is being handled comes from a grab or its end. The event that the
// entry gets is made by Xt and doesn't tell.
bool isByGrab(Display* display) {
  const XEvent* cause = XtLastEventProcessed(display);
  return cause != nullptr && (cause->type == FocusIn || cause->type == FocusOut) &&
         (cause->xfocus.mode == NotifyGrab || cause->xfocus.mode == NotifyUngrab);
}

}  // namespace

zComboBoxBase::zComboBoxBase(zWindow* parent, zSizer* sizer, std::uint32_t style, int id,
                             Entry entry)
    : zControl(parent, sizer, style, "", id), entryKind(entry) {
  markClass(kClassComboBoxBase);
  createParts();
  tieCallbacks(true);
}

zComboBoxBase::~zComboBoxBase() {
  if (caretWork != 0) {
    XtRemoveWorkProc(caretWork);
  }
  if (isDropDownShown()) {
    popDown();
  }
  tieCallbacks(false);
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
  XmTextSetString(widget(), xmText(entryForm(newText, {}).c_str()));
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

void zComboBoxBase::tieCallbacks(bool made) {
  using List = XmListCallbackStruct;
  const Tie state = made ? Tie::made : Tie::undone;
  Widget entry = widget();
  tie<&zComboBoxBase::onEntryChanging<XmTextVerifyCallbackStruct>>(state, entry,
                                                                   callback::modifyVerify, this);
  tie<&zComboBoxBase::onEntryChanged<XmAnyCallbackStruct>>(state, entry, callback::textChanged,
                                                           this);
  tie<&zComboBoxBase::onRowChosen<List>>(state, listWidget, callback::browseSelection, this);
  tie<&zComboBoxBase::onRowActivated<List>>(state, listWidget, callback::defaultAction, this);
  if (arrow != nullptr) {
    tie<&zComboBoxBase::onArrow>(state, arrow, callback::arrowActivate, this);
  }
  tie<&zComboBoxBase::onFocus>(state, entry, kEarlyFocusEvents, this);
  if (entryKind == Entry::fixed) {
    // Behind the control's own procedure, which offers the press to handlers.
    tie<&zComboBoxBase::onPress>(state, entry, zEventKinds{ButtonPressMask}, this);
  }
}

void zComboBoxBase::onArrow() {
  const ziAlive alive(this);
  XmProcessTraversal(widget(), XmTRAVERSE_CURRENT);
  if (alive) {
    toggleDropDown();
  }
}

template <class Data>
void zComboBoxBase::onRowChosen(Data* data) {
  const ziAlive alive(this);
  XEvent* const event = data->event;
  setCurSel(data->item_position - 1);
  // The list goes first: what the notification starts may stay for long.
  hideDropDown();
  if (alive) {
    notifyParent(kComboSelectionChanged, event);
  }
}

template <class Data>
void zComboBoxBase::onRowActivated(Data* data) {
  const ziAlive alive(this);
  XEvent* const event = data->event;
  // Of two quick clicks on two rows the widget takes the second for another one on the first.
  const bool isClick =
      event != nullptr && (event->type == ButtonPress || event->type == ButtonRelease);
  if (const int clicked = isClick ? XmListYToPos(listWidget, event->xbutton.y) : 0; clicked > 0) {
    data->item_position = clicked;
  }
  if (curSel() != data->item_position - 1) {
    onRowChosen(data);
  }
  if (alive) {
    hideDropDown();
  }
  if (alive) {
    notifyParent(kComboDoubleClick, event);
  }
}

template <class Data>
void zComboBoxBase::onEntryChanging(Data* data) {
  if (settingEntry) {
    return;
  }
  if (isStrayKey(*data)) {
    data->doit = False;
    return;
  }
  const std::string before = text().str().substr(0, static_cast<std::size_t>(data->startPos));
  replaceInserted(*data, entryForm(insertedText(*data), before));
  const ziAlive alive(this);
  notifyParent(kComboEditUpdate, data->event);
  if (!alive) {
    data->doit = False;
  }
}

template <class Data>
void zComboBoxBase::onEntryChanged(Data* data) {
  if (settingEntry) {
    return;
  }
  // By the user: the entry no longer shows a row of the list.
  const ziAlive alive(this);
  XEvent* const event = data->event;
  const bool wasSelected = currentItem != ziListRows::kNone;
  if (wasSelected) {
    rows.deselectAll();
    currentItem = ziListRows::kNone;
  }
  notifyParent(kComboEditChanged, event);
  if (wasSelected && alive) {
    notifyParent(kComboSelectionChanged, event);
  }
}

// The combo box may be gone after these two; the event does not reach the widget then.
bool zComboBoxBase::onFocus(XEvent& event) {
  if (inListClick && isByGrab(event.xany.display)) {
    // The scroll bar of the list grabs the keyboard while it is being used.
    return false;
  }
  const ziAlive alive(this);
  if (event.type == FocusOut) {
    hideDropDown();
  }
  if (alive) {
    notifyParent(event.type == FocusIn ? kComboFocusIn : kComboFocusOut, &event);
  }
  return !alive;
}

bool zComboBoxBase::onPress(XEvent& event) {
  const bool isForList = event.xbutton.button == Button1;
  if (isForList) {
    // The entry can't be edited, so there is nothing to point at in it.
    toggleDropDown();
  }
  return isForList;
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
