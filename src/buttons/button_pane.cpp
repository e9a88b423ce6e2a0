// A group's panel. All buttons of a group count for its extents, but only those get windows that
// were near the visible part at some time: thousands of windows would take seconds to make.
//
// Windows cannot have more than 32767 rows of pixels, while a group may. So the window of a panel
// is cut where it reaches far beyond the canvas, and the buttons move up by what is cut off at the
// top. Nobody sees the cut edges, nor the header that stays at the upper one.

#include "buttons/button_pane.h"

#include <algorithm>

#include "buttons/button_host.h"
#include "buttons/group_pane.h"
#include "framework/draw/measure.h"
#include "framework/layout/grav_sizer.h"
#include "support/label_text.h"

namespace {

constexpr std::uint32_t kPanelStyle = 16393;
constexpr std::uint32_t kCheckBoxStyle = 0x50010003;
constexpr std::uint32_t kGroupButtonStyle = 0x50010000;
constexpr int kMarginDown = 2;     // dialog units
constexpr int kMarginAcross = 4;   // dialog units
constexpr int kCheckMark = 20;     // beside the name's width
constexpr int kCheckMargins = 16;  // beside the name's text and a mark as high as it
constexpr int kCheckBoxInset = 9;
constexpr int kGroupButtonInset = 8;
constexpr int kLeft = 1;
constexpr std::size_t kRightMargin = 3;
// How far from the upper edge of the canvas a panel's window may reach; more than canvases do.
constexpr int kReach = 16000;
constexpr zPoint kMenuOffset = {6, -2};

}  // namespace

ButtonPane::ButtonPane(GroupPane& canvas, zSizer* sizer, const RWCString& name, int isExpanded)
    : zPanel3d(&canvas, sizer, kPanelStyle, "", canvas.nextControlId()),
      groups(canvas),
      groupName(name),
      nameWidth(widenedText(canvas.textExtent(name).width)),
      expandedHeight(canvas.metrics().headerHeight),
      expanded(isExpanded) {
  if (canvas.background() != kNoBackground) {
    setBackground(canvas.backgroundColour());
  }
  createHeader();
  updateWidths();
  setExpanded(isExpanded);
  show();
}

ButtonPane::~ButtonPane() {
  // They refer to their commands.
  for (const auto& button : buttons) {
    delete button->window;
  }
}

void ButtonPane::createHeader() {
  const zDialogUnit margin(kMarginAcross, kMarginDown);
  zSizer* all = sizer();
  margins = {std::make_unique<zGravSizer>(kGravityTop, margin.height(), all),
             std::make_unique<zGravSizer>(kGravityBottom, margin.height(), all),
             std::make_unique<zGravSizer>(kGravityLeft, margin.width(), all),
             std::make_unique<zGravSizer>(kGravityRight, margin.width(), all)};
  const GroupMetrics& metrics = groups.metrics();
  // The first child is the uppermost: where the two overlap, the button is whole.
  groupButton = new zPushButton(
      this,
      new zGravSizer(kGravityRight,
                     {metrics.groupButtonWidth, metrics.headerHeight - kGroupButtonInset}, all),
      kGroupButtonStyle, "Group", groups.nextControlId());
  groupButton->setNotify(this, toHandler(&ButtonPane::onGroup), kNotifyClicked);
  const zDimension boxSize = {checkBoxWidth(), metrics.headerHeight - kCheckBoxInset};
  auto* boxSizer = new zGrowToFitSizer(kGravityLeft, kGrowFixedHeight, boxSize.height, all);
  boxSizer->setSize(boxSize);
  checkBox = new zCheckBox(this, boxSizer, kCheckBoxStyle,
                           withoutMnemonics(groupName.view()).c_str(), groups.nextControlId());
  checkBox->setBoundValue(&expanded);
  checkBox->setNotify(this, toHandler(&ButtonPane::onFold), kNotifyClicked);
  groupButton->keepFocusOnClick();
  checkBox->keepFocusOnClick();
  for (zWindow* window : {static_cast<zWindow*>(this), static_cast<zWindow*>(groupButton),
                          static_cast<zWindow*>(checkBox)}) {
    groups.takeInputOf(*window);
  }
}

int ButtonPane::headerHeight() const {
  return groups.metrics().headerHeight;
}

// The plain width of a name would not hold the mark beside it.
int ButtonPane::checkBoxWidth() const {
  const zDimension shown = groups.textExtent(groupName);
  return std::max(nameWidth + kCheckMark, shown.width + shown.height + kCheckMargins);
}

std::vector<RWCString> ButtonPane::labels() const {
  std::vector<RWCString> all;
  for (const auto& button : buttons) {
    all.push_back(button->label);
  }
  return all;
}

void ButtonPane::setExpanded(int newValue) {
  expanded = newValue;
  checkBox->showData();
}

void ButtonPane::append(const RWCString& label, const RWCString& definition) {
  buttons.push_back(std::make_unique<ziCommand>(
      ziCommand{label, definition, groups.nextControlId(), groups.buttonWidth(label)}));
  maxButtonWidth = std::max(maxButtonWidth, buttons.back()->buttonWidth);
}

void ButtonPane::updateWidths() {
  const int boxWidth = checkBoxWidth() + 2 * zDialogUnit(kMarginAcross, 0).width();
  collapsedWidth = collapsedGroupWidth(groups.metrics(), nameWidth, boxWidth);
  expandedWidth =
      expandedGroupWidth(collapsedWidth, maxButtonWidth, static_cast<int>(buttons.size()));
}

