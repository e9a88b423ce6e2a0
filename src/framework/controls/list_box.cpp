#include "framework/controls/list_box.h"

#include "framework/core/connect_xm.h"

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

// The toolkit's list needs both of its bars: one that is not wanted takes no room instead.
void shrinkBar(Widget list, const char* name, const char* thickness) {
  Widget bar = nullptr;
  XtVaGetValues(XtParent(list), name, &bar, nullptr);
  XtSetMappedWhenManaged(bar, False);
  XtVaSetValues(bar, thickness, 1, nullptr);
}

}  // namespace

/// What the list widget reports. The control may be gone after each of these.
class ziListCallbacks {
 public:
  explicit ziListCallbacks(zListBoxBase& owner) : list(owner), widget(owner.widget()) {
    forEachSelection([this](auto name) { connect<&ziListCallbacks::chosen>(widget, name, this); });
    connect<&ziListCallbacks::activated>(widget, callback::defaultAction, this);
  }
  ziListCallbacks(const ziListCallbacks&) = delete;
  ziListCallbacks& operator=(const ziListCallbacks&) = delete;
  ~ziListCallbacks() {
    forEachSelection(
        [this](auto name) { disconnect<&ziListCallbacks::chosen>(widget, name, this); });
    disconnect<&ziListCallbacks::activated>(widget, callback::defaultAction, this);
  }

 private:
  // One of them reports, depending on the selection policy.
  template <class Operation>
  static void forEachSelection(Operation operation) {
    for (const auto& name :
         {callback::browseSelection, callback::multipleSelection, callback::extendedSelection}) {
      operation(name);
    }
  }

  void chosen(XmListCallbackStruct* data) {
    list.selected = data->item_position - 1;
    list.notifyParent(kListSelectionChanged, data->event);
  }

  void activated(XmListCallbackStruct* data) {
    zListBoxBase& owner = list;
    const ziAlive alive(&owner);
    XEvent* const event = data->event;
    if (owner.selected != data->item_position - 1) {
      // Two quick clicks on two rows: the widget reports no selection of the second.
      chosen(data);
    }
    if (alive) {
      owner.notifyParent(kListDoubleClick, event);
    }
  }

  zListBoxBase& list;
  Widget widget;
};

zListBoxBase::zListBoxBase(zWindow* parent, zSizer* sizer, std::uint32_t style, int id, Order order)
    : zControl(parent, sizer, style, "", id),
      isSorted(order == Order::byStyle && (style & kListSorted) != 0) {
  markClass(kClassListBoxBase);
  createList();
}

zListBoxBase::~zListBoxBase() = default;

void zListBoxBase::createList() {
  unsigned char policy = XmBROWSE_SELECT;
  if (isMultiple()) {
    policy = (style() & kListExtended) != 0 ? XmEXTENDED_SELECT : XmMULTIPLE_SELECT;
  }
  Arg settings[] = {
      {const_cast<char*>(XmNlistSizePolicy), XmCONSTANT},
      {const_cast<char*>(XmNselectionPolicy), policy},
      {const_cast<char*>(XmNtraversalOn), (style() & kStyleTabStop) != 0},
  };
  inner = XmCreateScrolledList(createHolder(), const_cast<char*>("ScrolledListBox"), settings,
                               XtNumber(settings));
  XtOverrideTranslations(inner, rowKeys());
  if ((style() & kStyleVertScroll) == 0) {
    shrinkBar(inner, XmNverticalScrollBar, XmNwidth);
  }
  if ((style() & kStyleHorzScroll) == 0) {
    shrinkBar(inner, XmNhorizontalScrollBar, XmNheight);
  }
  rows.attach(inner);
  finishCreation(kKindList, inner, XtParent(inner));
  callbacks = std::make_unique<ziListCallbacks>(*this);
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

int zListBoxBase::remove(int row) {
  if (!rows.remove(row)) {
    return 0;
  }
  if (row == selected) {
    selected = ziListRows::kNone;
  } else if (row < selected) {
    --selected;
  }
  return 1;
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
