#pragma once

// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.
// Panels, aspects, groups, buttons with captions.

#include <memory>

#include "framework/draw/draw_obj.h"
#include "framework/draw/font.h"
#include "framework/visuals/toolbar.h"

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

class ziPenAspect : public ziAspect {
 public:
  explicit ziPenAspect(const zColor& colour) : pen(colour) {}

  void apply(zDisplay& display) override;
  void undo(zDisplay& display) override;

 private:
  zPen pen;
};

class ziBrushAspect : public ziAspect {
 public:
  explicit ziBrushAspect(const zColor& colour) : brush(colour) {}

  void apply(zDisplay& display) override;
  void undo(zDisplay& display) override;

 private:
  zBrush brush;
};

class ziFontAspect : public ziAspect {
 public:
  explicit ziFontAspect(const zFontSpec& font) : spec(font) {}

  void apply(zDisplay& display) override;
  void undo(zDisplay& display) override;

 private:
  zFontSpec spec;
};

class ziTextBackcolorAspect : public ziAspect {
 public:
  explicit ziTextBackcolorAspect(const zColor& colour) : backColour(colour) {}

  void apply(zDisplay& display) override;
  void undo(zDisplay& display) override;

 private:
  zColor backColour;
  zColor before;
};

/// A group of visuals that is painted as one and lets the pointer through to what lies below it.
class ziShellCompound : public ziCompound {
 public:
  using ziCompound::ziCompound;

  ziVisual* hitTest(const zPoint& /*point*/) override { return nullptr; }
};

/// A button with an image outside toolbars, with a caption beside or below the image; it takes the
/// focus.
class zBitmapButton : public ziVCBCtrlButton {
 public:
  zBitmapButton(zWindow* parent, zSizer* sizer, int style, const char* captionText, int id,
                zBitmap* bitmap);
};
