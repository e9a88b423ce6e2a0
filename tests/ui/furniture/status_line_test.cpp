// The status line: its fields, and the help of armed menu items.

#include "framework/visuals/status_line.h"

#include "framework/menus/menu.h"
#include "framework/visuals/status_item.h"
#include "tests/ui/furniture/window_furniture.h"

namespace {

constexpr int kHelpItemId = 4711;
constexpr int kOpenId = 1001;
constexpr int kUnknownId = 1002;
constexpr zHelpText kHelp[] = {{kOpenId, "Opens a system"}, {kOpenId, "never"}, {0, nullptr}};

std::time_t now = 0;

/// A clock that counts its drawings.
class CountingClock : public zStatusClock {
 public:
  using zStatusClock::zStatusClock;
  void draw(zDisplay& display) override {
    ++drawings;
    zStatusClock::draw(display);
  }
  int drawings = 0;
};

class StatusLine : public FurnitureTest {
 protected:
  StatusLine() {
    auto ownedMenu = std::make_unique<zMenu>(&frame);
    menu = ownedMenu.get();
    frame.setMenu(std::move(ownedMenu));
    zStatusClock::setTimeSource([] { return now; });
    strip = new zGravSizer(kGravityBottom, 0, frame.sizer());
    line = new zStatusLine(&frame, strip, 0);
    clock = new CountingClock(*line, new zGravSizer(kGravityRight, 0), 1);
    help = new zStatusItemText(*line, new zGravSizer(kGravityCentre, 0), kHelpItemId);
    line->setHelpTable(kHelpItemId, kHelp);
    line->show();
  }
  ~StatusLine() override { zStatusClock::setTimeSource(nullptr); }

  void showLine() {
    showFrame();
    ui::waitFor([&] { return clock->drawings > 0; }, "the first paint");
    ui::drain();
  }
  void arm(int id, int flags = 0) {
    zEvent event = zEvent::of(kMsgMenuSelect, id);
    event.extra = flags;
    menu->dispatch(&event);
  }
  void closeMenu() {
    zEvent event = zEvent::of(kMsgMenuSelect);
    event.lparam = kMenuClosed;
    menu->dispatch(&event);
  }
  /// The time `hour`:`minute` of some day here.
  static std::time_t at(int hour, int minute) {
    std::tm local = {};
    local.tm_year = 120;
    local.tm_mday = 5;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_isdst = -1;
    return std::mktime(&local);
  }
  /// Whether anything is drawn in the inside of an item.
  bool isBlank(const zStatusItem& item) {
    const zRect place = item.rect();
    const int y = (place.top + place.bottom) / 2;
    for (int x = place.left + 3; x < place.right - 3; ++x) {
      if (pixel(line->display(), x, y) != kColorLightGrey.rgb()) {
        return false;
      }
    }
    return true;
  }

