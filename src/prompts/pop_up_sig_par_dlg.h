#pragma once

#include "prompts/pop_up_dlg_base.h"
#include "prompts/prompt_items.h"

/// Shows the definitions of a signal's parameters, each as it came, and asks for the values in one
/// line, which the tester checks.
class UIPopUpSigParDlg : public UIPopUpDlgBase {
 public:
  UIPopUpSigParDlg(zWindow* parent, const RWCString& message, const PromptItems& definitions);

  /// Shows `items` at `y`, or with 0 below those that are there, in their place. Returns their
  /// number and 1.
  int addDefinitions(const PromptItems& items, int y);

  int onOk(zEvent* event) override;
  int onCancel(zEvent* event) override;
  /// What is in the field, as typed.
  const RWCString& answer();

 private:
  bool isReadable() const;
  void showDefinitions();

  zStaticText* definitionText = nullptr;
  zEditBox* definitionBox = nullptr;  ///< in front of definitionText if that can't be read whole
  RWCString definitions;
  int visibleHeight = 0;  ///< of the place of the definitions
  zEditLine* answerEdit = nullptr;
  RWCString answerText;
};
