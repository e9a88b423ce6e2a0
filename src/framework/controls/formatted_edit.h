#pragma once

#include <memory>

#include "framework/controls/edit.h"
#include "support/number_formatter.h"

/// A single line in which every key is put to a formatter first. What comes by the clipboard or the
/// pointer must fit it too.
class zFormattedEdit : public zEditLine {
 public:
  zFormattedEdit(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id,
                 std::unique_ptr<zNumFormatter> formatter);

  /// Puts the text through the formatter first.
  void setText(const char* newText) override;
  /// 0 for a text that does not fit the picture; the offending part is then selected.
  int childrenValid() override;
  /// The text put through the formatter with `flags` (zNumFormatFlag).
  RWCString formattedText(int flags) const;
  bool isValid() const { return valid; }

 protected:
  bool verifyChange(zTextRange range, std::string_view inserted) override;
  int keyArrived(zEvent& event, bool typed) override;

 private:
  std::unique_ptr<zNumFormatter> formatter;
  bool valid = true;
};

/// A single line for a whole number: an optional minus sign and up to ten digits.
class zLongEdit : public zFormattedEdit {
 public:
  /// Binds the number to `value` (null for none), which must outlive the control, and shows it.
  /// `flags` is a zNumFormatFlag.
  zLongEdit(zWindow* parent, zSizer* sizer, std::uint32_t style, int id, long* value,
            int flags = kNumShow);

  /// Stores the number; an empty text counts as 0.
  int storeData() override;
  /// Shows the number and selects it.
  int showData() override;

 private:
  int formatFlags;
  long* boundValue;
};
