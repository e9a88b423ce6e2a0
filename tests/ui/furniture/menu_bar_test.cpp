// Menu bars: what they show, how items are chosen, and which events that makes.

#include <gmock/gmock.h>

#include "resources/resource_ids.h"
#include "tests/ui/furniture/menu_fixture.h"

#include <X11/keysym.h>

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;

TEST_F(MenuTest, AChosenItemIsToldThenTheMenusEndAndThenTheCommand) {
  MenuListener listener(journal);
  listen(*bar, listener);
  show();
  open(0);
  EXPECT_EQ(takeJournal().front(), "278");
  ui::moveTo(bar->itemWidget(kOpen), 5, 5);
  takeJournal();
  ui::click(bar->itemWidget(kOpen), 5, 5);
  waitForNoMenu(pulldown(0));
  EXPECT_THAT(takeJournal(), ElementsAre("287 1001 0", "287 closed", "287 1001 8000", "287 closed",
                                         "273 1001", "owner 273 1001"));
  EXPECT_EQ(listener.last.extra, kCommandFromMenu);
  EXPECT_EQ(listener.last.lparam,
            reinterpret_cast<std::intptr_t>(static_cast<zWindow*>(frame.get())));
}

TEST_F(MenuTest, AHandlerThatTakesACommandKeepsItFromTheOthersAndFromTheOwner) {
  MenuListener first(journal, "first ");
  MenuListener second(journal, "second ");
  MenuListener other(journal, "other ");
  bar->setCommand(&first, first.handler(), kExit);
  bar->setCommand(&second, second.handler(), kExit);
  bar->setCommand(&other, other.handler(), kOpen);
  show();
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("second 273 1003", "first 273 1003", "owner 273 1003"));
  second.answer = 1;
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("second 273 1003"));
  bar->removeCommand(&second, second.handler(), kOpen);
  bar->removeCommand(&second, second.handler(), kExit);
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("first 273 1003", "owner 273 1003"));
}

TEST_F(MenuTest, ASubMenusOwnHandlersAreAskedBeforeThoseOfTheBar) {
  MenuListener ofBar(journal, "bar ");
  MenuListener ofMenu(journal, "menu ");
  bar->setCommand(&ofBar, ofBar.handler(), kExit);
  fileMenu.setCommand(&ofMenu, ofMenu.handler(), kExit);
  viewMenu.addMenuInitHandler(&ofMenu, ofMenu.handler());
  show();
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("menu 273 1003", "bar 273 1003", "owner 273 1003"));
}

TEST_F(MenuTest, TheWidgetsShowTextsMnemonicsAcceleratorsAndStates) {
  bar->checkItem(kNumbers, 1);
  show();
  EXPECT_THAT(menuLabels(bar->widget()), ElementsAre("File", "View"));
  EXPECT_EQ(menuItemView(cascade(1)).mnemonic, 'V');
  EXPECT_THAT(menuLabels(pulldown(0)), ElementsAre("Open...", "-", "Exit"));
  const MenuItemView openItem = menuItemView(bar->itemWidget(kOpen));
  EXPECT_EQ(openItem.mnemonic, 'O');
  EXPECT_EQ(openItem.accelerator, "Ctrl+O");
  EXPECT_FALSE(openItem.isChecked);
  EXPECT_TRUE(openItem.isSensitive);
  EXPECT_FALSE(menuItemView(bar->itemWidget(kCopy)).isSensitive);
  EXPECT_TRUE(menuItemView(bar->itemWidget(kNumbers)).isChecked);
  EXPECT_EQ(bar->setItemText(kOpen, "&Load\tF9"), 1);
  const MenuItemView renamed = menuItemView(bar->itemWidget(kOpen));
  EXPECT_EQ(renamed.label + "|" + renamed.accelerator + "|" + renamed.mnemonic, "Load|F9|L");
  EXPECT_EQ(bar->setItemText(kExtra, "none"), 0);
}

TEST_F(MenuTest, OnlyTheApplicationChangesACheckMark) {
  show();
  choose(1, kNumbers);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1106"));
  EXPECT_FALSE(menuItemView(bar->itemWidget(kNumbers)).isChecked);

  MenuListener listener(journal);
  listener.action = [&] { bar->checkItem(kNumbers, 1); };
  bar->setCommand(&listener, listener.handler(), kNumbers);
  choose(1, kNumbers);
  EXPECT_TRUE(menuItemView(bar->itemWidget(kNumbers)).isChecked);
  listener.action = nullptr;
  choose(1, kNumbers);
  EXPECT_TRUE(menuItemView(bar->itemWidget(kNumbers)).isChecked);
  EXPECT_EQ(bar->checkItem(kNumbers, 0), 1);
  EXPECT_FALSE(menuItemView(bar->itemWidget(kNumbers)).isChecked);
  EXPECT_EQ(bar->checkItem(kExtra, 1), 0);
}

TEST_F(MenuTest, AGreyedItemCannotBeChosenUntilItIsEnabled) {
  EXPECT_EQ(bar->isItemEnabled(kCopy), 1) << "without a widget";
  show();
  EXPECT_EQ(bar->isItemEnabled(kCopy), 0);
  EXPECT_EQ(bar->isItemEnabled(kExtra), 1) << "no such item";
  open(1);
  ui::click(bar->itemWidget(kCopy));
  ui::pressKey(XK_Escape);
  waitForNoMenu(pulldown(1));
  EXPECT_THAT(takeJournal(), IsEmpty());
  EXPECT_EQ(bar->enableItem(kCopy, 1), 1);
  EXPECT_EQ(bar->isItemEnabled(kCopy), 1);
  choose(1, kCopy);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1104"));
  EXPECT_EQ(bar->setGrayed(kCopy, 1), 1);
  EXPECT_EQ(bar->isItemEnabled(kCopy), 0);
  EXPECT_EQ(bar->setGrayed(kExtra, 1), 0);
}

