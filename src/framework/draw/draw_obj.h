#pragma once

#include "support/storable.h"

/// An object that a display draws with.
class zDrawObj : public zStorable {
 public:
  /// The X pixel (of a font: its X id), looked up when first wanted; 0 without a display.
  unsigned long pixel() const;
  bool isStock() const { return stock; }

 protected:
  explicit zDrawObj(bool isStock) : stock(isStock) {}
  /// Asks the server or a cache; called only while a display is open.
  virtual unsigned long lookUpPixel() const = 0;

 private:
  mutable unsigned long value = 0;
  mutable bool known = false;
  bool stock;
};
