#pragma once

#include <vector>

#include "framework/controls/list_box.h"

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
