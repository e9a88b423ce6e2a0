#include "framework/controls/multi_list.h"

#include <algorithm>

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