TEST_F(MenuTest, AHandlerMayGreyItemsBeforeTheirMenuShows) {
  MenuListener listener(journal);
  bool wasShown = true;
  show();
  listener.action = [&] {
    wasShown = ui::isViewable(containerOf(bar->itemWidget(kNumbers)));
    bar->enableItem(kNumbers, 0);
  };
  bar->addMenuInitHandler(&listener, listener.handler());
  open(1);
  EXPECT_FALSE(wasShown);
  EXPECT_FALSE(menuItemView(bar->itemWidget(kNumbers)).isSensitive);
  ui::pressKey(XK_Escape);
  waitForNoMenu(pulldown(1));
}

TEST_F(MenuTest, IsOperatedByTheKeyboard) {
  MenuListener listener(journal);
  listen(*bar, listener);
  show();
  ui::pressKey(XK_v, ui::kAlt);
  ui::waitFor([&] { return ui::isViewable(pulldown(1)); }, "View by its mnemonic");
  ui::pressKey(XK_Escape);
  waitForNoMenu(pulldown(1));
  EXPECT_THAT(takeJournal(), Not(Contains("273 1106")));
  ui::waitForFocus(pane->widget());

  ui::pressKey(XK_f, ui::kAlt);
  ui::waitFor([&] { return ui::isViewable(pulldown(0)); }, "File by its mnemonic");
  ui::pressKey(XK_x);
  waitForNoMenu(pulldown(0));
  EXPECT_EQ(takeJournal().back(), "owner 273 1003");

  ui::pressKey(XK_F10);
  ui::pressKey(XK_Down);
  ui::waitFor([&] { return ui::isViewable(pulldown(0)); }, "File by F10");
  takeJournal();
  ui::pressKey(XK_Down);
  EXPECT_THAT(takeJournal(), Contains("287 1003 0")) << "the arrow keys arm";
  ui::pressKey(XK_Return);
  waitForNoMenu(pulldown(0));
  EXPECT_THAT(takeJournal(), ElementsAre("287 closed", "287 1003 8000", "287 closed", "273 1003",
                                         "owner 273 1003"));
  ui::waitForFocus(pane->widget());
}

TEST_F(MenuTest, AcceleratorsGoToTheBarUnlessTheirItemIsGreyed) {
  zApp::instance()->loadAccelerators(kAcceleratorsMain);
  MenuListener listener(journal);
  listener.answer = 1;
  bar->setCommand(&listener, listener.handler(), kOpen);
  show();
  ui::pressKey(XK_o, ui::kControl);
  EXPECT_THAT(takeJournal(), ElementsAre("273 1001"));
  EXPECT_EQ(listener.last.extra, kCommandFromAccelerator);
  bar->setGrayed(kOpen, 1);
  ui::pressKey(XK_o, ui::kControl);
  EXPECT_THAT(takeJournal(), IsEmpty()) << "and the pane does not get the key either";
  zApp::instance()->loadAccelerators(0);
}

TEST_F(MenuTest, SubMenusNest) {
  zMenu recent;
  recent.appendItem(kExtra, "&First", 0);
  EXPECT_EQ(fileMenu.addSubMenu(&recent, "&Recent", 1), 1);
  MenuListener listener(journal);
  listen(*bar, listener);
  show();
  EXPECT_THAT(menuLabels(pulldown(0)), ElementsAre("Open...", "Recent", "-", "Exit"));
  open(0);
  ui::pressKey(XK_r);
  Widget first = bar->itemWidget(kExtra);
  ui::waitFor([&] { return ui::isViewable(containerOf(first)); }, "the inner menu");
  takeJournal();
  ui::click(first);
  waitForNoMenu(pulldown(0));
  EXPECT_FALSE(ui::isViewable(containerOf(first)));
  EXPECT_EQ(journal.back(), "owner 273 1200");
  EXPECT_THAT(journal, IsSupersetOf({"287 1200 8000", "273 1200"}));
  EXPECT_EQ(popupCount(pulldown(0)), 1);
  EXPECT_EQ(fileMenu.deleteSubMenuAt(1), 1);
  ui::drain();
  EXPECT_EQ(popupCount(pulldown(0)), 0) << "its shell goes with it";
}

TEST_F(MenuTest, AMenuIsAttachedOnceAndNeverToItself) {
  zPopupMenu popup({}, frame.get());
  EXPECT_EQ(bar->addSubMenu(&fileMenu, "again", 0), 0);
  EXPECT_EQ(viewMenu.addSubMenu(&fileMenu, "again", 0), 0);
  EXPECT_EQ(fileMenu.addSubMenu(&fileMenu, "self", 0), 0);
  EXPECT_EQ(fileMenu.addSubMenu(bar, "bar", 0), 0);
  EXPECT_EQ(fileMenu.addSubMenu(&popup, "popup", 0), 0);
  EXPECT_EQ(fileMenu.addSubMenu(nullptr, "none", 0), 0);
  zMenu above;
  zMenu below;
  above.addSubMenu(&below, "below", 0);
  EXPECT_EQ(below.addSubMenu(&above, "above", 0), 0);
}

TEST_F(MenuTest, SubMenusAreNotAttachedAsItems) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(bar->appendItem(kExtra, "Sub", kItemSubMenu), 0);
  EXPECT_EQ(bar->insertItem(kExtra, 0, "Sub", kItemSubMenu), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: Using zMenu::appendItem to attach a menu is unsupported\n"
            "Error: Using zMenu::insertItem to attach a menu is unsupported\n");
  show();
  EXPECT_THAT(menuLabels(bar->widget()), ElementsAre("File", "View"));
}

}  // namespace
