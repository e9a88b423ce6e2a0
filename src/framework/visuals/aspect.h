#pragma once

#include <memory>

#include "framework/draw/draw_obj.h"
#include "framework/draw/font.h"
#include "support/storable.h"

class zDisplay;

/// A drawing attribute of a visual, in force on the display while the visual draws.
class ziAspect : public zStorable {
 public:
  /// Both with the display locked; calls are paired, the last applied is the first undone.
  virtual void apply(zDisplay& display) = 0;
  virtual void undo(zDisplay& display) = 0;
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
