#pragma once

#include <cstdint>

#include "support/geometry.h"
#include "support/lists.h"

/// How the children of a sizer share its rectangle, and what a sizer tells and needs for that.

class zSizer;

/// How a sizer wants to stand in its parent's rectangle.
enum zGravity : int {
  kGravityLeft = 0,         ///< strip at the left edge of what is left
  kGravityRight = 1,        ///< strip at the right edge
  kGravityTop = 2,          ///< strip at the top edge
  kGravityBottom = 3,       ///< strip at the bottom edge
  kGravityCentre = 4,       ///< centred in what is left
  kGravityFill = 5,         ///< fills what is left
  kGravityOwnPosition = 6,  ///< own position, not affected by the others
};

/// What a sizer tells its parent's layout. A width or height of 0 means as far as there is room.
struct zLayoutInfo {
  zPoint pos;
  zDimension minSize;
  zDimension size;
  zDimension maxSize;
  int gravity = kGravityOwnPosition;
  /// Two words for a layout's own purposes during one pass.
  void* layoutPointer = nullptr;
  std::intptr_t layoutWord = 0;

  void reset() { *this = zLayoutInfo(); }
  void setAllSizes(const zDimension& value) { minSize = size = maxSize = value; }
};

/// What a sizer needs of the window that it serves. The window implements this and owns its sizer.
class ziSizerWindow {
 public:
  ziSizerWindow() = default;
  ziSizerWindow(const ziSizerWindow&) = delete;
  ziSizerWindow& operator=(const ziSizerWindow&) = delete;
  virtual ~ziSizerWindow() = default;

  /// Moves and resizes the window; pixels, relative to its parent.
  virtual void moveResize(std::int32_t x, std::int32_t y, std::int32_t width,
                          std::int32_t height) = 0;
  /// True once the window's widget exists; before that a layout leaves the window alone.
  virtual bool hasWidget() const = 0;
  /// Told by replaceBy(): the window now owns `sizer` and must forget, not delete, the old one.
  virtual void sizerReplaced(zSizer& sizer) = 0;
};

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

/// The default layout: strips along the edges, then what fills or is centred in the rest, and
/// children at positions of their own. The order of the children matters: a strip takes its part
/// from what the ones before it left.
class zNormalLayout : public zLayout {
 public:
  /// The one that serves all sizers without a layout, made on first use.
  static zNormalLayout& shared();

  /// With no filling or centred child, `rect` shrinks to the sum of the strips.
  void apply(zRect& rect, zSizerDlist& children, int count) override;
  void getInfo(zLayoutInfo& info, zSizerDlist& children, int count) override;
};

/// Raises what is asked for to the right edge of the children at positions of their own.
void raiseToFixedChildren(zLayoutInfo& info, int rightEdge);
