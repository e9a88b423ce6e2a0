#include "framework/controls/list_box.h"

#include <algorithm>

#include "framework/controls/widgets_xm.h"

namespace {

// The toolkit moves the text sideways with these two keys, and through the rows with Control only.
XtTranslations rowKeys() {
  static const XtTranslations parsed = XtParseTranslationTable(
      "~Shift ~Ctrl ~Meta ~Alt <Key>osfBeginLine: ListBeginData()\n"
      "~Shift ~Ctrl ~Meta ~Alt <Key>osfEndLine: ListEndData()\n"
      "Shift ~Ctrl ~Meta ~Alt <Key>osfBeginLine: ListBeginDataExtend()\n"
      "Shift ~Ctrl ~Meta ~Alt <Key>osfEndLine: ListEndDataExtend()");
  return parsed;
}

}  // namespace

zListBoxBase::zListBoxBase(zWindow* parent, zSizer* sizer, std::uint32_t style, int id, Order order)
    : zControl(parent, sizer, style, "", id),
      isSorted(order == Order::byStyle && (style & kListSorted) != 0) {
  markClass(kClassListBoxBase);
  createList();
}

zListBoxBase::~zListBoxBase() {
  tieCallbacks(false);
}

void zListBoxBase::tieCallbacks(bool made) {
  using Data = XmListCallbackStruct;
  const Tie state = made ? Tie::made : Tie::undone;
  // One of the three reports a selection, depending on the policy.
  for (const auto& name :
       {callback::browseSelection, callback::multipleSelection, callback::extendedSelection}) {
    tie<&zListBoxBase::onChosen<Data>>(state, widget(), name, this);
  }
  tie<&zListBoxBase::onActivated<Data>>(state, widget(), callback::defaultAction, this);
}

template <class Data>
void zListBoxBase::onChosen(Data* data) {
  selected = data->item_position - 1;
  notifyParent(kListSelectionChanged, data->event);
}

template <class Data>
void zListBoxBase::onActivated(Data* data) {
  const ziAlive alive(this);
  XEvent* const event = data->event;
  if (selected != data->item_position - 1) {
    // Two quick clicks on two rows: the widget reports no selection of the second.
    onChosen(data);
  }
  if (alive) {
    notifyParent(kListDoubleClick, event);
  }
}

void zListBoxBase::createList() {
  unsigned char policy = XmBROWSE_SELECT;
  if (isMultiple()) {
    policy = (style() & kListExtended) != 0 ? XmEXTENDED_SELECT : XmMULTIPLE_SELECT;
  }
  Arg settings[] = {
      {xmText(XmNlistSizePolicy), XmCONSTANT},
      {xmText(XmNselectionPolicy), policy},
      {xmText(XmNtraversalOn), isTabStop(style())},
  };
  inner =
      XmCreateScrolledList(createHolder(), xmText("ScrolledListBox"), settings, XtNumber(settings));
  XtOverrideTranslations(inner, rowKeys());
  if ((style() & kStyleBothScrolls) != kStyleBothScrolls) {
    shrinkBars();
  }
  rows.attach(inner);
  finishCreation(kKindList, inner, XtParent(inner));
  tieCallbacks(true);
}

int zListBoxBase::add(const char* text) {
  const int row = isSorted ? rows.addSorted(text) : rows.append(text);
  if (row <= selected) {
    ++selected;
  }
  return row;
}

void zListBoxBase::addAll(const std::vector<RWCString>& texts) {
  selected = rows.addAll(texts, isSorted, selected);
}

void zListBoxBase::clear() {
  rows.clear();
  selected = ziListRows::kNone;
}

int zListBoxBase::setCurSel(int row) {
  if (row < 0) {
    // `selected` stays on purpose: who looks again later finds what was chosen last.
    rows.deselectAll();
    return 1;
  }
  if (row >= count()) {
    return 0;
  }
  rows.select(row);
  selected = row;
  return 1;
}

int zListBoxBase::itemText(RWCString& out, int row) const {
  const int asked = row == -1 ? selected : row;
  out = rows.text(asked);
  return asked >= 0 && asked < count() ? 1 : 0;
}

int zListBoxBase::selectString(const char* text) {
  const int row = rows.find(text);
  if (row != ziListRows::kNone) {
    setCurSel(row);
  }
  return row;
}

int zListBoxBase::storeData() {
  if (boundString == nullptr) {
    return 0;
  }
  itemText(*boundString, -1);
  return 1;
}

int zListBoxBase::showData() {
  if (boundString == nullptr) {
    return 0;
  }
  selectString(boundString->c_str());
  return 1;
}

zListBox::zListBox(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
    : zListBoxBase(parent, sizer, style, id, Order::byStyle) {
  markClass(kClassListBox);
}

zListBoxUnsorted::zListBoxUnsorted(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
    : zListBoxBase(parent, sizer, style, id, Order::asAdded) {
  markClass(kClassListBoxUnsorted);
}

zMultiList::zMultiList(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
    : zListBoxBase(parent, sizer, style | kListMultiple, id, Order::byStyle) {}

int zMultiList::storeData() {
  if (boundList == nullptr) {
    return zListBoxBase::storeData();
  }
  boundList->clear();
  for (const int row : selections()) {
    boundList->emplace_back(rows.text(row));
  }
  return 1;
}

int zMultiList::showData() {
  if (boundList == nullptr) {
    return zListBoxBase::showData();
  }
  rows.deselectAll();
  std::vector<int> chosen;
  for (const RWCString& text : *boundList) {
    int row = rows.find(text.view());
    // Equal texts mean as many rows.
    while (std::find(chosen.begin(), chosen.end(), row) != chosen.end()) {
      row = rows.find(text.view(), row + 1);
    }
    if (row != ziListRows::kNone) {
      rows.addToSelection(row);
      chosen.push_back(row);
    }
  }
  return 1;
}
