#include "buttons/control_pane.h"

#include <algorithm>

#include "buttons/group_pane.h"
#include "framework/controls/scroll_bar.h"
#include "framework/draw/measure.h"
#include "framework/layout/sizers.h"
#include "textarea/my_pane.h"

namespace {

// The tab stop lets the keyboard reach the buttons.
constexpr std::uint32_t kControlPaneStyle = kStyleChild | kStyleTabStop;
constexpr std::uint32_t kSunkenStyle = 9;
constexpr std::uint32_t kVerticalStyle = kStyleControl | kScrollBarVertical;
constexpr int kControlPaneId = 5999;
constexpr int kLineStep = 10;
constexpr zDimension kStartCanvas = {2000, 4000};
// Dialog units.
constexpr int kBottomStripHeight = 8;
constexpr int kRightStripWidth = 16;
constexpr int kVerticalBarWidth = 8;
constexpr int kHorizontalBarWidth = 160 - 16;
constexpr int kHorizontalPage = 142;
// Pixels.
constexpr int kPageFrame = 6;
constexpr int kMarginWidth = 2;

void prepare(zScrollBarCtrl& bar, zScrollerBase& scroller) {
  bar.setScroller(&scroller);
  bar.scrollPos()->setLine(kLineStep);
  bar.scrollPos()->setPosition(0);
  bar.scrollPos()->setRange(0, 0);
}

int follow(zWindow* bar) {
  if (theGroupPane != nullptr) {
    theGroupPane->scrolled(*windowCast<zScrollBarCtrl>(bar));
    theCommandLine->startFocusTimer();
  }
  return 1;
}

}  // namespace

Control3dPanel::Control3dPanel(zWindow* parent, zSizer* sizer)
    : zPanel3d(parent, sizer, kSunkenStyle, "", -1) {
  takeBackgroundOf(*parent);
  setRelief(Relief::sunken);
}

MainPane::MainPane(zWindow* parent, zSizer* sizer, zScrollBarCtrl& vertical,
                   zScrollBarCtrl& horizontal, ziButtonHost& host)
    : zPane(parent, sizer, kControlPaneStyle, -1) {
  takeBackgroundOf(*parent);
  groups = new GroupPane(this, new zSizer(0, 0, kStartCanvas.width, kStartCanvas.height), vertical,
                         horizontal, host);
  groups->takeInputOf(*this);
}

VertControlScroller::VertControlScroller(zScrollBarCtrl& bar) {
  prepare(bar, *this);
}

int VertControlScroller::vertThumbPosition(zEvent* /*event*/) {
  return follow(owner());
}

HorzControlScroller::HorzControlScroller(zScrollBarCtrl& bar) {
  prepare(bar, *this);
}

int HorzControlScroller::horzThumbPosition(zEvent* /*event*/) {
  return follow(owner());
}

ControlPane::ControlPane(zWindow* parent, zSizer* sizer, ziButtonHost& host)
    : zPane(parent, sizer, kControlPaneStyle, kControlPaneId) {
  takeBackgroundOf(*parent);
  createBars();
  mainPane = new MainPane(this, new zSizer(0, 0, 1, 1), *vertical, *horizontal, host);
  panel = new Control3dPanel(this, new zGravSizer(kGravityCentre, 0, this->sizer()));
  mainPane->show();
  panel->show();
}

void ControlPane::createBars() {
  const auto across = [](int units) { return zDialogUnit(units, 0).width(); };
  bottomStrip = std::make_unique<zGravSizer>(kGravityBottom,
                                             zDialogUnit(0, kBottomStripHeight).height(), sizer());
  rightStrip = std::make_unique<zGravSizer>(kGravityRight, across(kRightStripWidth), sizer());
  vertical = new zScrollBarCtrl(
      this, new zGravSizer(kGravityLeft, across(kVerticalBarWidth), rightStrip.get()),
      kVerticalStyle);
  horizontal = new zScrollBarCtrl(
      this, new zGravSizer(kGravityLeft, across(kHorizontalBarWidth), bottomStrip.get()), 0);
  vertScroller = std::make_unique<VertControlScroller>(*vertical);
  horzScroller = std::make_unique<HorzControlScroller>(*horizontal);
  horizontal->scrollPos()->setPage(across(kHorizontalPage) - kPageFrame);
  for (zScrollBarCtrl* bar : {vertical, horizontal}) {
    bar->show();
    bar->disable();
  }
}

// The groups first: they use the bars.
ControlPane::~ControlPane() {
  delete mainPane;
  vertical->setScroller(nullptr);
  horizontal->setScroller(nullptr);
}

int ControlPane::size(zEvent* event) {
  const int result = zPane::size(event);
  placeGroups();
  return result;
}

void ControlPane::placeGroups() {
  const zDimension frame = panel->sizer()->size();
  const zPoint corner = panel->sizer()->pos();
  const zDimension inside = {std::max(frame.width - 2 * kMarginWidth, 1),
                             std::max(frame.height - 2 * kMarginWidth, 1)};
  mainPane->moveResize(corner.x + kMarginWidth, corner.y + kMarginWidth, inside.width,
                       inside.height);
  GroupPane& groups = mainPane->groupPane();
  groups.setViewport(inside, std::max(frame.height - kPageFrame, 1));
  groups.relayout();
}
