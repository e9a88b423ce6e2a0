// The status line: its fields, and the help of armed menu items.

#include "framework/visuals/status_line.h"

#include "framework/menus/menu.h"
#include "tests/ui/visuals/visuals_test.h"

#include <X11/keysym.h>

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

class StatusLine : public VisualsTest {
 protected:
  StatusLine() {
    auto ownedMenu = std::make_unique<zMenu>(&frame);
    menu = ownedMenu.get();
    frame.setMenu(std::move(ownedMenu));
    zStatusClock::setTimeSource([] { return now; });
    strip = new zGravSizer(kGravityBottom, 0, frame.sizer());
    line = new zStatusLine(&frame, strip, 0, -1, fixedFont());
    clock = new CountingClock(*line, new zGravSizer(kGravityRight, 0), 1);
    help = new zStatusItemText(*line, new zGravSizer(kGravityCentre, 0), kHelpItemId);
    line->setHelpTable(kHelpItemId, kHelp);
    line->show();
  }
  ~StatusLine() override { zStatusClock::setTimeSource(nullptr); }

  /// Letters of 6 by 13 pixels, the same on all servers.
  static zFontSpec fixedFont() {
    return zFontSpec::fromFullName(
        "-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-iso8859-1");
  }
  void showLine() {
    showFrame();
    ui::waitFor([&] { return clock->drawings > 0; }, "the first paint");
    ui::drain();
  }
  void arm(int id, int flags = 0) {
    zEvent event = zEvent::of(kMsgMenuSelect, id);
    event.extra = flags;
    EXPECT_EQ(menu->dispatch(&event), 0);
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
  std::string look(const zStatusItem& item) { return picture(*line, item.rect()); }
  /// Whether nothing is drawn inside the edge of an item.
  bool isBlank(const zStatusItem& item) { return look(item).find('#') == std::string::npos; }

  zMenu* menu;
  zGravSizer* strip;
  zStatusLine* line;
  CountingClock* clock;
  zStatusItemText* help;
};

TEST_F(StatusLine, DrawsItsEdgesAndCutsTextsAtTheirFields) {
  delete clock;
  delete help;
  auto* centred = new zStatusItemText(*line, new zGravSizer(kGravityLeft, 16), 2,
                                      kStatusSunken | kStatusCentred);
  auto* cut = new zStatusItemText(*line, new zGravSizer(kGravityLeft, 12), 3);
  auto* flat = new zStatusItemText(*line, new zGravSizer(kGravityLeft, 14), 4, 0);
  centred->setText("T");
  cut->setText("TT");
  flat->setText("T");
  showFrame();
  ui::waitFor([&] { return line->display()->isReady(); }, "the first paint");
  ui::drain();
  EXPECT_EQ(picture(*line, {0, 0, 46, line->neededHeight()}), R"(
##############################################
wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww
..............................................
.dddddddddddddw..dddddddddw...................
.d............w..d........w...................
.d............w..d........w...................
.d............w..d........w...................
.d............w..d........w...................
.d...#####....w..d....####w.......#####.......
.d.....#......w..d......#.w.........#.........
.d.....#......w..d......#.w.........#.........
.d.....#......w..d......#.w.........#.........
.d.....#......w..d......#.w.........#.........
.d.....#......w..d......#.w.........#.........
.d.....#......w..d......#.w.........#.........
.d.....#......w..d......#.w.........#.........
.d.....#......w..d......#.w.........#.........
.d............w..d........w...................
.d............w..d........w...................
.d............w..d........w...................
.d............w..d........w...................
.wwwwwwwwwwwwww..wwwwwwwwww...................
..............................................
)");
}

TEST_F(StatusLine, AsksForTheHeightOfItsFontAndSharesItsWidthAmongItsFields) {
  EXPECT_EQ(strip->extent(), (zDimension{0, 2 + 8 + 13}));
  EXPECT_TRUE(line->isOnFrame());
  showLine();
  const auto expectFields = [this] {
    const ui::ScreenArea area = ui::areaOf(line->widget());
    EXPECT_EQ(area.height, 23);
    EXPECT_EQ(help->rect(), zRect(0, 2, clock->rect().left, 23));
    EXPECT_EQ(clock->rect(), zRect(area.width - clock->rect().width(), 2, area.width, 23));
    EXPECT_TRUE(isBlank(*help));
    EXPECT_FALSE(isBlank(*clock));
  };
  expectFields();
  // Its fields move with the right edge and leave nothing behind.
  const int width = ui::areaOf(line->widget()).width;
  frame.moveResize(40, 40, 330, 220);
  ui::waitFor([&] { return ui::areaOf(line->widget()).width != width; }, "the new size");
  ui::drain();
  expectFields();
}

TEST_F(StatusLine, ThePreparedFormHasItsOwnItemsBesideTheTextSlots) {
  auto* ready = new zStatusLineEZ(
      &frame, new zGravSizer(kGravityBottom, 0, frame.sizer()),
      zStatusLineEZ::kClock | zStatusLineEZ::kNumLock | zStatusLineEZ::kCapsLock, -1, fixedFont());
  auto* field = new zStatusItemText(*ready, new zGravSizer(kGravityCentre, 0, ready->sizer()), 5);
  ready->show();
  showFrame();
  ready->setText(0, "text");
  ready->setText(1, "no such slot");
  EXPECT_EQ(field->text(), RWCString("text"));
  // From the right the clock and two words of three letters.
  constexpr int kClockWidth = 8 * 6 + 8;
  constexpr int kWordWidth = 3 * 6 + 8;
  EXPECT_EQ(field->rect().width(), ready->sizer()->size().width - kClockWidth - 2 * kWordWidth);
  std::vector<int> widths;
  const int y = 10;
  for (int x = field->rect().right; x < ready->sizer()->size().width;) {
    const ziVisual* item = ready->visuals().hitTest({x, y});
    ASSERT_NE(item, nullptr);
    widths.push_back(item->rect().width());
    x = item->rect().right;
  }
  EXPECT_EQ(widths, (std::vector<int>{kWordWidth, kWordWidth, kClockWidth}));
}

TEST_F(StatusLine, ExplainsArmedItemsAndThenShowsWhatItShowedBefore) {
  showLine();
  EXPECT_TRUE(isBlank(*help));
  line->setText(0, "before");
  EXPECT_FALSE(isBlank(*help)) << "it is drawn at once";
  const std::string before = look(*help);
  arm(kOpenId);
  EXPECT_EQ(help->text(), RWCString("Opens a system"));
  EXPECT_NE(look(*help), before);
  for (const int notExplained : {0x800, 0x2000, 0x10}) {
    arm(kUnknownId, notExplained);
    EXPECT_EQ(help->text(), RWCString("Opens a system"));
  }
  arm(kUnknownId);
  EXPECT_TRUE(isBlank(*help));
  closeMenu();
  EXPECT_EQ(look(*help), before);
  closeMenu();
  EXPECT_EQ(help->text(), RWCString("before"));
  arm(kOpenId);
  line->setText(0, "meanwhile");
  EXPECT_EQ(help->text(), RWCString("Opens a system"));
  closeMenu();
  EXPECT_EQ(help->text(), RWCString("meanwhile"));
  arm(kOpenId);
  line->setHelpTable(kHelpItemId, kHelp);
  EXPECT_EQ(help->text(), RWCString("meanwhile")) << "a new table ends the help";
  delete help;
  arm(kOpenId);
  line->setText(0, "nowhere");
  closeMenu();
  EXPECT_EQ(line->itemById(kHelpItemId), nullptr);
  EXPECT_EQ(line->itemById(1), clock);
}

TEST_F(StatusLine, WithoutAHelpItemTheHelpTakesTheWholeLine) {
  auto* whole =
      new zStatusLine(&frame, new zGravSizer(kGravityBottom, 0, frame.sizer()), 0, -1, fixedFont());
  auto* field = new zStatusItemText(*whole, new zGravSizer(kGravityLeft, 40), 1);
  whole->show();
  showLine();
  const zRect area{0, 0, 60, 23};
  const std::string plain = picture(*whole, area);
  arm(kOpenId);
  ui::drain();
  const std::string helped = picture(*whole, area);
  EXPECT_NE(helped, plain);
  EXPECT_EQ(helped.find('d'), std::string::npos) << "no field, and no such string resource";
  field->setText("later");
  ui::drain();
  EXPECT_EQ(picture(*whole, area), helped);
  closeMenu();
  ui::drain();
  EXPECT_NE(picture(*whole, area), plain) << "what changed meanwhile shows";
  EXPECT_EQ(field->text(), RWCString("later"));
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
  const std::string before = look(*clock);
  ++now;
  ui::waitFor([&] { return clock->drawings > 0; }, "the clock's own tick");
  EXPECT_EQ(clock->text(), RWCString("9:31 AM"));
  EXPECT_NE(look(*clock), before);
  arm(kOpenId);
  clock->drawings = 0;
  now += 60;
  clock->tick();
  EXPECT_EQ(clock->drawings, 0);
  closeMenu();
  ui::waitFor([&] { return clock->drawings > 0; }, "the clock to be drawn");
  EXPECT_EQ(clock->text(), RWCString("9:32 AM"));
}

TEST_F(StatusLine, AClockCountsTwelveOrTwentyFourHoursInItsWidestForm) {
  struct Row {
    int hour;
    bool use24Hours;
    bool colon;
    const char* separator;
    const char* text;
    int letters;  ///< that it has room for
  };
  for (const Row& row : {Row{0, false, true, ":", "12:05 AM", 8},
                         {12, false, true, ":", "12:05 PM", 8},
                         {11, false, true, ":", "11:05 AM", 8},
                         {23, false, true, ":", "11:05 PM", 8},
                         {9, false, false, ":", "9 05 AM", 8},
                         {0, true, true, " h ", "00 h 05", 7},
                         {15, true, false, ":", "15 05", 5}}) {
    now = at(row.hour, 5);
    clock->tick();
    clock->setUse24Hours(row.use24Hours);
    clock->setSeparator(row.separator);
    clock->setColonVisible(row.colon);
    EXPECT_EQ(clock->text(), RWCString(row.text));
    EXPECT_EQ(static_cast<zGravSizer*>(clock->sizer())->extent().width, row.letters * 6 + 8)
        << row.text;
  }
  // Two digits of an hour may be wider than one M.
  const zFontSpec wide("helvetica", {0, 14}, kFontNormal);
  auto* other =
      new zStatusLine(&frame, new zGravSizer(kGravityBottom, 0, frame.sizer()), 0, -1, wide);
  auto* sizer = new zGravSizer(kGravityRight, 0);
  new zStatusClock(*other, sizer, 1);
  EXPECT_GE(sizer->extent().width, zFont(wide).measure("12:58 PM", 8).width + 8);
}

TEST_F(StatusLine, AKeyItemShowsItsWordWhileTheKeyIsHeld) {
  auto* caps = new zStatusCapsLock(*line, new zGravSizer(kGravityRight, 0), 2);
  auto* num = new zStatusNumLock(*line, new zGravSizer(kGravityRight, 0), 3, "on", "none");
  EXPECT_EQ(caps->sizer()->query(kSizerGrav), caps->sizer());
  showLine();
  const auto words = [&] {
    ziStatusKeyItem::tick();
    return caps->text().str() + '|' + num->text().str();
  };
  EXPECT_EQ(words(), "|none");
  EXPECT_EQ(caps->rect().width(), 3 * 6 + 8);
  EXPECT_EQ(num->rect().width(), 4 * 6 + 8);
  holdKey(XK_Caps_Lock, true);
  ui::waitFor([&] { return caps->text() == RWCString("CAP"); }, "the look at the keyboard");
  EXPECT_EQ(words(), "CAP|none");
  EXPECT_FALSE(isBlank(*caps));
  holdKey(XK_Num_Lock, true);
  holdKey(XK_Caps_Lock, false);
  EXPECT_EQ(words(), "|on") << "the key counts, not the lock that it switched";
  holdKey(XK_Num_Lock, false);
  EXPECT_EQ(words(), "|none");
  for (const auto key : {XK_Caps_Lock, XK_Num_Lock}) {
    holdKey(key, true);
    holdKey(key, false);
  }
  delete caps;
  EXPECT_EQ(num->text(), RWCString("none"));
}

}  // namespace
