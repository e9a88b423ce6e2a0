// The canvas of the groups: construction, what follows the set, layout, scrolling. What asks the
// user is in group_pane_commands.cpp.
//
// The canvas is one window that is moved under a viewport. X's coordinates have 16 bits, and
// thousands of buttons are higher than that. So the canvas has a fixed height of a few viewports,
// and its upper edge need not show the top of all groups: when the viewport comes near one of its
// edges, the canvas is rebased, that is, all panels move by the same distance on it, and it moves
// back under them. Sets of common size are never rebased. Panels outside the canvas keep their
// windows, where nobody sees them.

#include "buttons/group_pane.h"

#include <algorithm>
#include <iterator>

#include "buttons/button_pane.h"
#include "framework/controls/control.h"
#include "framework/controls/scroll_bar.h"
#include "framework/core/show_together.h"
#include "framework/draw/measure.h"
#include "framework/menus/menu.h"
#include "resources/resource_ids.h"
#include "support/text.h"
#include "textarea/text_pane.h"

GroupPane* theGroupPane = nullptr;

namespace {

constexpr std::uint32_t kPaneStyle = kStyleChild | kStyleTabStop;
constexpr int kGroupFont = 12;
constexpr int kDefaultFont = 14;
constexpr zDimension kCanvasSize = {2000, 4000};
constexpr int kLargestExtent = 32767;
constexpr int kViewportsOnCanvas = 4;
constexpr int kFirstXOffset = 2;
constexpr int kFirstYOffset = 4;
constexpr int kOffsetOfAll = 2;  // where the canvas is when all of it is seen
constexpr int kGroupGap = 2;
constexpr int kRangeMargin = 2;
constexpr int kPushButtonShadows = 4;
constexpr int kPaneWidth = 160;  // dialog units, as kBorderWidth and kHeaderDepth
constexpr int kBorderWidth = 18;
constexpr int kHeaderDepth = 5;
constexpr int kFirstMenuPosition = 3;
constexpr int kFirstControlId = 6000;

int controlIdCounter = kFirstControlId;

zDimension extentIn(const zRCFont& font, const RWCString& text) {
  const std::string shown = expandTabs(text.view());
  return font.font()->measure(shown.data(), static_cast<int>(shown.size()));
}

}  // namespace

GroupPane::GroupPane(zWindow* parent, zSizer* sizer, zScrollBarCtrl& vertical,
                     zScrollBarCtrl& horizontal, ziButtonHost& mainWindow)
    : zPane(parent, sizer, kPaneStyle, nextControlId()),
      host(mainWindow),
      nextMenuPosition(kFirstMenuPosition),
      down{vertical, kFirstYOffset},
      across{horizontal, kFirstXOffset},
      canvasSize(kCanvasSize),
      labelFont(mainWindow.window().fontHandle()) {
  theGroupPane = this;
  takeBackgroundOf(*parent);
  setFont(zRCFont(kGroupFont), 0);
  if (labelFont.isEmpty()) {
    labelFont = zRCFont(kDefaultFont);
  }
  groupMetrics =
      GroupMetrics::from(textExtent("Group"), extentIn(labelFont, "Button").height,
                         zDialogUnit(0, kHeaderDepth).height(), zDialogUnit(kPaneWidth, 0).width(),
                         zDialogUnit(kBorderWidth, 0).width());
  across.visible = groupMetrics.minGroupWidth;
  menuIdCounter = kFirstMenuId;
  takeInputOf(*this);
  buildPopup();
  content.addObserver(*this);
  clearModified();
}

GroupPane::~GroupPane() {
  content.removeObserver(*this);
  while (!groupList.empty()) {
    deletePane(groupList.back()->group());
  }
  deleteAllMenus();
  theGroupPane = nullptr;
}

zDimension GroupPane::textExtent(const RWCString& shown) const {
  return extentIn(fontHandle(), shown);
}

int GroupPane::buttonWidth(const RWCString& label) const {
  // A label of a single letter needs more than its widened width.
  return std::max(widenedText(extentIn(labelFont, label).width),
                  textExtent(label).width + kPushButtonShadows);
}

int GroupPane::nextControlId() {
  return controlIdCounter++;
}