void ButtonPane::updateExtents() {
  maxButtonWidth = 0;
  for (const auto& button : buttons) {
    maxButtonWidth = std::max(maxButtonWidth, button->buttonWidth);
  }
  updateWidths();
  expandedHeight = expandedGroupHeight(groups.metrics(), static_cast<int>(buttons.size()));
}

void ButtonPane::settleChange() {
  updateExtents();
  setExpanded(1);
  groups.relayout();
  groups.setModified();
}

void ButtonPane::addButton(const RWCString& label, const RWCString& definition) {
  append(label, definition);
  settleChange();
}

void ButtonPane::changeCurrentButton(const RWCString& label, const RWCString& definition) {
  if (current >= buttons.size()) {
    return;
  }
  ziCommand& button = *buttons[current];
  button.label = label;
  button.definition = definition;
  button.buttonWidth = groups.buttonWidth(label);
  if (button.window != nullptr) {
    button.window->setText(withoutMnemonics(label.view()).c_str());
  }
  settleChange();
}

std::size_t ButtonPane::indexOf(const RWCString& label) const {
  const auto found = std::find_if(buttons.begin(), buttons.end(),
                                  [&](const auto& button) { return button->label == label; });
  return static_cast<std::size_t>(found - buttons.begin());
}

void ButtonPane::deleteButton(const RWCString& label) {
  const std::size_t index = indexOf(label);
  if (index < buttons.size()) {
    delete buttons[index]->window;
    buttons.erase(buttons.begin() + static_cast<std::ptrdiff_t>(index));
  }
}

void ButtonPane::rebuildAfterDelete() {
  settleChange();
}

void ButtonPane::rename(const RWCString& newName) {
  // Without the room that a new group's name gets: the check box becomes narrower by a rename to
  // the same name. Intended.
  nameWidth = groups.textExtent(newName).width;
  groupName = newName;
  checkBox->setText(withoutMnemonics(newName.view()).c_str());
  const zPoint pos = checkBox->sizer()->pos();
  checkBox->moveResize(pos.x, pos.y, checkBoxWidth(), headerHeight() - kCheckBoxInset);
  invalidate(nullptr, 1);
  updateWidths();
  groups.relayout();
  groups.setModified();
}

bool ButtonPane::setCurrentButton(std::size_t row, const RWCString& label) {
  if (row >= buttons.size() || buttons[row]->label != label) {
    row = indexOf(label);
  }
  if (row >= buttons.size()) {
    return false;
  }
  current = row;
  return true;
}

const ziCommand* ButtonPane::currentButton() const {
  return current < buttons.size() ? buttons[current].get() : nullptr;
}

void ButtonPane::place(int newWidth, int canvasTop) {
  const int wholeTop = yPosition - canvasTop;
  const int top = std::clamp(wholeTop, -kReach, kReach);
  const int bottom = std::clamp(wholeTop + height(), -kReach, kReach);
  const zRect rect(zPoint{kLeft, top}, zDimension{newWidth, std::max(bottom - top, 1)});
  if (rect != sizer()->rect()) {
    moveResize(rect.left, rect.top, rect.width(), rect.height());
    sizer()->update(nullptr);
  }
  cutOff = top - wholeTop;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    if (buttons[i]->window != nullptr) {
      placeButton(static_cast<int>(i));
    }
  }
}

void ButtonPane::placeGroupButton(int seenRight) {
  const int width = sizer()->size().width;
  const int margin = zDialogUnit(kMarginAcross, 0).width();
  const int room = std::max(width - 2 * margin - groups.metrics().groupButtonWidth, 0);
  const zDimension wanted = {margin + std::clamp(kLeft + width - seenRight, 0, room), 0};
  zGravSizer& right = *margins[kRightMargin];
  if (right.extent() != wanted) {
    right.setExtent(wanted);
    sizer()->update(nullptr);
  }
}

void ButtonPane::showButtons(const CanvasBand& band) {
  if (!isExpanded()) {
    return;
  }
  const ButtonSpan span =
      buttonsInBand(groups.metrics(), static_cast<int>(buttons.size()), yPosition, band);
  for (int i = span.first; i < span.last; ++i) {
    placeButton(i);
  }
}

void ButtonPane::placeButton(int index) {
  ziCommand& button = *buttons[static_cast<std::size_t>(index)];
  zRect rect = buttonPlace(groups.metrics(), maxButtonWidth, index);
  rect.moveBy(0, -cutOff);
  if (button.window == nullptr) {
    button.window =
        new DynButton(this, new zSizer(rect.pos(), rect.size()), button, groups.mainWindow());
    groups.takeInputOf(*button.window);
    button.window->show();
  } else if (rect != button.window->sizer()->rect()) {
    button.window->moveResize(rect.left, rect.top, rect.width(), rect.height());
  }
}

zPoint ButtonPane::menuPlace() const {
  return {groupButton->sizer()->pos().x + kMenuOffset.x, headerHeight() + kMenuOffset.y};
}

int ButtonPane::onFold(zEvent* /*event*/) {
  checkBox->storeData();
  groups.relayout();
  groups.mainWindow().focusCommandLine();
  return 1;
}

// Not at once: the menu's loop may delete this group, and the toolkit is not done with the button.
int ButtonPane::onGroup(zEvent* /*event*/) {
  menuTimer = std::make_unique<zTimer>(this, &ButtonPane::openMenu, 0, zTimer::kOnce);
  return 1;
}

int ButtonPane::openMenu(zEvH* self) {
  auto& group = *static_cast<ButtonPane*>(self);
  group.groups.openMenuOf(group);
  return 0;
}
