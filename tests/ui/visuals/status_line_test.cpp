// The status line: its fields, and the help of armed menu items.

#include "framework/visuals/status_line.h"

#include "framework/menus/menu.h"
#include "tests/ui/draw/picture.h"
#include "tests/ui/visuals/visuals_test.h"

#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

constexpr int kHelpItemId = 4711;
constexpr int kOpenId = 1001;
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
    setenv("TZ", "XXX-3", 1);
    tzset();
    auto ownedMenu = std::make_unique<zMenu>(&frame);
    menu = ownedMenu.get();
    frame.setMenu(std::move(ownedMenu));
    zStatusClock::setTimeSource([] { return now; });
    line = makeLine<zStatusLine>();
    clock = new CountingClock(*line, new zGravSizer(kGravityRight, 0), 1);
    help = new zStatusItemText(*line, new zGravSizer(kGravityCentre, 0), kHelpItemId);
    line->setHelpTable(kHelpItemId, kHelp);
  }
  ~StatusLine() override { zStatusClock::setTimeSource(nullptr); }

  /// A line at the bottom, with letters of 6 by 13 pixels, the same on all servers.
  template <class Line>
  Line* makeLine(std::uint32_t style = 0) {
    auto* made = new Line(
        &frame, new zGravSizer(kGravityBottom, 0, frame.sizer()), style, -1,
        zFontSpec::fromFullName("-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-iso8859-1"));
    made->show();
    return made;
  }
  void showLine() {
    showFrame();
    ui::waitFor([&] { return line->display()->isReady(); }, "the first paint");
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
  /// The time of some day here, three hours east.
  static std::time_t at(int hour, int minute) { return (21 + hour) * 3600 + minute * 60; }
  /// The text of the help field, and whether that or nothing is on the screen.
  std::string helpShown() {
    const bool isBlank = picture(*line, help->rect()).find('#') == std::string::npos;
    return help->text().str() + (isBlank == help->text().isEmpty() ? "" : ", not drawn");
  }

  zMenu* menu;
  zStatusLine* line;
  CountingClock* clock;
  zStatusItemText* help;
};

TEST_F(StatusLine, DrawsItsEdgesAndCutsTextsAtTheirFields) {
  delete clock;
  delete help;
  const auto add = [&](int width, std::uint32_t style, const char* text) {
    (new zStatusItemText(*line, new zGravSizer(kGravityLeft, width), 2, style))->setText(text);
  };
  add(16, kStatusSunken | kStatusCentred, "T");
  add(12, kStatusSunken, "TT");
  add(14, 0, "T");
  showLine();
  EXPECT_EQ(packed(picture(*line, {0, 0, 46, line->neededHeight()})), R"(
##############################################
wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww
..............................................
.dddddddddddddw..dddddddddw...................
.d............w..d........w................... *4
.d...#####....w..d....####w.......#####.......
.d.....#......w..d......#.w.........#......... *8
.d............w..d........w................... *4
.wwwwwwwwwwwwww..wwwwwwwwww...................
..............................................
)");
}

TEST_F(StatusLine, SharesItsWidthAmongItsFieldsAlsoWhenItChanges) {
  EXPECT_TRUE(line->isOnFrame());
  auto* ready = makeLine<zStatusLineEZ>(zStatusLineEZ::kClock | zStatusLineEZ::kNumLock |
                                        zStatusLineEZ::kCapsLock);
  auto* field = new zStatusItemText(*ready, new zGravSizer(kGravityCentre, 0, ready->sizer()), 5);
  showLine();
  const int widthBefore = ui::areaOf(line->widget()).width;
  for (const bool isNew : {false, true}) {
    if (isNew) {
      frame.moveResize(40, 40, 330, 220);
      const auto isThere = [&] { return ui::areaOf(line->widget()).width != widthBefore; };
      ui::waitFor(isThere, "the new size");
    }
    ui::drain();
    const int width = ui::areaOf(line->widget()).width;
    EXPECT_EQ(ui::areaOf(line->widget()).height, 2 + 8 + 13);
    EXPECT_EQ(help->rect(), zRect(0, 2, width - 56, 23));
    EXPECT_EQ(clock->rect(), zRect(width - 56, 2, width, 23));
    EXPECT_EQ(helpShown(), "") << "nothing is left behind";
    EXPECT_NE(picture(*line, clock->rect()).find('#'), std::string::npos);
    // From the right the clock and two words of three letters, the rest is the text slot's.
    std::string widths;
    for (int x = 0; x < width;) {
      const ziVisual* item = ready->visuals().hitTest({x, 10});
      ASSERT_NE(item, nullptr);
      widths += std::to_string(item->rect().width() + (item == field ? 108 - width : 0)) + ' ';
      x = item->rect().right;
    }
    EXPECT_EQ(widths, "0 26 26 56 ");
  }
  ready->setText(0, "text");
  ready->setText(1, "no such slot");
  EXPECT_EQ(field->text(), RWCString("text"));
}

