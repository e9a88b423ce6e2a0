// Menus that change while they are built or being used, and their end.

#include <gmock/gmock.h>

#include "tests/ui/furniture/menu_fixture.h"

#include <X11/keysym.h>

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(MenuTest, ItemsAddedToABuiltMenuShowAtOnceAndInTheirPlace) {
  zMenu loose;
  EXPECT_EQ(loose.appendItem(kExtra, "Loose", 0), 0) << "no widget to stand in";
  EXPECT_EQ(fileMenu.appendItem(kExtra, "Before the bar", 0), 0);
  show();
  EXPECT_EQ(fileMenu.insertItem(kAdd, 1, "&Add\tF5", kItemChecked), 1);
  EXPECT_EQ(fileMenu.insertItem(kRename, -1, "Last", kItemGreyed), 1);
  EXPECT_EQ(fileMenu.appendSeparator(), 1);
  EXPECT_THAT(menuLabels(pulldown(0)),
              ElementsAre("Open...", "Add", "-", "Exit", "Before the bar", "Last", "-"));
  EXPECT_TRUE(menuItemView(bar->itemWidget(kAdd)).isChecked);
  EXPECT_EQ(bar->isItemEnabled(kRename), 0);
  choose(0, kAdd);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 2200"));
}

TEST_F(MenuTest, ALongMenuIsLaidOutOnce) {
  show();
  zMenu longMenu;
  for (int i = 0; i < 100; ++i) {
    longMenu.appendItem(kExtra + i, "Item", 0);
  }
  EXPECT_LE(menuLayoutsDuring([&] { bar->addSubMenu(&longMenu, "Long", 1); }), 2);
  EXPECT_EQ(menuLabels(pulldown(1)).size(), 100U);
}

TEST_F(MenuTest, RemovedItemsAreGoneWhereverTheyStand) {
  show();
  EXPECT_EQ(bar->removeItem(kOpen), 1);
  EXPECT_EQ(viewMenu.removeItem(kExit), 0) << "not in this menu";
  EXPECT_EQ(bar->removeItem(kNoItemId), 0);
  EXPECT_EQ(bar->removeItem(kOpen), 0);
  EXPECT_THAT(menuLabels(pulldown(0)), ElementsAre("-", "Exit"));
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1003"));
}

TEST_F(MenuTest, SubMenusComeAndGoInABuiltBar) {
  zMenu tools;
  zMenu empty;
  show();
  tools.appendItem(kExtra, "&Run", 0);
  EXPECT_EQ(bar->addSubMenu(&tools, "&Tools", 1), 1);
  EXPECT_EQ(bar->addSubMenu(&empty, "Empty", 2), 1);
  bar->create();
  EXPECT_THAT(menuLabels(bar->widget()), ElementsAre("File", "Tools", "Empty", "View"));
  choose(1, kExtra);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1200"));
  EXPECT_EQ(empty.appendItem(kAdd, "Now", 0), 1);
  choose(2, kAdd);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 2200"));

  EXPECT_EQ(bar->deleteSubMenuAt(1), 1);
  EXPECT_EQ(bar->deleteSubMenuAt(1), 1);
  EXPECT_EQ(bar->deleteSubMenuAt(2), 0);
  EXPECT_EQ(bar->deleteSubMenuAt(-1), 0);
  EXPECT_THAT(menuLabels(bar->widget()), ElementsAre("File", "View"));
  EXPECT_EQ(tools.itemWidget(kExtra), nullptr);
  EXPECT_EQ(bar->removeItem(kExtra), 0);
  EXPECT_EQ(bar->addSubMenu(&tools, "Back", 2), 1) << "what was taken out can go in again";
  choose(2, kExtra);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1200"));
}

// A command of a menu reloads the menus behind it, its own gadgets still being in use.
TEST_F(MenuTest, AHandlerMayReplaceTheMenusOfTheBar) {
  auto tools = std::make_unique<zMenu>();
  tools->appendItem(kExtra, "&Run", 0);
  bar->addSubMenu(tools.get(), "&Tools", 1);
  show();
  MenuListener listener(journal);
  listener.answer = 1;
  listener.action = [&] {
    bar->deleteSubMenuAt(1);
    tools = std::make_unique<zMenu>();
    tools->appendItem(kAdd, "&New", 0);
    bar->addSubMenu(tools.get(), "&New tools", 1);
  };
  bar->setCommand(&listener, listener.handler(), kExtra);
  choose(1, kExtra);
  ui::drain();
  EXPECT_THAT(menuLabels(bar->widget()), ElementsAre("File", "New tools", "View"));
  takeJournal();
  choose(1, kAdd);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 2200"));
}

