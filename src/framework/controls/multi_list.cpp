#include "framework/controls/multi_list.h"

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
  for (const RWCString& text : *boundList) {
    if (const int row = rows.find(text.c_str()); row != ziListRows::kNone) {
      rows.addToSelection(row);
    }
  }
  return 1;
}
