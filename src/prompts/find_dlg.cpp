// The Find dialog. Of its four fields at most one is meant: a choice that the user makes in one
// clears the others, typing does not; a typed text goes first. A list without items is greyed and
// has no choice; its placeholder is never searched for.

#include "prompts/find_dlg.h"

#include <iterator>

#include "framework/controls/button.h"
#include "framework/controls/combo_box.h"
#include "framework/layout/sizers.h"

namespace {

constexpr zDimension kFindSize = {400, 200};
// Units of height of the whole dialog, the row of buttons and its line included.
constexpr int kRows = 54;
constexpr std::uint32_t kGroupStyle = kStyleControlStop;
constexpr std::uint32_t kTextComboStyle = kStyleChild | kStyleBothScrolls | kStyleTabStop |
                                          kComboDropDown | kComboFollowsAcross |
                                          kComboPlainCharacters;
constexpr std::uint32_t kListComboStyle = kTextComboStyle | kComboSorted;
constexpr std::uint32_t kRegexpStyle =
    kStyleControlStop | kStyleClipSiblings | kStyleGroup | kButtonAutoCheck;
constexpr std::uint32_t kCaseStyle = kStyleControlStop | kButtonAutoCheck;

}  // namespace

FindDlg::FindDlg(zWindow* parent, const FindSettings& settings, int list, const PromptItems& items)
    : UIPopUpDlgBase(parent, kFindSize) {
  fitRows(kRows);
  int y = gapY;
  const int step = unitY * 8;
  // Of two siblings the one made first is in front: the fields before their frames.
  textCombo = addCombo<zComboBoxFull>(y, kTextComboStyle);
  processCombo = addListCombo(y + step, "No Process available");
  signalCombo = addListCombo(y + 2 * step, "No Signal available");
  timerCombo = addListCombo(y + 3 * step, "No Timer available");
  zGroupBox** const groups[] = {&textGroup, &processGroup, &signalGroup, &timerGroup};
  const char* const labels[] = {"Find Text:", "Find Process:", "Find Signal:", "Find Timer:"};
  for (std::size_t i = 0; i < std::size(groups); ++i) {
    *groups[i] = addGroup(y, unitY * 6, labels[i]);
    y += step;
  }
  textCombo->addAll(settings.history);
  textCombo->setCurSel(0);
  textCombo->setNotify(this, toHandler(&FindDlg::onTextChoice), kComboSelectionChanged);
  textCombo->setNotify(this, toHandler(&FindDlg::onTextFocus), kComboFocusIn);
  addOptions(y, settings);
  addItems(list, items);
  y += unitY * 10;
  setFirstFocus(*textCombo);
  finish(y);
}

template <class Combo>
Combo* FindDlg::addCombo(int y, std::uint32_t style) {
  auto* combo = new Combo(
      this, new zLeafSizer(marginX + unitX, y + 2 * unitY, rowWidth() - 2 * unitX, unitY * 22),
      style, nextId());
  combo->show();
  return combo;
}

zComboBoxStatic* FindDlg::addListCombo(int y, const char* emptyText) {
  auto* combo = addCombo<zComboBoxStatic>(y, kListComboStyle);
  combo->add(emptyText);
  combo->setCurSel(0);
  combo->disable();
  combo->setNotify(this, toHandler(&FindDlg::onListChoice), kComboSelectionChanged);
  return combo;
}

zGroupBox* FindDlg::addGroup(int y, int height, const char* label) {
  return new zGroupBox(this, rowAt(y, height), kGroupStyle, label, nextId());
}

void FindDlg::addOptions(int y, const FindSettings& settings) {
  optionsGroup = addGroup(y, unitY * 8, "Options");
  const int height = unitY * 26 / 10;
  const int width = rowWidth() - 4 * unitX;
  // Below the title, which is part of the group box.
  const int top = 2 * unitY;
  const auto place = [&](int row) {
    return new zLeafSizer(unitX, top + row * height, width, height);
  };
  regexpCheck = new zCheckBox(optionsGroup, place(0), kRegexpStyle, "Regular expression", nextId());
  caseCheck = new zCheckBox(optionsGroup, place(1), kCaseStyle, "Match case", nextId());
  regexpCheck->check(settings.offersRegexp && settings.useRegexp);
  if (!settings.offersRegexp) {
    regexpCheck->disable();
  }
  caseCheck->check(settings.matchCase);
}

void FindDlg::addItems(int list, const PromptItems& items) {
  zComboBoxStatic* const combos[] = {processCombo, signalCombo, timerCombo};
  if (list < kFindProcesses || list > kFindTimers || items.empty()) {
    return;
  }
  zComboBoxStatic& combo = *combos[list - kFindProcesses];
  if (!combo.isEnabled()) {
    combo.remove(0);
    combo.enable();
  }
  combo.addAll(items);
  if (!isRunning()) {
    combo.selectString(items.front().c_str());
  }
}

void FindDlg::clearLists(const zWindow* except) {
  for (zComboBoxStatic* combo : {processCombo, signalCombo, timerCombo}) {
    if (combo != except && combo->isEnabled()) {
      combo->setCurSel(-1);
    }
  }
}

int FindDlg::onTextChoice(zEvent* /*event*/) {
  // Typing, which leaves no row chosen, is no choice.
  if (textCombo->curSel() >= 0) {
    clearLists(nullptr);
  }
  return 0;
}

int FindDlg::onTextFocus(zEvent* /*event*/) {
  // What is typed replaces an earlier search: choosing its row again marks the text.
  if (textCombo->curSel() >= 0) {
    textCombo->setCurSel(textCombo->curSel());
  }
  return 0;
}

int FindDlg::onListChoice(zEvent* event) {
  clearLists(event->window);
  textCombo->setCurSel(-1);
  return 0;
}

int FindDlg::onOk(zEvent* /*event*/) {
  useRegexp = regexpCheck->checked() ? 1 : 0;
  matchCase = caseCheck->checked() ? 1 : 0;
  // A row may hold more than the one line that the entry shows of it.
  if (textCombo->itemText(searchString, textCombo->curSel()) == 0) {
    searchString = textCombo->text();
  }
  for (const zComboBoxStatic* combo : {processCombo, signalCombo, timerCombo}) {
    if (searchString.isEmpty() && combo->isEnabled()) {
      combo->itemText(searchString, combo->curSel());
    }
  }
  return endWith(searchString.isEmpty() ? 0 : 1);
}
