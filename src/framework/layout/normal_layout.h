#pragma once

#include "framework/layout/layout.h"

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
