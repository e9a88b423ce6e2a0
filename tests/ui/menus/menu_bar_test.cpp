// Menu bars: what they show, how items are chosen, which events that makes, and menus that change
// while they are built or being used.

#include "resources/resource_ids.h"
#include "tests/ui/menus/menu_fixture.h"

namespace {

constexpr const char* kFileLook = "( ) &Open...\tCtrl+O\n---\n( ) E&xit\tCtrl+Q\n";

TEST_F(MenuTest, AnItemIsToldOfToItsMenuThenToTheBarTheNewestFirstThenToTheOwner) {
  for (const zHandler one : {handler<'1'>(), handler<'2'>()}) {
    bar->setCommand(this, one, kExit);
  }
  fileMenu.setCommand(this, handler<'f'>(), kExit);
  viewMenu.addMenuInitHandler(this, handler<'v'>());
  show();
  EXPECT_EQ(choose(0, kExit), "f 1003;2 1003;1 1003;o 1003;");
  taker = '2';
  EXPECT_EQ(choose(0, kExit), "f 1003;2 1003;");
  bar->removeCommand(this, handler<'2'>(), kExit);
  EXPECT_EQ(choose(0, kExit), "f 1003;1 1003;o 1003;");
  listenTo(*bar);
  open(0);
  ui::moveTo(bar->itemWidget(kOpen), 5, 5);
  EXPECT_EQ(heard(), "l shown;l select 1001/0;");
  EXPECT_EQ(close(0, [&] { ui::click(bar->itemWidget(kOpen), 5, 5); }),
            "l select 1001/0;l closed;l select 1001/32768;l closed;l 1001;o 1001;");
}

TEST_F(MenuTest, ShowsTextsMnemonicsAcceleratorsAndStatesAndTheirChanges) {
  EXPECT_EQ(viewMenu.appendItem(kRun, "&Before the bar", kItemChecked), 0);
  bar->checkItem(kNumbers, 1);
  bar->setGrayed(kRun, 1);
  EXPECT_EQ(bar->isItemEnabled(kRun), 1) << "without a widget";
  show();
  EXPECT_EQ(look() + look(0), "&File\n&View\n" + std::string(kFileLook));
  EXPECT_EQ(look(1), "( ) &Copy greyed\n(x) &Line numbering\n(x) &Before the bar greyed\n");
  viewMenu.insertItem(4, 1, "&Add\tF5", kItemChecked);
  viewMenu.appendSeparator();
  EXPECT_EQ(bar->enableItem(kCopy, 1) + bar->setGrayed(kNumbers, 1) + bar->checkItem(kNumbers, 0),
            3);
  EXPECT_EQ(bar->setGrayed(9, 1) + bar->checkItem(kNoItemId, 1), 0);
  EXPECT_EQ(
      look(1),
      "( ) &Copy\n(x) &Add\tF5\n( ) &Line numbering greyed\n(x) &Before the bar greyed\n---\n");
  EXPECT_EQ(bar->isItemEnabled(kCopy) + bar->isItemEnabled(9), 2);
  EXPECT_EQ(bar->isItemEnabled(kNumbers), 0);
  EXPECT_EQ(choose(1, 4), "o 4;");
}

TEST_F(MenuTest, IsOperatedByTheKeyboard) {
  listenTo(*bar);
  bar->appendItem(kRun, "&Go", kItemHelp);
  show();
  bar->appendItem(8, "Ne&xt to the help", kItemHelp);
  EXPECT_EQ(look(), "&File\n&View\nNe&xt to the help\n&Go\n");
  // A key that comes while the menu comes up and has no focus yet.
  action = [] { screen::Screen(ui::display()).press(XK_x); };
  ui::pressKey(XK_f, ui::kAlt);
  EXPECT_THAT(heard(), testing::EndsWith("l select 1003/32768;l closed;l 1003;o 1003;"));
  ui::waitForFocus(pane->widget());
  ui::pressKey(XK_g, ui::kAlt);
  EXPECT_EQ(heard(), "l select 1200/32768;l closed;l 1200;o 1200;") << "an item of the bar";
  zApp::instance()->loadAccelerators(kAcceleratorsMain);
  ui::pressKey(XK_o, ui::kControl);
  bar->setGrayed(kOpen, 1);
  ui::pressKey(XK_o, ui::kControl);
  zApp::instance()->loadAccelerators(0);
  EXPECT_EQ(heard(), "l 1001 by its key;o 1001 by its key;");
}

TEST_F(MenuTest, SubMenusComeAndGoInABuiltBar) {
  zMenu tools;
  zMenu empty;
  show();
  tools.appendItem(kRun, "&Run", 0);
  EXPECT_EQ(bar->addSubMenu(&tools, "&Tools", 1) + bar->addSubMenu(&empty, "Empty", 2), 2);
  EXPECT_EQ(look(), "&File\n&Tools\nEmpty\n&View\n");
  EXPECT_EQ(choose(1, kRun), "o 1200;");
  EXPECT_EQ(empty.appendItem(8, "Now", 0), 1);
  EXPECT_EQ(bar->deleteSubMenuAt(2) + bar->deleteSubMenuAt(1), 2);
  EXPECT_EQ(bar->deleteSubMenuAt(2) + bar->setGrayed(kRun, 1), 0);
  EXPECT_EQ(look(), "&File\n&View\n");
  EXPECT_EQ(bar->addSubMenu(&tools, "Back", 2), 1) << "what was taken out can go in again";
  // A command of a menu may reload it, its own gadgets still being in use.
  action = [&] {
    bar->deleteSubMenuAt(2);
    bar->addSubMenu(&empty, "&New tools", 2);
  };
  bar->setCommand(this, handler<'r'>(), kRun);
  EXPECT_EQ(choose(2, kRun), "r 1200;o 1200;");
  EXPECT_EQ(look() + look(2), "&File\n&View\n&New tools\n( ) Now\n");
  EXPECT_EQ(choose(2, 8), "o 8;");
}

TEST_F(MenuTest, SubMenusNestAndTheirLinesOutliveTheirMenuObject) {
  zMenu deep;
  auto recent = std::make_unique<zMenu>();
  recent->appendItem(kRun, "&Run", 0);
  recent->addSubMenu(&deep, "&Deeper\tF4", 1);
  EXPECT_EQ(deep.addSubMenu(recent.get(), "", 0) + deep.addSubMenu(&deep, "", 0) +
                deep.addSubMenu(nullptr, "", 0) + deep.addSubMenu(bar, "", 0) +
                fileMenu.addSubMenu(&deep, "", 0) + recent->create(),
            0);
  fileMenu.addSubMenu(recent.get(), "&Recent", 1);
  show();
  EXPECT_EQ(deep.appendItem(9, "&Late", kItemChecked), 1);
  const auto below = [](Widget menu, std::size_t line) {
    return ui::widgetResource(ui::partsOf(menu).at(line), "subMenuId");
  };
  Widget const second = below(pulldown(0), 1);
  EXPECT_EQ(look(0) + ui::look(second) + ui::look(below(second, 1)),
            "( ) &Open...\tCtrl+O\n&Recent\n---\n( ) E&xit\tCtrl+Q\n"
            "( ) &Run\n&Deeper\n(x) &Late\n");
  recent->setCommand(this, handler<'r'>(), 9);
  recent->addMenuInitHandler(this, handler<'i'>());
  deep.setCommand(this, handler<'d'>(), 9);
  fileMenu.setCommand(this, handler<'f'>(), 9);
  const auto chooseLate = [&](screen::Screen& typist) {
    ui::waitForFocus(pane->widget());
    typist.press(XK_f, ui::kAlt);
    typist.type("r");
    typist.press(XK_Down);
    typist.type("\nl");
    ui::drain();
    return heard();
  };
  EXPECT_EQ(chooseLate(ui::user()), "i shown;i shown;d 9;r 9;f 9;o 9;");
  recent.reset();
  screen::Screen typesAhead(ui::display());
  EXPECT_EQ(chooseLate(typesAhead), "d 9;f 9;o 9;");
  EXPECT_EQ(bar->setGrayed(9, 1) + fileMenu.deleteSubMenuAt(1) + bar->setGrayed(9, 1), 2);
  EXPECT_EQ(look(0), kFileLook);
  EXPECT_EQ(deep.parentMenu(), nullptr);
}

TEST_F(MenuTest, AMenuThatIsOpenMayBeRemoved) {
  bar->addHandler(this, handler<'b'>(), kMsgMenuSelect);
  show();
  open(0);
  EXPECT_EQ(close(0, [&] { bar->deleteSubMenuAt(0); }), "b closed;");
  EXPECT_FALSE(zApp::isMenuPosted());
  EXPECT_EQ(look(), "&View\n");
  ui::waitForFocus(pane->widget());
  EXPECT_NE(choose(0, kNumbers).find("o 1106;"), std::string::npos) << "no grab is left";
  ui::waitForFocus(pane->widget());
  open(0);
  action = [&] { frame.reset(); };
  EXPECT_EQ(bar->deleteSubMenuAt(0), 1);
  EXPECT_EQ(frame, nullptr) << "who hears of it may destroy the bar";
}

TEST_F(MenuTest, AFrameMayGoInAHandlerOfItsMenu) {
  show();
  action = [&] { frame.reset(); };
  EXPECT_EQ(choose(0, kExit), "o 1003;");
  EXPECT_EQ(fileMenu.itemWidget(kOpen), nullptr);
  EXPECT_EQ(fileMenu.parentMenu(), nullptr);
  EXPECT_EQ(fileMenu.setGrayed(kOpen, 1), 1) << "the items stay with their menu object";
}

}  // namespace
