#pragma once

#include <memory>

#include "framework/layout/layout.h"

/// What an object answers to zSizer::query. A sizer answers the kinds of its base classes too.
enum zSizerKind : int {
  kSizerPlain = 1,
  kSizerLeaf = 2,
  kSizerGrav = 5,
  kSizerPercent = 6,
  kSizerGrowToFit = 7,
  kSizerSizeWithParent = 9,
  kSizerOwnPosition = 10,  ///< zNormalLayout takes such a sizer as kGravityOwnPosition
  kSizerSlot = 100,
  kSizerSlotForComboBox = 101,
};

/// How a sizer and its window go together.
enum zWindowMode : int {
  kWindowNone = 0,       ///< the sizer serves no window and only divides space
  kWindowMoved = 1,      ///< the parent's layout moves the window
  kWindowMovedCtrl = 2,  ///< the same; set by some controls
  kWindowNotMoved = 3,   ///< the sizer has a window, but layouts never move it
};

/// Whether a layout pass moves the windows of the sizers that it places.
enum zApplyMode : int { kApplyMoves = 0, kApplyDoesNotMove = 1 };

/// Position and size of a window or of a mere part of one, and the tree in which children share
/// their parent's rectangle. Children of a sizer that serves a window have coordinates relative to
/// that window.
///
/// A sizer doesn't own its children, its layout or its window: windows own their sizers, and who
/// makes a sizer without a window deletes it.
class zSizer {
 public:
  /// A sizer whose position and size are not set; it goes to the end of the parent's children.
  explicit zSizer(zSizer* parent = nullptr);
  zSizer(int x, int y, int width, int height, zSizer* parent = nullptr);
  zSizer(const zPoint& pos, const zDimension& size, zSizer* parent = nullptr);
  zSizer(const zSizer&) = delete;
  zSizer& operator=(const zSizer&) = delete;
  /// Orphans the children and leaves the parent.
  virtual ~zSizer();

  /// The parent of `window`, which this sizer serves, got a new size.
  virtual void parentSized(ziSizerWindow& window, const zDimension& newSize);
  /// Lays out the children in `rect`, which becomes this sizer's rectangle; null for the rectangle
  /// that it has. This sizer's own window isn't moved.
  virtual void update(const zRect* rect);
  /// Says what this sizer asks of its parent's layout.
  virtual void getInfo(zLayoutInfo& info);
  /// Takes `rect` and lays out the children; with kApplyMoves the window moves, unless the gravity
  /// is kGravityOwnPosition.
  virtual void apply(const zRect& rect, int noMove);
  /// This sizer if it is of `kind` (zSizerKind), else null.
  virtual zSizer* query(int kind);

  const zPoint& pos() const { return place; }
  const zDimension& size() const { return extents; }
  zRect rect() const { return {place, extents}; }
  /// Both only store. A caller that wants the effect calls update(nullptr) on the parent sizer.
  void setPos(const zPoint& pos) { place = pos; }
  void setSize(const zDimension& size) { extents = size; }

  int gravity() const { return gravityValue; }
  void setGravity(zGravity gravity) { gravityValue = gravity; }

  zSizer* parent() const { return parentSizer; }
  /// Moves this sizer to the end of another sizer's children, or out of the tree.
  void setParent(zSizer* parent);
  int childCount() const { return count; }

  zLayout* layout() const { return layoutObject; }
  /// Null for the default layout.
  void setLayout(zLayout* layout) { layoutObject = layout; }

  ziSizerWindow* window() const { return servedWindow; }
  int windowMode() const { return mode; }
  void setWindow(ziSizerWindow* window, zWindowMode windowMode = kWindowMoved);
  void setWindowMode(zWindowMode windowMode) { mode = windowMode; }

  /// Puts `newSizer` in this sizer's place: it takes over children, window, place in the parent,
  /// position, size and layout. Deletes this sizer, which must be on the heap: the object is gone
  /// after the call (extra/sizers.cpp).
  void replaceBy(zSizer* newSizer);

 protected:
  /// Fills in `info` as a sizer without children does that asks for `wanted`.
  void reportSize(zLayoutInfo& info, const zDimension& wanted) const;
  /// Fills in `info` with what the layout says of the children, of which there are some.
  void askLayout(zLayoutInfo& info);
  void store(const zRect& rect);

 private:
  void addChild(zSizer* child);
  void removeChild(zSizer* child);
  void exchangeChild(const zSizer* oldChild, zSizer* newChild);
  void layoutChildren(const zRect& rect);
  zLayout& activeLayout() const;

  zPoint place{kNotSet, kNotSet};
  zDimension extents{kNotSet, kNotSet};
  zSizer* parentSizer = nullptr;
  int gravityValue = kGravityOwnPosition;
  zLayout* layoutObject = nullptr;
  std::unique_ptr<zSizerDlist> children;  ///< made for the first child
  ziSizerWindow* servedWindow = nullptr;
  int mode = kWindowNone;
  int count = 0;
};