ButtonPane& GroupPane::appendPane(const ButtonGroup& group) {
  auto* sizer = new zSizer(1, 1, groupMetrics.minGroupWidth, groupMetrics.headerHeight);
  groupList.push_back(new ButtonPane(*this, sizer, group));
  return *groupList.back();
}

ButtonPane& GroupPane::paneOf(const ButtonGroup& group) {
  return **std::find_if(groupList.begin(), groupList.end(),
                        [&](const ButtonPane* pane) { return &pane->group() == &group; });
}

void GroupPane::deletePane(const ButtonGroup& group) {
  ButtonPane* pane = &paneOf(group);
  std::erase(groupList, pane);
  delete pane;
}

void GroupPane::appended() {
  const ziShowTogetherScope together;
  const auto forNew = [](const auto& all, std::size_t shown, const auto& show) {
    std::for_each(std::next(all.begin(), static_cast<std::ptrdiff_t>(shown)), all.end(), show);
  };
  forNew(content.set().groups, groupList.size(),
         [this](const ButtonGroup& group) { appendPane(group).addAllButtons(); });
  forNew(content.set().menus, menus.size(), [this](const ButtonMenu& menu) {
    menus.push_back(std::make_unique<DynMenu>(host.mainMenu(), menu, nextMenuPosition++));
  });
  scrollToTop();
  relayout();
  rebuildHelpTable();
}

void GroupPane::groupRenamed(const ButtonGroup& group) {
  paneOf(group).rename(group.name);
}

void GroupPane::groupFolded(const ButtonGroup& group) {
  paneOf(group).setExpanded(group.expanded ? 1 : 0);
}

void GroupPane::buttonAdded(const ButtonGroup& group) {
  paneOf(group).addButton();
}

void GroupPane::buttonChanged(const ButtonGroup& group, const Button& button) {
  paneOf(group).changeCurrentButton(button);
}

void GroupPane::buttonGoes(const ButtonGroup& group, const Button& button) {
  paneOf(group).deleteButton(button);
}

void GroupPane::buttonsGone(const ButtonGroup& group) {
  paneOf(group).rebuildAfterDelete();
}

void GroupPane::modifiedChanged() {
  host.mainMenu().enableItem(kCommandSaveButtons, content.isModified() ? 1 : 0);
}

void GroupPane::told(const std::string& line) {
  theTextPane->appendText((line + "\n").c_str());
}

void GroupPane::scrollToTop() {
  down.bar.scrollPos()->setPosition(0);
  down.offset = 0;
}

void GroupPane::collapseAll() {
  scrollToTop();
  content.setAllExpanded(false);
}

void GroupPane::relayout() {
  across.total = groupMetrics.minGroupWidth;
  down.total = 0;
  for (ButtonPane* group : groupList) {
    across.total = std::max(across.total, group->width());
    group->yPosition = down.total + 1;
    down.total += group->height() + kGroupGap;
  }
  // With nothing in them, the panes themselves would take the keyboard, and every key be lost
  // there.
  for (auto* pane = static_cast<zPane*>(this); pane != nullptr;
       pane = windowCast<zPane>(pane->parent())) {
    pane->setReachable(!groupList.empty());
  }
  updateBar(across);
  updateBar(down);
  rebase();
  placeGroups();
  placeCanvas();
}

void GroupPane::setViewport(const zDimension& paneSize, int visibleHeight) {
  down.paneExtent = paneSize.height;
  down.visible = visibleHeight;
  across.paneExtent = paneSize.width;
  down.bar.scrollPos()->setPage(visibleHeight);
  updateBar(down);
}

// A position that lies beyond the new end goes to the end, and the canvas with it.
void GroupPane::updateBar(Direction& direction) {
  zScrollPos& pos = *direction.bar.scrollPos();
  direction.largest = std::max(direction.total - direction.visible, 0);
  const int excess = direction.total - direction.paneExtent;
  const bool isNeeded = excess >= 1;
  const zScrollPos::Range range = {0, isNeeded ? excess + kRangeMargin : 0};
  const int before = pos.position();
  const int wanted = std::min({before, direction.largest, range.maximum});
  if (pos.range() != range) {
    pos.setRange(range.minimum, range.maximum);
  }
  if (pos.position() != wanted) {
    pos.setPosition(wanted);
  }
  if (isNeeded != direction.bar.isEnabled()) {
    isNeeded ? direction.bar.enable() : direction.bar.disable();
  }
  if (wanted != before) {
    direction.offset = -wanted;
  }
  if (direction.total <= direction.visible) {
    pos.setPosition(0);
    direction.offset = kOffsetOfAll;
  }
}