TEST_F(StatusLine, ExplainsArmedItemsAndThenShowsWhatItShowedBefore) {
  showLine();
  line->setText(0, "before");
  EXPECT_EQ(helpShown(), "before") << "drawn at once";
  const std::string before = picture(*line, help->rect());
  arm(kOpenId);
  EXPECT_EQ(helpShown(), "Opens a system");
  EXPECT_NE(picture(*line, help->rect()), before);
  for (const int notExplained : {0x800, 0x2000, 0x10}) {
    arm(kOpenId + 1, notExplained);
    EXPECT_EQ(helpShown(), "Opens a system");
  }
  arm(kOpenId + 1);
  EXPECT_EQ(helpShown(), "");
  for (int i = 0; i < 2; ++i) {
    closeMenu();
    EXPECT_EQ(picture(*line, help->rect()), before);
  }
  arm(kOpenId);
  line->setText(0, "meanwhile");
  EXPECT_EQ(helpShown(), "Opens a system");
  closeMenu();
  EXPECT_EQ(helpShown(), "meanwhile");
  arm(kOpenId);
  line->setHelpTable(kHelpItemId, kHelp);
  EXPECT_EQ(helpShown(), "meanwhile") << "a new table ends the help";
  delete help;
  arm(kOpenId);
  line->setText(0, "nowhere");
  closeMenu();
  EXPECT_EQ(line->itemById(kHelpItemId), nullptr);
  EXPECT_EQ(line->itemById(1), clock);
  // It lets go of its menu, whichever of the two dies first.
  delete line;
  arm(kOpenId);
  line = makeLine<zStatusLine>();
  {
    zMenu gone;
    line->setHelpMenu(&gone);
  }
  delete line;
}

TEST_F(StatusLine, WithoutAHelpItemTheHelpTakesTheWholeLine) {
  auto* whole = makeLine<zStatusLine>();
  auto* field = new zStatusItemText(*whole, new zGravSizer(kGravityLeft, 40), 1);
  showLine();
  const auto look = [&] {
    ui::drain();
    return packed(picture(*whole, {0, 2, 60, 23}));
  };
  const std::string plain = look();
  arm(kOpenId);
  EXPECT_EQ(look(), "\n" + std::string(60, '.') + " *21\n") << "no such string resource";
  field->setText("later");
  EXPECT_EQ(look(), "\n" + std::string(60, '.') + " *21\n");
  closeMenu();
  EXPECT_NE(look(), plain) << "what changed meanwhile shows";
  EXPECT_EQ(field->text(), RWCString("later"));
}

TEST_F(StatusLine, AClockIsDrawnOnceAMinuteAndNotOverAHelpText) {
  now = at(9, 30);
  clock->tick();
  showLine();
  clock->drawings = 0;
  now += 59;
  clock->tick();
  EXPECT_EQ(clock->drawings, 0);
  const std::string before = picture(*line, clock->rect());
  ++now;
  ui::waitFor([&] { return clock->drawings > 0; }, "the clock's own tick");
  EXPECT_EQ(clock->text(), RWCString("9:31 AM"));
  EXPECT_NE(picture(*line, clock->rect()), before);
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
    bool use24Hours, colon;
    const char* separator;
    const char* textAndWidth;
  };
  for (const Row& row : {Row{0, false, true, ":", "12:05 AM 56"},
                         {12, false, true, ":", "12:05 PM 56"},
                         {11, false, true, ":", "11:05 AM 56"},
                         {23, false, false, ":", "11 05 PM 56"},
                         {0, true, true, " h ", "00 h 05 50"},
                         {15, true, false, ":", "15 05 38"}}) {
    now = at(row.hour, 5);
    clock->tick();
    clock->setUse24Hours(row.use24Hours);
    clock->setSeparator(row.separator);
    clock->setColonVisible(row.colon);
    const int width = static_cast<zGravSizer*>(clock->sizer())->extent().width;
    EXPECT_EQ(clock->text().str() + ' ' + std::to_string(width), row.textAndWidth);
  }
  // Two digits of an hour may be wider than one M.
  const zFontSpec wide("helvetica", {0, 14}, kFontNormal);
  zStatusLine other(&frame, new zGravSizer(kGravityBottom, 0, frame.sizer()), 0, -1, wide);
  auto* sizer = new zGravSizer(kGravityRight, 0);
  new zStatusClock(other, sizer, 1);
  EXPECT_GE(sizer->extent().width, zFont(wide).measure("12:58 PM", 8).width + 8);
}

TEST_F(StatusLine, AKeyItemShowsItsWordWhileTheKeyIsHeld) {
  auto* caps = new zStatusCapsLock(*line, new zGravSizer(kGravityRight, 0), 2);
  auto* num = new zStatusNumLock(*line, new zGravSizer(kGravityRight, 0), 3, "on", "none");
  showLine();
  EXPECT_EQ(caps->rect().width(), 3 * 6 + 8);
  EXPECT_EQ(num->rect().width(), 4 * 6 + 8);
  const auto hold = [&](ui::KeySymbol key, bool isDown) {
    XTestFakeKeyEvent(ui::display(), XKeysymToKeycode(ui::display(), key), isDown ? True : False,
                      0);
    ui::drain();
    ziStatusKeyItem::tick();
    return caps->text().str() + '|' + num->text().str();
  };
  EXPECT_EQ(hold(XK_Caps_Lock, true), "CAP|none");
  EXPECT_EQ(hold(XK_Num_Lock, true), "CAP|on");
  EXPECT_EQ(hold(XK_Caps_Lock, false), "|on") << "the key counts, not the lock that it switched";
  EXPECT_EQ(hold(XK_Num_Lock, false), "|none");
  EXPECT_EQ(hold(XK_Num_Lock, true), "|on");
  XTestFakeKeyEvent(ui::display(), XKeysymToKeycode(ui::display(), XK_Num_Lock), False, 0);
  ui::waitFor([&] { return num->text() == RWCString("none"); }, "the look at the keyboard");
  hold(XK_Caps_Lock, true);
  hold(XK_Caps_Lock, false);
  delete caps;
  ziStatusKeyItem::tick();
}

}  // namespace