TEST_F(MenuTest, AnItemMayBeRemovedWhileItIsArmedOrChosen) {
  show();
  MenuListener listener(journal);
  bar->addHandler(&listener, listener.handler(), kMsgMenuSelect);
  ui::pressKey(XK_F10);
  ui::pressKey(XK_Down);
  ui::waitFor([&] { return ui::isViewable(pulldown(0)); }, "the pulldown");
  listener.action = [&] {
    // The toolkit arms another one as soon as this one has gone.
    listener.action = nullptr;
    bar->removeItem(static_cast<int>(listener.last.wparam));
  };
  ui::pressKey(XK_Down);
  EXPECT_THAT(menuLabels(pulldown(0)), ElementsAre("Open...", "-"));
  ui::pressKey(XK_Down);
  ui::pressKey(XK_Return);
  waitForNoMenu(pulldown(0));
  EXPECT_EQ(takeJournal().back(), "owner 273 1001");
  ui::waitForFocus(pane->widget());

  listener.action = [&] { bar->removeItem(kOpen); };
  ui::pressKey(XK_f, ui::kAlt);
  ui::waitFor([&] { return ui::isViewable(pulldown(0)); }, "the pulldown");
  ui::pressKey(XK_Down);
  EXPECT_THAT(menuLabels(pulldown(0)), ElementsAre("-")) << "the last one that could be armed";
  ui::pressKey(XK_Escape);
  waitForNoMenu(pulldown(0));
  ui::waitForFocus(pane->widget());

  MenuListener chosen(journal);
  chosen.action = [&] { bar->removeItem(kNumbers); };
  bar->setCommand(&chosen, chosen.handler(), kNumbers);
  choose(1, kNumbers);
  EXPECT_THAT(takeJournal(), Contains("owner 273 1106")) << "the command is on its way already";
}

TEST_F(MenuTest, AMenuThatIsOpenMayBeRemoved) {
  MenuListener listener(journal);
  bar->addHandler(&listener, listener.handler(), kMsgMenuSelect);
  show();
  open(0);
  const Window gone = ui::windowOf(pulldown(0));
  takeJournal();
  EXPECT_EQ(bar->deleteSubMenuAt(0), 1);
  EXPECT_THAT(journal, ElementsAre("287 closed"));
  waitForNoMenu(gone);
  EXPECT_FALSE(zApp::isMenuPosted());
  EXPECT_THAT(menuLabels(bar->widget()), ElementsAre("View"));
  ui::waitForFocus(pane->widget());
  choose(0, kNumbers);
  EXPECT_EQ(takeJournal().back(), "owner 273 1106");
  ui::waitForFocus(pane->widget());
}

TEST_F(MenuTest, AHandlerThatHearsOfAMenusEndMayDestroyTheBar) {
  MenuListener listener(journal);
  bar->addHandler(&listener, listener.handler(), kMsgMenuSelect);
  show();
  open(0);
  listener.action = [&] { frame.reset(); };
  takeJournal();
  EXPECT_EQ(bar->deleteSubMenuAt(0), 1);
  EXPECT_EQ(frame, nullptr);
  EXPECT_THAT(journal, ElementsAre("287 closed"));
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
  Widget toolsEntry = menuGadgets(tools.parentMenu()->widget()).front();
  ui::click(toolsEntry);
  ui::waitFor([&] { return ui::isViewable(pulldownOf(toolsEntry)); }, "the other frame's menu");
  ui::click(tools.itemWidget(kExtra));
  ui::waitFor([&] { return !journal.empty(); }, "its command");
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1200"));
}

TEST_F(MenuTest, AHandlerMayDestroyTheFrameWithItsMenu) {
  show();
  MenuListener listener(journal);
  listener.action = [&] { frame.reset(); };
  bar->setCommand(&listener, listener.handler(), kExit);
  open(0);
  ui::click(bar->itemWidget(kExit));
  ui::waitForNoDialog(MenuFrame::kTitle);
  EXPECT_THAT(takeJournal(), ElementsAre("273 1003"));
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
  MenuListener listener(journal);
  listen(*bar, listener);
  choose(0, kExtra);
  EXPECT_EQ(journal.front(), "278");
  EXPECT_EQ(takeJournal().back(), "owner 273 1200");
  EXPECT_EQ(inner.appendItem(kRename, "&Rename", 0), 1);
  EXPECT_EQ(inner.parentMenu(), bar);
  EXPECT_EQ(bar->removeItem(kAdd), 1);
}

TEST_F(MenuTest, WidgetsThatOthersDestroyAreForgotten) {
  show();
  destroyWidget(bar->widget());
  ui::drain();
  EXPECT_EQ(bar->widget(), nullptr);
  EXPECT_EQ(bar->itemWidget(kOpen), nullptr);
  EXPECT_EQ(bar->create(), 0);
  EXPECT_EQ(bar->setGrayed(kOpen, 1), 1);
  EXPECT_EQ(fileMenu.appendItem(kExtra, "Extra", 0), 0);
}

}  // namespace
