#pragma once

#include <string>

#include "framework/draw/xtfwd.h"

/// What a label or button shows.
struct LabelView {
  std::string text;  ///< the first line
  unsigned long mnemonic = 0;
  int textHeight = 0;   ///< pixels
  int roomForText = 0;  ///< pixels between shadows and margins
  bool showsPicture = false;
  bool hasFocusRectangle = false;
};
LabelView viewOf(Widget label);
