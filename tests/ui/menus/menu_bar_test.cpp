// Menu bars: what they show, how items are chosen, which events that makes, and menus that change
// while they are built or being used.

#include "resources/resource_ids.h"
#include "tests/ui/menus/menu_fixture.h"

#include <X11/Intrinsic.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kFileLook = "( ) &Open...\tCtrl+O\n---\n( ) E&xit\tCtrl+Q\n";

TEST_F(MenuTest, AChosenItemIsToldThenTheMenusEndAndThenTheCommand) {
  listen(*bar, listener);
  show();
  open(0);
  EXPECT_THAT(takeJournal(), Contains("shown"));
  ui::moveTo(bar->itemWidget(kOpen), 5, 5);
  takeJournal();
  close(0, [&] { ui::click(bar->itemWidget(kOpen), 5, 5); });
  EXPECT_THAT(takeJournal(), ElementsAre("select 1001 0", "closed", "select 1001 32768", "closed",
                                         "command 1001", "owner command 1001"));
  EXPECT_EQ(listener.last.extra, kCommandFromMenu);
  EXPECT_EQ(listener.last.window, frame.get());
  EXPECT_EQ(listener.last.lparam,
            reinterpret_cast<std::intptr_t>(static_cast<zWindow*>(frame.get())));
}

TEST_F(MenuTest, TheMenuOfTheItemIsAskedFirstThenTheBarAndThenTheOwner) {
  MenuListener first(journal, "first ");
  MenuListener second(journal, "second ");
  MenuListener ofMenu(journal, "menu ");
  for (MenuListener* of : {&first, &second}) {
    bar->setCommand(of, MenuListener::handler(), kExit);
  }
  bar->setCommand(&listener, MenuListener::handler(), kOpen);
  fileMenu.setCommand(&ofMenu, MenuListener::handler(), kExit);
  viewMenu.addMenuInitHandler(&ofMenu, MenuListener::handler());
  show();
  MenuJournal heard = {"menu command 1003", "second command 1003", "first command 1003",
                       "owner command 1003"};
  EXPECT_EQ(choose(0, kExit), heard);
  second.answer = 1;
  EXPECT_THAT(choose(0, kExit), ElementsAre(heard[0], heard[1]));
  bar->removeCommand(&second, MenuListener::handler(), kOpen);
  bar->removeCommand(&second, MenuListener::handler(), kExit);
  EXPECT_THAT(choose(0, kExit), ElementsAre(heard[0], heard[2], heard[3]));
}

TEST_F(MenuTest, ShowsTextsMnemonicsAcceleratorsAndStatesAndLaterOnes) {
  EXPECT_EQ(bar->isItemEnabled(kCopy), 1) << "without a widget";
  zMenu loose;
  EXPECT_EQ(loose.appendItem(kExtra, "Loose", 0), 0) << "no widget to stand in";
  EXPECT_EQ(viewMenu.appendItem(kExtra, "&Before the bar", kItemChecked), 0);
  bar->checkItem(kNumbers, 1);
  bar->setGrayed(kExtra, 1);
  bar->appendItem(kRename, "&Help", kItemHelp);
  bar->appendItem(kAdd, "&Go", kItemHelp);
  show();
  EXPECT_EQ(look(), "&File\n&View\n&Go\n&Help\n");
  EXPECT_EQ(ui::widgetResource(bar->widget(), "menuHelpWidget"), bar->itemWidget(kRename));
  EXPECT_EQ(look(0), kFileLook);
  EXPECT_EQ(look(1), "( ) &Copy greyed\n(x) &Line numbering\n(x) &Before the bar greyed\n");

  EXPECT_EQ(viewMenu.insertItem(kAdd + 1, 1, "&Add\tF5", kItemChecked), 1);
  EXPECT_EQ(viewMenu.insertItem(kAdd + 2, -1, "Last", kItemDisabled), 1);
  EXPECT_EQ(viewMenu.appendSeparator(), 1);
  const int changed[] = {bar->enableItem(kCopy, 1),   bar->setGrayed(kNumbers, 1),
                         bar->checkItem(kNumbers, 0), bar->enableItem(kExtra, 0),
                         bar->setGrayed(9, 1),        bar->checkItem(9, 1)};
  EXPECT_THAT(changed, ElementsAre(1, 1, 1, 1, 0, 0));
  EXPECT_EQ(look(1),
            "( ) &Copy\n(x) &Add\tF5\n( ) &Line numbering greyed\n(x) &Before the bar greyed\n"
            "( ) Last greyed\n---\n");
  const int enabled[] = {bar->isItemEnabled(kCopy), bar->isItemEnabled(kNumbers),
                         bar->isItemEnabled(9)};
  EXPECT_THAT(enabled, ElementsAre(1, 0, 1));
  EXPECT_THAT(choose(1, kAdd + 1), ElementsAre("owner command 2201"));
}

