#pragma once

#include <vector>

#include "framework/visuals/visual.h"
#include "support/rwc_string.h"

class zStatusLine;

/// Look of a status item.
enum zStatusItemStyle : std::uint32_t {
  kStatusSunken = 1,  ///< in a sunken field
  kStatusCentred = 2,
};

/// A field of a status line, which owns it.
class zStatusItem : public ziVisual {
 public:
  /// `sizer` becomes the item's and joins those of the line's items: bars at the edges, and one
  /// that fills the rest (see zNormalLayout). `style` is a set of zStatusItemStyle.
  zStatusItem(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style);
  ~zStatusItem() override;

  int id() const { return itemId; }
  zStatusLine& line() const { return statusLine; }
  /// Whether setText is for the program: false for items that fill themselves.
  virtual bool takesText() const { return false; }
  /// Draws at once, unless the line shows a help text.
  void redraw();
  /// Clears the field and draws its edge.
  void draw(zDisplay& display) override;

 protected:
  /// The part inside the edge.
  zRect field() const;

 private:
  zStatusLine& statusLine;
  int itemId;
};

/// A field with a text.
class zStatusItemText : public zStatusItem {
 public:
  zStatusItemText(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style = kStatusSunken);

  const RWCString& text() const { return string; }
  void setText(const RWCString& newText);
  bool takesText() const override { return true; }
  void draw(zDisplay& display) override;

 protected:
  void storeText(const RWCString& newText) { string = newText; }
  /// Makes the field as wide as the widest of `texts` needs.
  void fitWidth(const std::vector<RWCString>& texts);

 private:
  RWCString string;
};