  zMenu* menu;
  zGravSizer* strip;
  zStatusLine* line;
  CountingClock* clock;
  zStatusItemText* help;
};

TEST_F(StatusLine, AsksForTheHeightOfItsFontAndSharesItsWidthAmongItsFields) {
  EXPECT_EQ(strip->extent(), (zDimension{0, line->neededHeight()}));
  showLine();
  const ui::ScreenArea area = ui::areaOf(line->widget());
  EXPECT_EQ(area.height, line->neededHeight());
  EXPECT_EQ(clock->rect().right, area.width);
  EXPECT_EQ(help->rect().right, clock->rect().left);
  EXPECT_EQ(help->rect().left, 0);
  EXPECT_TRUE(line->isOnFrame());
  // Its fields move with the right edge and leave nothing behind.
  frame.moveResize(40, 40, 330, 220);
  ui::waitFor([&] { return ui::areaOf(line->widget()).width != area.width; }, "the new size");
  ui::drain();
  EXPECT_EQ(clock->rect().right, ui::areaOf(line->widget()).width);
  EXPECT_TRUE(isBlank(*help));
  EXPECT_FALSE(isBlank(*clock));
}

TEST_F(StatusLine, ShowsTextsInItsTextSlots) {
  showLine();
  EXPECT_TRUE(isBlank(*help));
  line->setText(0, "Execute Command: go");
  EXPECT_EQ(help->text(), RWCString("Execute Command: go"));
  EXPECT_FALSE(isBlank(*help)) << "it is drawn at once";
  line->setText(0, "");
  EXPECT_TRUE(isBlank(*help));
  line->setText(1, "no such slot");
}

TEST_F(StatusLine, ThePreparedFormHasItsOwnItemsBesideTheTextSlots) {
  auto* ready = new zStatusLineEZ(&frame, new zGravSizer(kGravityBottom, 0, frame.sizer()), 0x9100);
  auto* field = new zStatusItemText(*ready, new zGravSizer(kGravityCentre, 0, ready->sizer()), 5);
  ready->show();
  showLine();
  ready->setText(0, "text");
  EXPECT_EQ(field->text(), RWCString("text"));
  const ziVisual* last = ready->visuals().hitTest({ready->sizer()->size().width - 2, 10});
  EXPECT_NE(last, nullptr) << "the clock, at the right edge";
  EXPECT_NE(last, field);
  EXPECT_GT(field->rect().width(), 0);
  EXPECT_LT(field->rect().right, ready->sizer()->size().width - last->rect().width());
}

TEST_F(StatusLine, ExplainsArmedItemsAndThenShowsWhatItShowedBefore) {
  showLine();
  line->setText(0, "before");
  arm(kOpenId);
  EXPECT_EQ(help->text(), RWCString("Opens a system"));
  EXPECT_FALSE(isBlank(*help));
  for (const int notExplained : {0x800, 0x2000, 0x10}) {
    arm(kUnknownId, notExplained);
    EXPECT_EQ(help->text(), RWCString("Opens a system"));
  }
  arm(kUnknownId);
  EXPECT_EQ(help->text(), RWCString(""));
  EXPECT_TRUE(isBlank(*help));
  closeMenu();
  EXPECT_EQ(help->text(), RWCString("before"));
  arm(kOpenId);
  line->setText(0, "meanwhile");
  EXPECT_EQ(help->text(), RWCString("Opens a system"));
  closeMenu();
  EXPECT_EQ(help->text(), RWCString("meanwhile"));
  delete help;
  arm(kOpenId);
  line->setText(0, "nowhere");
  closeMenu();
  EXPECT_EQ(line->itemById(kHelpItemId), nullptr);
}

TEST_F(StatusLine, LetsGoOfItsMenuWhicheverOfTheTwoDiesFirst) {
  delete line;
  arm(kOpenId);
  auto* second = new zStatusLine(&frame, new zGravSizer(kGravityBottom, 0, frame.sizer()), 0);
  {
    zMenu gone;
    second->setHelpMenu(&gone);
  }
  delete second;
}

TEST_F(StatusLine, AClockIsDrawnOnceAMinuteAndNotOverAHelpText) {
  now = at(9, 30);
  clock->tick();
  showLine();
  clock->drawings = 0;
  for (int seconds = 1; seconds < 60; ++seconds) {
    ++now;
    clock->tick();
  }
  EXPECT_EQ(clock->drawings, 0);
  ++now;
  clock->tick();
  EXPECT_EQ(clock->drawings, 1);
  EXPECT_EQ(clock->text(), RWCString("9:31 AM"));
  arm(kOpenId);
  now += 60;
  clock->tick();
  EXPECT_EQ(clock->drawings, 1);
  closeMenu();
  ui::waitFor([&] { return clock->drawings > 1; }, "the clock to be drawn");
  EXPECT_EQ(clock->text(), RWCString("9:32 AM"));
}

TEST_F(StatusLine, AClockHasRoomForItsWidestTimeInAnyFont) {
  constexpr int kAroundText = 8;
  now = at(12, 58);
  for (const zFontPitch pitch : {kPitchFixed, kPitchVariable}) {
    const zFontSpec spec(pitch == kPitchFixed ? "courier" : "helvetica", {0, 14}, kFontNormal,
                         pitch);
    auto* other =
        new zStatusLine(&frame, new zGravSizer(kGravityBottom, 0, frame.sizer()), 0, -1, spec);
    auto* sizer = new zGravSizer(kGravityRight, 0);
    const auto* wide = new zStatusClock(*other, sizer, 1);
    const int needed = zFont(spec).measure("12:58 PM", 8).width;
    EXPECT_EQ(wide->text(), RWCString("12:58 PM"));
    EXPECT_GE(sizer->extent().width, needed + kAroundText) << pitch;
  }
}

TEST_F(StatusLine, AClockCountsTwelveOrTwentyFourHours) {
  struct Row {
    int hour;
    bool use24Hours;
    bool colon;
    const char* text;
  };
  constexpr Row kRows[] = {
      {0, false, true, "12:05 AM"}, {12, false, true, "12:05 PM"}, {23, false, true, "11:05 PM"},
      {9, false, false, "9 05 AM"}, {0, true, true, "00:05"},      {15, true, false, "15 05"},
  };
  for (const Row& row : kRows) {
    now = at(row.hour, 5);
    clock->tick();
    clock->setUse24Hours(row.use24Hours);
    clock->setColonVisible(row.colon);
    EXPECT_EQ(clock->text(), RWCString(row.text));
  }
}

TEST_F(StatusLine, AKeyItemShowsItsWordWhileTheKeyIsHeld) {
  auto* caps = new zStatusCapsLock(*line, new zGravSizer(kGravityRight, 0), 2);
  auto* num = new zStatusNumLock(*line, new zGravSizer(kGravityRight, 0), 3, "on", "off");
  showLine();
  ziStatusKeyItem::tick();
  EXPECT_EQ(caps->text(), RWCString(""));
  EXPECT_EQ(num->text(), RWCString("off"));
  caps->setOn(true);
  num->setOn(true);
  EXPECT_EQ(caps->text(), RWCString("CAP"));
  EXPECT_EQ(num->text(), RWCString("on"));
  EXPECT_FALSE(isBlank(*caps));
}

}  // namespace