void GroupPane::scrolled(zScrollBarCtrl& bar) {
  Direction& direction = &bar == &down.bar ? down : across;
  zScrollPos& pos = *bar.scrollPos();
  if (pos.position() > direction.largest) {
    pos.setPosition(direction.largest);
  }
  direction.offset = -pos.position();
  if (rebase()) {
    placeGroups();
  } else if (&direction == &across) {
    placeGroupButtons();
  }
  placeCanvas();
}

// What is seen, and as much again above and below it, as far as there are groups.
CanvasBand GroupPane::neededBand() const {
  const int top = std::max(-down.offset, 0);
  const int reach = std::max(down.paneExtent, 1);
  return {std::max(top - reach, 0), std::max(std::min(top + 2 * reach, down.total), 0)};
}

bool GroupPane::rebase() {
  canvasSize = {std::clamp(across.total + kGroupGap, kCanvasSize.width, kLargestExtent),
                std::max(kCanvasSize.height, kViewportsOnCanvas * down.paneExtent)};
  if (CanvasBand{canvasTop, canvasTop + canvasSize.height}.contains(neededBand())) {
    return false;
  }
  const int above = (canvasSize.height - down.paneExtent) / 2;
  canvasTop = std::max(-down.offset - above, 0);
  return true;
}

void GroupPane::placeGroups() {
  for (ButtonPane* group : groupList) {
    group->place(across.total, canvasTop);
  }
  placeGroupButtons();
}

void GroupPane::placeGroupButtons() {
  for (ButtonPane* group : groupList) {
    group->placeGroupButton(across.paneExtent - across.offset);
  }
}

void GroupPane::placeCanvas() {
  const ziShowTogetherScope together;
  const CanvasBand band = neededBand();
  for (ButtonPane* group : groupList) {
    if (group->yPosition < band.bottom && group->yPosition + group->height() > band.top) {
      group->showButtons(band);
    }
  }
  const zRect place(zPoint{across.offset, down.offset + canvasTop}, canvasSize);
  if (place != sizer()->rect()) {
    moveResize(place.left, place.top, place.width(), place.height());
  }
  show();
}

void GroupPane::takeInputOf(zWindow& window) {
  down.bar.takeWheelOf(window);
  across.bar.takeWheelOf(window);
  window.addHandler(this, toHandler(&GroupPane::onKey), kMsgKeyDown);
  window.addHandler(this, toHandler(&GroupPane::onPress), kMsgButtonDown);
}

// The toolkit would begin to drag a label about.
int GroupPane::onPress(zEvent* event) {
  enum : unsigned { kMiddle = 2, kRight = 3 };
  const unsigned button = pointerOf(*event).button;
  return button == kMiddle || button == kRight ? 1 : 0;
}

// The focus stays: the next key is to scroll as well.
int GroupPane::onKey(zEvent* event) {
  const bool isUp = event->wparam == kKeyPageUp;
  if ((!isUp && event->wparam != kKeyPageDown) || !down.bar.isEnabled()) {
    return 0;
  }
  zScrollPos& pos = *down.bar.scrollPos();
  pos.setPosition(pos.position() + (isUp ? -pos.page() : pos.page()));
  scrolled(down.bar);
  return 1;
}

void GroupPane::deleteAllMenus() {
  for (const auto& menu : menus) {
    // All go from the front, so each is the first of them.
    menu->removeFromBar(kFirstMenuPosition);
  }
  menus.clear();
  nextMenuPosition = kFirstMenuPosition;
  menuIdCounter = kFirstMenuId;
  host.mainMenu().create();
}

void GroupPane::rebuildHelpTable() {
  std::vector<zHelpText> rows;
  for (const auto& menu : menus) {
    for (const auto& item : menu->items()) {
      rows.push_back({item->itemId(), item->helpText().c_str()});
    }
  }
  host.setMenuHelp(rows);
}
