// The status line as the main window has it: its fields, and the help of armed menu items.

#include "framework/visuals/status_line.h"

#include "framework/menus/menu.h"
#include "tests/ui/visuals/visuals_test.h"

#include <X11/extensions/XTest.h>

namespace {

constexpr int kHelpItemId = 4711;
constexpr int kOpenId = 1001;
constexpr zHelpText kHelp[] = {{kOpenId, "Opens a system"}, {kOpenId, "never"}, {0, nullptr}};

std::time_t now = 0;

// Midnight of some day in the tests' zone, three hours east.
constexpr std::time_t kMidnight = 21 * 3600;

class StatusLine : public VisualsTest {
 protected:
  // From the right a clock and two key items, the rest is the help item's. Its letters have 6 by 13
  // pixels on all servers.
  StatusLine() {
    setenv("TZ", "XXX-3", 1);
    tzset();
    zStatusClock::setTimeSource([] { return now; });
    auto ownedMenu = std::make_unique<zMenu>(&frame);
    menu = ownedMenu.get();
    frame.setMenu(std::move(ownedMenu));
    line = new zStatusLineEZ(
        &frame, new zGravSizer(kGravityBottom, 0, frame.sizer()),
        zStatusLineEZ::kClock | zStatusLineEZ::kNumLock | zStatusLineEZ::kCapsLock, -1,
        zFontSpec::fromFullName("-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-iso8859-1"));
    help = new zStatusItemText(*line, new zGravSizer(kGravityCentre, 0), kHelpItemId);
    line->setHelpTable(kHelpItemId, kHelp);
    line->show();
    showFrame();
  }

  void arm(int id, int flags = 0, int lparam = 0) {
    zEvent event = zEvent::of(kMsgMenuSelect, id);
    event.extra = flags;
    event.lparam = lparam;
    menu->dispatch(&event);
  }
  void closeMenu() { arm(0, 0, kMenuClosed); }
  /// The item that is so far from the right edge.
  zStatusItemText* itemAt(int fromRight) {
    const int x = ui::areaOf(line->widget()).width - fromRight;
    return static_cast<zStatusItemText*>(line->visuals().hitTest({x, 10}));
  }
  static void holdKey(ui::KeySymbol key, std::initializer_list<Bool> downAndUp) {
    for (const Bool isDown : downAndUp) {
      XTestFakeKeyEvent(ui::display(), XKeysymToKeycode(ui::display(), key), isDown, 0);
      ui::drain();
    }
  }
  /// The text of the help field, and whether that or nothing is on the screen.
  std::string helpShown() {
    const bool isBlank = picture(*line, help->rect()).find('#') == std::string::npos;
    return help->text().str() + (isBlank == help->text().isEmpty() ? "" : ", not drawn");
  }

  zMenu* menu;
  zStatusLineEZ* line;
  zStatusItemText* help;
};

TEST_F(StatusLine, SharesItsWidthAmongItsFieldsWhichCutTheirTextsAlsoWhenItChanges) {
  line->setText(0, RWCString(std::string(100, 'T')));
  holdKey(XK_Caps_Lock, {True});
  ziStatusKeyItem::tick();
  for (int width = 0; const int frameWidth : {400, 340}) {
    frame.moveResize(40, 40, frameWidth, 220);
    ui::waitFor([&] { return ui::areaOf(line->widget()).width != width; }, "the new size");
    ui::drain();
    width = ui::areaOf(line->widget()).width;
    EXPECT_EQ(picture(*line, {width - 120, 12, width - 50, 13}),
              "\n#.....#...w..d......................w..d..#.....#...#.####....w..d....\n");
    EXPECT_EQ(help->rect(), zRect(0, 2, width - 108, 23));
    EXPECT_EQ(itemAt(1)->rect().width(), 8 * 6 + 8) << "of the clock";
  }
  // Twice, so that capitals are not locked.
  holdKey(XK_Caps_Lock, {False, True, False});
}

TEST_F(StatusLine, ExplainsArmedItemsAndThenShowsWhatItShowedBefore) {
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
  closeMenu();
  EXPECT_EQ(picture(*line, help->rect()), before);
  arm(kOpenId);
  line->setText(0, "meanwhile");
  EXPECT_EQ(helpShown(), "Opens a system");
  line->setHelpTable(kHelpItemId, kHelp);
  EXPECT_EQ(helpShown(), "meanwhile") << "a new table ends the help";
  // It lets go of its item and of its menu, whichever dies first.
  delete help;
  arm(kOpenId);
  line->setText(0, "nowhere");
  closeMenu();
  EXPECT_EQ(line->itemById(kHelpItemId), nullptr);
  delete line;
  arm(kOpenId);
}

TEST_F(StatusLine, TheClockIsDrawnWhenAMinuteIsOverButNotWhileHelpShows) {
  auto* clock = static_cast<zStatusClock*>(itemAt(1));
  const auto drawn = [&] { return picture(*line, clock->rect()); };
  const auto textAt = [&](int hour, int minute) {
    now = kMidnight + 3600 * hour + 60 * minute;
    clock->tick();
    return clock->text().str();
  };
  EXPECT_EQ(textAt(0, 5), "12:05 AM");
  EXPECT_EQ(textAt(12, 0), "12:00 PM");
  EXPECT_EQ(textAt(11, 59), "11:59 AM");
  EXPECT_EQ(textAt(9, 30), "9:30 AM");
  const std::string before = drawn();
  now += 60;
  // The key items look at the keyboard by themselves, too.
  holdKey(XK_Num_Lock, {True});
  ui::waitFor([&] { return clock->text() == RWCString("9:31 AM"); }, "the clock's own tick");
  EXPECT_NE(drawn(), before);
  ui::waitFor([&] { return itemAt(83)->text() == RWCString("NUM"); }, "the look at the keyboard");
  holdKey(XK_Num_Lock, {False, True, False});
  ziStatusKeyItem::tick();
  EXPECT_EQ(itemAt(83)->text(), RWCString("")) << "the key counts, not the lock that it switched";
  delete itemAt(83);
  ziStatusKeyItem::tick();
  arm(kOpenId);
  const std::string during = drawn();
  EXPECT_EQ(textAt(9, 32), "9:32 AM");
  EXPECT_EQ(drawn(), during);
  closeMenu();
  ui::waitFor([&] { return drawn() != during; }, "the clock to be drawn");
}

}  // namespace
