#pragma once

#include "framework/controls/control.h"

/// Text that the user cannot change, of one or several lines. Mnemonic signs and tabs as in
/// buttons.
class zStaticText : public zControl {
 public:
  static constexpr int kClassNumber = kClassStaticText;
  zStaticText(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id = -1);

  void setText(const char* newText) override;
  /// Size of what it shows, pixels.
  zDimension textSize() const;
};