TEST_F(MenuTest, OnlyTheApplicationChecksAnItemAndMayGreyItBeforeItIsSeen) {
  show();
  EXPECT_THAT(choose(1, kNumbers), ElementsAre("owner command 1106"));
  listener.action = [&] { bar->checkItem(kNumbers, 1); };
  bar->setCommand(&listener, MenuListener::handler(), kNumbers);
  EXPECT_EQ(look(1), "( ) &Copy greyed\n( ) &Line numbering\n");
  for (int choice = 0; choice < 2; ++choice) {
    choose(1, kNumbers);
    EXPECT_EQ(look(1), "( ) &Copy greyed\n(x) &Line numbering\n");
  }
  bool wasShown = true;
  listener.action = [&] {
    wasShown = ui::isViewable(pulldown(1));
    bar->enableItem(kNumbers, 0);
  };
  bar->addMenuInitHandler(&listener, MenuListener::handler());
  open(1);
  EXPECT_FALSE(wasShown);
  EXPECT_EQ(look(1), "( ) &Copy greyed\n(x) &Line numbering greyed\n");
  ui::click(bar->itemWidget(kNumbers));
  close(1, [] { ui::pressKey(XK_Escape); });
  EXPECT_THAT(takeJournal(), ElementsAre("shown"));
}

TEST_F(MenuTest, IsOperatedByTheKeyboard) {
  listen(*bar, listener);
  bar->appendItem(kAdd, "&Go", 0);
  show();
  open(1, [] { ui::pressKey(XK_v, ui::kAlt); });
  close(1, [] { ui::pressKey(XK_Escape); });
  EXPECT_THAT(takeJournal(), testing::Not(Contains("command 1106")));
  ui::waitForFocus(pane->widget());
  open(0, [] { ui::pressKey(XK_f, ui::kAlt); });
  close(0, [] { ui::pressKey(XK_x); });
  EXPECT_EQ(takeJournal().back(), "owner command 1003");
  open(0, [] {
    ui::pressKey(XK_F10);
    ui::pressKey(XK_Down);
  });
  takeJournal();
  ui::pressKey(XK_Down);
  EXPECT_THAT(takeJournal(), Contains("select 1003 0")) << "the arrow keys arm";
  close(0, [] { ui::pressKey(XK_Return); });
  EXPECT_THAT(takeJournal(), ElementsAre("closed", "select 1003 32768", "closed", "command 1003",
                                         "owner command 1003"));
  ui::waitForFocus(pane->widget());
  ui::pressKey(XK_g, ui::kAlt);
  EXPECT_THAT(takeJournal(),
              ElementsAre("select 2200 32768", "closed", "command 2200", "owner command 2200"))
      << "an item in the bar itself";
}

TEST_F(MenuTest, AcceleratorsGoToTheBarUnlessTheirItemIsGreyed) {
  struct TypedPane : zPane {
    using zPane::zPane;
    int character(zEvent* event) override {
      typed += event->wparam == 15 ? 1 : 0;
      return 0;
    }
    int typed = 0;
  } other(frame.get(), new zSizer(0, 0, 50, 50), kStyleTabStop, 2);
  other.show();
  zApp::instance()->loadAccelerators(kAcceleratorsMain);
  listener.answer = 1;
  bar->setCommand(&listener, MenuListener::handler(), kOpen);
  show();
  other.startFocusTimer();
  ui::waitForFocus(other.widget());
  ui::pressKey(XK_o, ui::kControl);
  EXPECT_THAT(takeJournal(), ElementsAre("command 1001"));
  EXPECT_EQ(listener.last.extra, kCommandFromAccelerator);
  bar->setGrayed(kOpen, 1);
  ui::pressKey(XK_o, ui::kControl);
  EXPECT_THAT(takeJournal(), IsEmpty());
  EXPECT_EQ(other.typed, 0) << "the pane does not get the key either";
  zApp::instance()->loadAccelerators(0);
  ui::pressKey(XK_o, ui::kControl);
  EXPECT_EQ(other.typed, 1);
}

