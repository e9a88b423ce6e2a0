#pragma once

#include <cstdint>

#include "prompts/pop_up_dlg_base.h"

class zCheckBox;
class zComboBoxFull;
class zComboBoxStatic;

/// What the Find dialog starts with.
struct FindSettings {
  std::vector<RWCString> history;  ///< earlier searches, newest first
  bool offersRegexp = false;       ///< whether the user has regular expressions at all
  bool useRegexp = false;
  bool matchCase = false;
};

/// Which list the items of a message go into.
enum FindList : int {
  kFindProcesses = 1,
  kFindSignals = 2,
  kFindTimers = 3,
};

/// Asks what to search the log for: a text, or one of the processes, signals and timers, of which
/// the tester supplies a list each.
class FindDlg : public UIPopUpDlgBase {
 public:
  /// `list` (FindList) and `items` as for addItems.
  FindDlg(zWindow* parent, const FindSettings& settings, int list, const PromptItems& items);

  /// Adds items to a list and, unless the dialog runs, chooses the first of them. An unknown list
  /// changes nothing.
  void addItems(int list, const PromptItems& items);

  /// With nothing to search for, OK counts as Cancel. Intended.
  int onOk(zEvent* event) override;

  // The results of OK.
  RWCString searchString;
  std::uint8_t matchCase = 0;
  std::uint8_t useRegexp = 0;

 private:
  template <class Combo>
  Combo* addCombo(int y, std::uint32_t style);
  zComboBoxStatic* addListCombo(int y, const char* emptyText);
  zGroupBox* addGroup(int y, int height, const char* label);
  void addOptions(int y, const FindSettings& settings);
  int onTextChoice(zEvent* event);
  int onTextFocus(zEvent* event);
  int onListChoice(zEvent* event);
  void clearLists(const zWindow* except);

  zComboBoxFull* textCombo = nullptr;
  zComboBoxStatic* processCombo = nullptr;
  zComboBoxStatic* signalCombo = nullptr;
  zComboBoxStatic* timerCombo = nullptr;
  zCheckBox* regexpCheck = nullptr;
  zCheckBox* caseCheck = nullptr;
  zGroupBox* textGroup = nullptr;
  zGroupBox* processGroup = nullptr;
  zGroupBox* signalGroup = nullptr;
  zGroupBox* timerGroup = nullptr;
  zGroupBox* optionsGroup = nullptr;
};
