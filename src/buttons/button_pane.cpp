// A group's panel. All buttons of a group count for its extents, but only those get windows that
// were near the visible part at some time: thousands of windows would take seconds to make.
//
// Windows cannot have more than 32767 rows of pixels, while a group may. So the window of a panel
// is cut where it reaches far beyond the canvas, and the buttons move up by what is cut off at the
// top. Nobody sees the cut edges, nor the header that stays at the upper one.

#include "buttons/button_pane.h"

#include <algorithm>

#include "buttons/group_pane.h"
#include "framework/draw/measure.h"
#include "framework/layout/sizers.h"
#include "support/text.h"
#include "textarea/my_pane.h"

namespace {

constexpr std::uint32_t kPanelStyle = 16393;
constexpr std::uint32_t kCheckBoxStyle = kStyleControlStop | kButtonAutoCheck;
constexpr std::uint32_t kGroupButtonStyle = kStyleControlStop;
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

ButtonPane::ButtonPane(GroupPane& canvas, zSizer* sizer, const ButtonGroup& shown)
    : zPanel3d(&canvas, sizer, kPanelStyle, "", canvas.nextControlId()),
      groups(canvas),
      model(shown),
      nameWidth(widenedText(canvas.textExtent(shown.name).width)),
      expandedHeight(canvas.metrics().headerHeight) {
  takeBackgroundOf(canvas);
  createHeader();
  updateWidths();
  setExpanded(model.expanded ? 1 : 0);
  show();
}

ButtonPane::~ButtonPane() {
  // They refer to this pane as their parent until they are gone.
  for (const ziCommand& button : buttons) {
    delete button.window;
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
  checkBox = new zCheckBox(this, boxSizer, kCheckBoxStyle, withoutMnemonics(model.name).c_str(),
                           groups.nextControlId());
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
  const zDimension shown = groups.textExtent(model.name);
  return std::max(nameWidth + kCheckMark, shown.width + shown.height + kCheckMargins);
}

void ButtonPane::setExpanded(int newValue) {
  checkBox->check(newValue != 0);
}

void ButtonPane::append(const Button& shown) {
  buttons.push_back({&shown, groups.nextControlId(), groups.buttonWidth(shown.label)});
}

void ButtonPane::updateWidths() {
  const int boxWidth = checkBoxWidth() + 2 * zDialogUnit(kMarginAcross, 0).width();
  collapsedWidth = collapsedGroupWidth(groups.metrics(), nameWidth, boxWidth);
  expandedWidth =
      expandedGroupWidth(collapsedWidth, maxButtonWidth, static_cast<int>(buttons.size()));
}

void ButtonPane::updateExtents() {
  maxButtonWidth = 0;
  for (const ziCommand& button : buttons) {
    maxButtonWidth = std::max(maxButtonWidth, button.buttonWidth);
  }
  updateWidths();
  expandedHeight = expandedGroupHeight(groups.metrics(), static_cast<int>(buttons.size()));
}

void ButtonPane::addAllButtons() {
  for (const Button& shown : model.buttons) {
    append(shown);
  }
  updateExtents();
}

void ButtonPane::addButton() {
  append(model.buttons.back());
  updateExtents();
}

ziCommand& ButtonPane::commandOf(const Button& shown) {
  return *std::find_if(buttons.begin(), buttons.end(),
                       [&](const ziCommand& button) { return button.shown == &shown; });
}

void ButtonPane::changeCurrentButton(const Button& changed) {
  ziCommand& button = commandOf(changed);
  button.buttonWidth = groups.buttonWidth(changed.label);
  if (button.window != nullptr) {
    button.window->setText(withoutMnemonics(changed.label).c_str());
  }
  updateExtents();
}

void ButtonPane::deleteButton(const Button& going) {
  ziCommand& button = commandOf(going);
  delete button.window;
  buttons.erase(buttons.begin() + (&button - buttons.data()));
}

void ButtonPane::rename(const RWCString& newName) {
  // Without the room that a new group's name gets: the check box becomes narrower by a rename to
  // the same name. Intended.
  nameWidth = groups.textExtent(newName).width;
  checkBox->setText(withoutMnemonics(newName.view()).c_str());
  const zPoint pos = checkBox->sizer()->pos();
  checkBox->moveResize(pos.x, pos.y, checkBoxWidth(), headerHeight() - kCheckBoxInset);
  invalidate(nullptr, 1);
  updateWidths();
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
    if (buttons[i].window != nullptr) {
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
  if (!model.expanded) {
    return;
  }
  const ButtonSpan span =
      buttonsInBand(groups.metrics(), static_cast<int>(buttons.size()), yPosition, band);
  for (int i = span.first; i < span.last; ++i) {
    placeButton(i);
  }
}

void ButtonPane::placeButton(int index) {
  ziCommand& button = buttons[static_cast<std::size_t>(index)];
  zRect rect = buttonPlace(groups.metrics(), maxButtonWidth, index);
  rect.moveBy(0, -cutOff);
  if (button.window == nullptr) {
    button.window = new DynButton(this, new zSizer(rect.pos(), rect.size()), button.id,
                                  *button.shown, groups.document(), groups.mainWindow());
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
  groups.document().setExpanded(model, checkBox->checked());
  theCommandLine->startFocusTimer();
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