TEST_F(MenuTest, SubMenusNest) {
  zMenu recent;
  recent.appendItem(kExtra, "&First", kItemChecked);
  EXPECT_EQ(fileMenu.addSubMenu(&recent, "&Recent", 1), 1);
  listen(*bar, listener);
  show();
  EXPECT_EQ(look(0), "( ) &Open...\tCtrl+O\n&Recent\n---\n( ) E&xit\tCtrl+Q\n");
  open(0);
  ui::pressKey(XK_r);
  Widget first = bar->itemWidget(kExtra);
  ui::waitFor([&] { return ui::isViewable(first); }, "the inner menu");
  takeJournal();
  close(0, [&] { ui::click(first); });
  EXPECT_FALSE(ui::isViewable(first));
  EXPECT_THAT(takeJournal(),
              testing::IsSupersetOf({"select 1200 32768", "command 1200", "owner command 1200"}));
  Widget fileRoot = pulldown(0);
  EXPECT_NE(ui::part(fileRoot, "ZAPP_XMPULLDOWN"), nullptr);
  EXPECT_EQ(fileMenu.deleteSubMenuAt(1), 1);
  ui::drain();
  EXPECT_EQ(ui::part(fileRoot, "PulldownMenu"), nullptr) << "its shell goes with it";
  EXPECT_EQ(look(0), kFileLook);
}

TEST_F(MenuTest, AMenuIsAttachedOnceAndNeverToItselfNorAsAnItem) {
  zPopupMenu popup({}, frame.get());
  zMenu above;
  zMenu below;
  above.addSubMenu(&below, "below", 0);
  testing::internal::CaptureStderr();
  const int results[] = {bar->addSubMenu(&fileMenu, "again", 0),
                         viewMenu.addSubMenu(&fileMenu, "again", 0),
                         fileMenu.addSubMenu(&fileMenu, "self", 0),
                         fileMenu.addSubMenu(bar, "bar", 0),
                         fileMenu.addSubMenu(&popup, "popup", 0),
                         fileMenu.addSubMenu(nullptr, "none", 0),
                         below.addSubMenu(&above, "above", 0),
                         bar->appendItem(kExtra, "Sub", kItemSubMenu),
                         bar->insertItem(kExtra, 0, "Sub", kItemSubMenu),
                         fileMenu.create(),
                         popup.create()};
  EXPECT_THAT(results, testing::Each(0));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: Using zMenu::appendItem to attach a menu is unsupported\n"
            "Error: Using zMenu::insertItem to attach a menu is unsupported\n");
  show();
  EXPECT_EQ(look() + look(0), "&File\n&View\n" + std::string(kFileLook));
}

TEST_F(MenuTest, SubMenusComeAndGoInABuiltBar) {
  zMenu tools;
  zMenu empty;
  show();
  tools.appendItem(kExtra, "&Run", 0);
  EXPECT_EQ(bar->addSubMenu(&tools, "&Tools", 1), 1);
  EXPECT_EQ(bar->addSubMenu(&empty, "Empty", 2), 1);
  bar->create();
  EXPECT_EQ(look(), "&File\n&Tools\nEmpty\n&View\n");
  EXPECT_THAT(choose(1, kExtra), ElementsAre("owner command 1200"));
  EXPECT_EQ(empty.appendItem(kAdd, "Now", 0), 1);
  EXPECT_THAT(choose(2, kAdd), ElementsAre("owner command 2200"));
  const int deleted[] = {bar->deleteSubMenuAt(1), bar->deleteSubMenuAt(1), bar->deleteSubMenuAt(2),
                         bar->deleteSubMenuAt(-1)};
  EXPECT_THAT(deleted, ElementsAre(1, 1, 0, 0));
  EXPECT_EQ(look(), "&File\n&View\n");
  EXPECT_EQ(tools.itemWidget(kExtra), nullptr);
  EXPECT_EQ(tools.parentMenu(), nullptr);
  EXPECT_EQ(bar->setGrayed(kExtra, 1), 0) << "no item of the bar any more";
  EXPECT_EQ(bar->addSubMenu(&tools, "Back", 2), 1) << "what was taken out can go in again";
  // A command of a menu may reload it, its own gadgets still being in use.
  zMenu reloaded;
  reloaded.appendItem(kAdd + 1, "&New", 0);
  listener.action = [&] {
    bar->deleteSubMenuAt(2);
    bar->addSubMenu(&reloaded, "&New tools", 2);
  };
  bar->setCommand(&listener, MenuListener::handler(), kExtra);
  EXPECT_THAT(choose(2, kExtra), ElementsAre("command 1200", "owner command 1200"));
  EXPECT_EQ(look() + look(2), "&File\n&View\n&New tools\n( ) &New\n");
  EXPECT_THAT(choose(2, kAdd + 1), ElementsAre("owner command 2201"));
}

