#pragma once

#include "prompts/pop_up_dlg_base.h"

class zCheckBox;
class zLongEdit;

/// Asks for a text, which may be empty.
class UIPopUpStringDlg : public UIPopUpDlgBase {
 public:
  UIPopUpStringDlg(zWindow* parent, const RWCString& message);

  /// What is in the field.
  const RWCString& answer();

 private:
  zEditLine* answerEdit = nullptr;
  RWCString answerText;
};

/// What the prompts for a number have in common: the field, which starts with 0.
class ziPopUpNumberDlg : public UIPopUpDlgBase {
 public:
  /// A number outside the limits is set to 0 and the dialog stays open, without a word. Intended.
  int onOk(zEvent* event) override;
  /// The digits in the field.
  RWCString answer() const;

 protected:
  /// Adds text and field.
  ziPopUpNumberDlg(zWindow* parent, const RWCString& message, long low, long high);

  int below = 0;  ///< y of the row below the field

 private:
  int onFocusGained(zEvent* event);

  zLongEdit* answerEdit = nullptr;
  long answerValue = 0;
  long lowLimit;
  long highLimit;
};

/// Asks for a number.
class UIPopUpIntegerDlg : public ziPopUpNumberDlg {
 public:
  UIPopUpIntegerDlg(zWindow* parent, const RWCString& message);
};

/// Asks for a number within limits, or for all, which is offered if the low limit is negative; the
/// lowest number is then 0. The number is to be within the limits also when all is chosen.
/// Intended.
class UIPopUpIntegerLimitDlg : public ziPopUpNumberDlg {
 public:
  /// The answer for all.
  static constexpr const char* kAll = "-1";

  UIPopUpIntegerLimitDlg(zWindow* parent, const RWCString& message, long low, long high);

  /// The digits, or kAll.
  RWCString answer() const;

 private:
  zCheckBox* allCheck = nullptr;  ///< none if the low limit was not negative
};
