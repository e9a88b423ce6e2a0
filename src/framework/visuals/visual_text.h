#pragma once

#include "framework/draw/color.h"
#include "framework/visuals/visual.h"
#include "support/rwc_string.h"

/// A line of text, in the middle of its height. It doesn't fill its background.
class ziVisText : public ziVisual {
 public:
  ziVisText(ziCompound* owner, std::unique_ptr<zSizer> sizer, const RWCString& text,
            std::uint32_t style = 0);

  const RWCString& text() const { return string; }
  virtual void setText(const RWCString& newText) { string = newText; }
  /// Pixels; a place for a text that is empty is empty.
  zDimension textSize() const;

  /// A text takes no mouse: that goes to what it stands on.
  ziVisual* hitTest(const zPoint& /*point*/) override { return nullptr; }
  /// Draws from the left edge of its rectangle.
  void draw(zDisplay& display) override;

 protected:
  void drawAt(zDisplay& display, const zPoint& at, const zColor& colour);

 private:
  RWCString string;
};

/// A text that is pressed and greyed together with what it stands on.
class ziVisText3d : public ziVisText {
 public:
  using ziVisText::ziVisText;

  void setLook(zVisualState newLook) { look = newLook; }
  /// Draws in the middle of its rectangle.
  void draw(zDisplay& display) override;

 protected:
  /// Draws with the look at the place of the text when it is up.
  void drawLooking(zDisplay& display, const zPoint& up);

 private:
  zVisualState look = kVisualUp;
};

/// The caption of a button with an image: it says where image and text stand.
class ziVisText3dBmp : public ziVisText3d {
 public:
  /// Style bits: how image and text stand to each other.
  enum Arrangement : std::uint32_t {
    kArrangeMask = 0xC00,
    kTextBelow = 0x400,
    kTextBeside = 0x800,
    kTextBelowToo = 0xC00,
  };
  using ziVisText3d::ziVisText3d;
  ~ziVisText3dBmp() override { setHolder(nullptr); }

  /// `pointer` points to this caption until the caption goes, which makes it null.
  void setHolder(ziVisText3dBmp** pointer);
  /// Centres image and text together in `inner`; returns the place of the image when it is up.
  zPoint arrange(const zRect& inner, const zDimension& image);
  void draw(zDisplay& display) override;

 private:
  zPoint textPlace;
  ziVisText3dBmp** holder = nullptr;
};
