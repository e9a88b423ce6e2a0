#pragma once

#include "framework/layout/sizer.h"

/// A sizer that asks for a fixed extent at one edge, whatever its children are.
class zGravSizer : public zSizer {
 public:
  zGravSizer(zGravity gravity, const zDimension& extent, zSizer* parent = nullptr);
  /// `extent` is the width of a left or right strip, the height of a top or bottom one, and both
  /// for the other gravities.
  zGravSizer(zGravity gravity, int extent, zSizer* parent = nullptr);

  const zDimension& extent() const { return wanted; }
  void setExtent(const zDimension& extent) { wanted = extent; }

  void getInfo(zLayoutInfo& info) override;
  zSizer* query(int kind) override;

 private:
  zDimension wanted;
};

/// Which dimension of a zGrowToFitSizer stays as it is.
enum zGrowDirection : int { kGrowFixedHeight = 1, kGrowFixedWidth = 2 };

/// A sizer that asks for what its children need in one direction and for a fixed extent in the
/// other. Without children it asks for the size that was last set or applied.
class zGrowToFitSizer : public zGravSizer {
 public:
  /// `extent` is a fixed height with kGrowFixedHeight, otherwise a fixed width.
  zGrowToFitSizer(zGravity gravity, zGrowDirection direction, int extent, zSizer* parent = nullptr);

  void getInfo(zLayoutInfo& info) override;
  zSizer* query(int kind) override;

 private:
  void fixExtent(zDimension& size) const;

  zGrowDirection direction;
};

/// A sizer that never lays out children: it only holds a rectangle.
class zLeafSizer : public zSizer {
 public:
  using zSizer::zSizer;

  void update(const zRect* rect) override;
  void getInfo(zLayoutInfo& info) override;
  void apply(const zRect& rect, int noMove) override;
  zSizer* query(int kind) override;
};

/// Keeps its window as large as the window's parent.
class zSizeWithParent : public zSizer {
 public:
  using zSizer::zSizer;

  void parentSized(ziSizerWindow& window, const zDimension& newSize) override;
  /// Asks for all the room that is left.
  void getInfo(zLayoutInfo& info) override;
  zSizer* query(int kind) override;
};