TEST_F(MenuTest, AMenuThatIsOpenMayBeRemoved) {
  bar->addHandler(&listener, MenuListener::handler(), kMsgMenuSelect);
  show();
  open(0);
  takeJournal();
  close(0, [&] { EXPECT_EQ(bar->deleteSubMenuAt(0), 1); });
  EXPECT_THAT(takeJournal(), ElementsAre("closed"));
  EXPECT_FALSE(zApp::isMenuPosted());
  EXPECT_EQ(look(), "&View\n");
  ui::waitForFocus(pane->widget());
  EXPECT_EQ(choose(0, kNumbers).back(), "owner command 1106");
  ui::waitForFocus(pane->widget());
  open(0);
  listener.action = [&] { frame.reset(); };
  EXPECT_EQ(bar->deleteSubMenuAt(0), 1);
  EXPECT_EQ(frame, nullptr) << "who hears of it may destroy the bar";
}

TEST_F(MenuTest, AFrameMayGoWhileItsMenuIsOpen) {
  show();
  MenuFrame other(journal, {600, 60});
  auto otherBar = std::make_unique<zMenu>(&other);
  zMenu tools;
  tools.appendItem(kExtra, "&Run", 0);
  otherBar->addSubMenu(&tools, "&Tools", 0);
  otherBar->create();
  other.setMenu(std::move(otherBar));
  other.show();
  ui::waitFor([&] { return ui::isViewable(other.shell()); }, "the other frame");
  open(0);
  frame.reset();
  Widget entry = ui::partsOf(tools.parentMenu()->widget()).front();
  ui::click(entry);
  ui::waitFor([&] { return ui::isViewable(tools.itemWidget(kExtra)); }, "the other frame's menu");
  ui::click(tools.itemWidget(kExtra));
  ui::waitFor([&] { return !journal.empty(); }, "its command");
  EXPECT_THAT(takeJournal(), ElementsAre("owner command 1200"));
}

TEST_F(MenuTest, AHandlerMayDestroyTheFrameWithItsMenu) {
  show();
  listener.action = [&] { frame.reset(); };
  bar->setCommand(&listener, MenuListener::handler(), kExit);
  open(0);
  ui::click(bar->itemWidget(kExit));
  ui::waitForNoDialog(MenuFrame::kTitle);
  EXPECT_THAT(takeJournal(), ElementsAre("command 1003"));
  EXPECT_EQ(fileMenu.itemWidget(kOpen), nullptr);
  EXPECT_EQ(fileMenu.parentMenu(), nullptr);
  EXPECT_EQ(fileMenu.setGrayed(kOpen, 1), 1) << "the items stay with their menu object";
}

TEST_F(MenuTest, ItemsOutliveTheObjectOfTheirSubMenu) {
  auto tools = std::make_unique<zMenu>();
  zMenu inner;
  tools->appendItem(kExtra, "&Run", 0);
  inner.appendItem(kAdd, "&Add", 0);
  tools->addSubMenu(&inner, "&Inner", 1);
  bar->addSubMenu(tools.get(), "&Tools", 0);
  show();
  tools.reset();
  listen(*bar, listener);
  EXPECT_EQ(choose(0, kExtra).back(), "owner command 1200");
  EXPECT_EQ(inner.appendItem(kRename, "&Rename", 0), 1);
  EXPECT_EQ(inner.parentMenu(), bar);
  EXPECT_EQ(bar->checkItem(kAdd, 1), 1);
}

TEST_F(MenuTest, WidgetsThatOthersDestroyAreForgotten) {
  show();
  XtDestroyWidget(bar->widget());
  ui::drain();
  EXPECT_EQ(bar->itemWidget(kOpen), nullptr);
  EXPECT_EQ(bar->widget(), nullptr);
  EXPECT_EQ(bar->create() + fileMenu.appendItem(kExtra, "Extra", 0), 0);
  EXPECT_EQ(bar->setGrayed(kOpen, 1), 1);
}

}  // namespace
