#pragma once

#include "framework/visuals/bevel.h"
#include "framework/visuals/visual.h"

/// A panel with a raised or sunken edge. It does not fill its inside.
class ziVisPanelInternal : public ziVisControl {
 public:
  /// Style bits.
  enum Style : std::uint32_t {
    kRaisedEdge = 0x4000,  ///< otherwise the edge is sunken
    kOuterLine = 0x0001,   ///< a black line round the edge
    kInnerEdge = 0x0002,   ///< a second edge, the other way round
  };

  ziVisPanelInternal(ziCompound* owner, std::unique_ptr<zSizer> sizer, std::uint32_t style,
                     int thickness = 1);

  void drawUp(zDisplay& display) override;
  void drawDisabled(zDisplay& display) override;
  /// What the edges leave; as of the last drawing.
  const zRect& inside() const { return insideRect; }

 private:
  void drawEdges(zDisplay& display);

  int thickness;
  int outerLine;  ///< its width
  bool hasInnerEdge;
  zRect insideRect;
};
