#pragma once

#include "prompts/pop_up_dlg_base.h"

class zCheckBox;
class zLongEdit;

/// Asks for a text, which may be empty. OK and Cancel are the form's, so that the result is the
/// dialog's status, not `accepted`.
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
  int onCancel(zEvent* event) override;

 protected:
  /// Adds text and field.
  ziPopUpNumberDlg(zWindow* parent, const RWCString& message);

  /// The digits in the field.
  RWCString digits() const;

  zLongEdit* answerEdit = nullptr;
  long answerValue = 0;
  int below = 0;  ///< y of the row below the field

 private:
  int onFocusGained(zEvent* event);
};

/// Asks for a number.
class UIPopUpIntegerDlg : public ziPopUpNumberDlg {
 public:
  UIPopUpIntegerDlg(zWindow* parent, const RWCString& message);

  int onOk(zEvent* event) override;
  RWCString answer() const { return digits(); }
};

/// Asks for a number within limits, or for all, which is offered if the low limit is negative; the
/// lowest number is then 0.
class UIPopUpIntegerLimitDlg : public ziPopUpNumberDlg {
 public:
  /// The answer for all.
  static constexpr const char* kAll = "-1";

  UIPopUpIntegerLimitDlg(zWindow* parent, const RWCString& message, long low, long high);

  /// A number outside the limits is set to 0 and the dialog stays open, without a word, also when
  /// all is chosen. Intended.
  int onOk(zEvent* event) override;
  int storeData() override;
  /// The digits, or kAll.
  RWCString answer() const;

 private:
  long lowLimit;
  long highLimit;
  zCheckBox* allCheck = nullptr;  ///< none if the low limit was not negative
};
