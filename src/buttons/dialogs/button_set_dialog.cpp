// What the dialogs of the button set have in common. The places of their controls come from the
// resources and are measured by the dialogs' own font, while the texts are in the font of the
// buttons; labels that don't fit get more room here and nowhere else.

#include "buttons/dialogs/button_set_dialog.h"

#include <algorithm>
#include <string>

#include "framework/controls/button.h"
#include "framework/controls/edit.h"
#include "framework/draw/measure.h"
#include "framework/draw/res_id.h"
#include "framework/layout/sizers.h"
#include "resources/dialogs.h"
#include "resources/resource_ids.h"

namespace {

constexpr std::uint32_t kDialogStyle = kStyleDialog;
constexpr std::uint32_t kRuleStyle = kStyleVisible;
constexpr int kDialogFont = 12;
constexpr int kMaxTextLength = 255;
// What a static text leaves free beside its text, pixels.
constexpr int kLabelMargins = 6;
// The two lines of the etching, pixels. The rule has no height of its own.
constexpr int kRuleHeight = 2;

}  // namespace

ziButtonSetDialog::ziButtonSetDialog(zWindow* mainWindow, std::uint32_t resourceId)
    : zFormDialog(mainWindow, resourceId, kDialogStyle) {
  setIcon(zResId(kIconMain));
  setFont(zRCFont(kDialogFont), 0);
}

zEditLine& ziButtonSetDialog::bindEditLine(int controlId, RWCString& data) {
  auto& line = control<zEditLine>(controlId);
  line.setMaxLength(kMaxTextLength);
  line.setBoundString(&data);
  line.showData();
  editLines.push_back(&line);
  return line;
}

void ziButtonSetDialog::readControls() {
  const auto isLineEnd = [](char c) { return c == '\n' || c == '\r'; };
  for (zEditLine* line : editLines) {
    std::string entered = line->text().str();
    if (std::any_of(entered.begin(), entered.end(), isLineEnd)) {
      std::replace_if(entered.begin(), entered.end(), isLineEnd, ' ');
      line->setText(entered.c_str());
    }
  }
  storeChildren();
}

void ziButtonSetDialog::bindClick(int controlId, zHandler handler) {
  childById(controlId)->addCtrlHandler(this, handler, kNotifyClicked);
}

void ziButtonSetDialog::finish(zControl& above, zControl& first) {
  fitLabels();
  addRule(above);
  centre(true);
  setFirstFocus(first);
  setup(1);
}

void ziButtonSetDialog::fitLabels() {
  zWindowDlist::Iter walk(children());
  while (zWindow* child = walk.next()) {
    auto* label = windowCast<zStaticText>(child);
    if (label == nullptr) {
      continue;
    }
    const std::string shown = label->text().str();
    const zDimension needed = fontObject()->measure(shown.data(), static_cast<int>(shown.size()));
    const zRect place = label->sizer()->rect();
    label->moveResize(place.left, place.top, std::max(place.width(), needed.width + kLabelMargins),
                      std::max(place.height(), needed.height));
  }
}

void ziButtonSetDialog::addRule(zControl& above) {
  constexpr int kMeasure = 100;
  const int top = (above.sizer()->rect().bottom + childById(kDialogCancel)->sizer()->pos().y) / 2;
  const int units = top * kMeasure / zDialogUnit(0, kMeasure, *fontObject()).height();
  const zDialogUnit pos(0, units, *fontObject());
  // In dialog units what the dialog is wide in pixels: the rule reaches past the right edge.
  // Intended.
  const zDialogUnit width(sizer()->size().width, 0, *fontObject());
  auto* rule = new zGroupBox(this, new zLeafSizer(0, pos.height(), width.width(), kRuleHeight),
                             kRuleStyle, "", static_cast<int>(kNoControlId));
  rule->show();
}

ziNameDialog::ziNameDialog(zWindow* mainWindow, std::uint32_t resourceId, const RWCString& initial)
    : ziButtonSetDialog(mainWindow, resourceId),
      nameText(initial),
      nameLine(bindEditLine(kDialogFirstEdit, nameText)) {
  // Only text on the screen can be selected.
  nameLine.setNotify(this, toHandler(&ziNameDialog::onFirstFocus), kEditFocusGained);
}

void ziNameDialog::finish(zControl& above) {
  ziButtonSetDialog::finish(above, nameLine);
  // Newer than the form's own binding, so asked before it.
  bindClick(kDialogOk, toHandler(&ziNameDialog::onAccept));
}

void ziNameDialog::bindApply() {
  bindClick(kDialogApply, toHandler(&ziNameDialog::onApply));
}

int ziNameDialog::onFirstFocus(zEvent* /*event*/) {
  nameLine.removeNotify(this, toHandler(&ziNameDialog::onFirstFocus), kEditFocusGained);
  nameLine.setSelection(0, nameLine.textLength());
  return 0;
}

// A name of blanks only is emptied.
bool ziNameDialog::readName() {
  readControls();
  const bool isGood = nameText.view().find_first_not_of(' ') != std::string_view::npos;
  if (!isGood && !nameText.isEmpty()) {
    nameText = "";
    nameLine.showData();
  }
  return isGood;
}

int ziNameDialog::onAccept(zEvent* event) {
  if (readName()) {
    return onOkClicked(event);
  }
  nameLine.setFocus();
  return 1;
}

int ziNameDialog::onApply(zEvent* /*event*/) {
  if (readName()) {
    apply();
  }
  nameLine.setFocus();
  return 1;
}
