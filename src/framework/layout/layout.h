#pragma once

#include "framework/layout/layout_info.h"
#include "support/dbl_list.h"

class zSizer;

/// Child sizers in the order in which they were added.
using zSizerDlist = zTypedDlist<zSizer>;

/// Decides how the children of one sizer share its rectangle. Layouts belong to whoever made them;
/// a sizer only points to one.
class zLayout {
 public:
  zLayout() = default;
  zLayout(const zLayout&) = delete;
  zLayout& operator=(const zLayout&) = delete;
  virtual ~zLayout() = default;

  /// Places `children` (there are `count`) inside `rect`, and may shrink `rect` to what they took.
  virtual void apply(zRect& rect, zSizerDlist& children, int count) = 0;
  /// Fills in what the children ask for together.
  virtual void getInfo(zLayoutInfo& info, zSizerDlist& children, int count) = 0;

 protected:
  std::int16_t layoutFlags = 0;  ///< free for subclasses
};
