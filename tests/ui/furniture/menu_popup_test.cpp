// Popup menus: their place, their loop and its ends.

#include <gmock/gmock.h>

#include "tests/ui/furniture/menu_fixture.h"

#include <X11/keysym.h>

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kButton = 3;
constexpr zPoint kPlace{120, 80};

class PopupTest : public MenuTest {
 protected:
  PopupTest() : popup(std::make_unique<zPopupMenu>(zPoint{}, frame.get())) {
    popup->appendItem(kAdd, "&Add...", 0);
    popup->appendSeparator();
    popup->appendItem(kRename, "Re&name Group...", 0);
    show();
  }

  bool isPosted() const { return popup->widget() != nullptr && ui::isViewable(popup->widget()); }

  /// Shows the popup and does `action` when it is on the screen.
  int postAnd(std::function<void()> action) {
    ui::ModalScript script;
    script.when([this] { return isPosted(); }, "the popup", std::move(action));
    return script.run([this] { return popup->popup(kPlace, kButton); });
  }

  std::unique_ptr<zPopupMenu> popup;
};

TEST_F(PopupTest, ShowsAtAPlaceInItsOwnerAndEndsWithASelection) {
  MenuListener listener(journal);
  listener.answer = 1;
  popup->setCommand(&listener, listener.handler(), kAdd);
  ui::ScreenArea at;
  EXPECT_EQ(postAnd([&] {
              at = ui::areaOf(popup->widget());
              EXPECT_THAT(menuLabels(popup->widget()),
                          ElementsAre("Add...", "-", "Rename Group..."));
              ui::click(popup->itemWidget(kAdd));
            }),
            1);
  const ui::ScreenArea owner = ui::areaOf(frame->widget());
  EXPECT_EQ(at.x, owner.x + kPlace.x);
  EXPECT_EQ(at.y, owner.y + kPlace.y);
  EXPECT_THAT(journal, ElementsAre("273 2200")) << "handled when the call returns";
  EXPECT_EQ(popup->widget(), nullptr);
  EXPECT_EQ(popup->itemWidget(kAdd), nullptr);
}

TEST_F(PopupTest, SendsToItsHandlersOnceAndThenToTheOwner) {
  MenuListener listener(journal);
  listen(*popup, listener);
  postAnd([&] {
    ui::moveTo(popup->itemWidget(kRename), 5, 5);
    EXPECT_EQ(takeJournal().front(), "278");
    ui::click(popup->itemWidget(kRename), 5, 5);
  });
  EXPECT_THAT(journal, ElementsAre("287 2203 0", "287 closed", "287 2203 8000", "287 closed",
                                   "273 2203", "owner 273 2203"));
}

TEST_F(PopupTest, EndsByEscapeAMnemonicAnOutsideClickAndTheButtonItWasShownFor) {
  postAnd([] { ui::pressKey(XK_Escape); });
  EXPECT_THAT(takeJournal(), IsEmpty());
  postAnd([&] { ui::click(frame->widget(), 5, 200); });
  EXPECT_THAT(takeJournal(), IsEmpty());
  postAnd([] { ui::pressKey(XK_n); });
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 2203"));
  postAnd([&] { ui::click(popup->itemWidget(kAdd), ui::kRightButton); });
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 2200"));
  ui::waitForFocus(pane->widget());
  choose(1, kNumbers);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1106")) << "no grab is left";
}

TEST_F(PopupTest, ThatAClickBroughtUpObeysTheKeyboard) {
  ui::click(pane->widget());
  postAnd([] {
    ui::pressKey(XK_Down);
    ui::pressKey(XK_Return);
  });
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 2203"));
  postAnd([] { ui::pressKey(XK_Return); });
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 2200"));
}

TEST_F(PopupTest, LeavesNoWidgetsBehind) {
  const int before = popupCount(frame->widget());
  zMenu more;
  more.appendItem(kExtra, "&Extra", 0);
  popup->addSubMenu(&more, "&More", 0);
  for (int round = 0; round < 3; ++round) {
    postAnd([] { ui::pressKey(XK_Escape); });
    ui::drain();
    EXPECT_EQ(popupCount(frame->widget()), before) << "round " << round;
  }
}

TEST_F(PopupTest, ItsSubMenusWorkInEachRound) {
  zMenu more;
  more.appendItem(kExtra, "&Extra", 0);
  popup->addSubMenu(&more, "&More", 1);
  for (int round = 0; round < 2; ++round) {
    ui::ModalScript script;
    script.when([this] { return isPosted(); }, "the popup", [] { ui::pressKey(XK_m); });
    script.when([&] { return ui::isViewable(containerOf(popup->itemWidget(kExtra))); },
                "its sub menu", [&] { ui::click(popup->itemWidget(kExtra)); });
    script.run([this] { return popup->popup(kPlace, kButton); });
    EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1200"));
  }
  EXPECT_EQ(more.appendItem(kCopy, "Later", 0), 0);
}

TEST_F(PopupTest, GreyedAndCheckedItemsAreAsTheyWereSet) {
  popup->setGrayed(kAdd, 1);
  popup->checkItem(kRename, 1);
  postAnd([&] {
    EXPECT_FALSE(menuItemView(popup->itemWidget(kAdd)).isSensitive);
    EXPECT_TRUE(menuItemView(popup->itemWidget(kRename)).isChecked);
    EXPECT_EQ(popup->appendItem(kExtra, "Late", 0), 1);
    EXPECT_THAT(menuLabels(popup->widget()), Contains("Late"));
    ui::pressKey(XK_Escape);
  });
}

TEST_F(PopupTest, MayBeDestroyedByItsHandler) {
  MenuListener listener(journal);
  popup->setCommand(&listener, listener.handler(), kAdd);
  listener.action = [&] { popup.reset(); };
  EXPECT_EQ(postAnd([&] { ui::click(popup->itemWidget(kAdd)); }), 1);
  EXPECT_EQ(popup, nullptr);
  EXPECT_EQ(zPopupMenu::active(), nullptr);
  EXPECT_THAT(takeJournal(), ElementsAre("273 2200"));
}

TEST_F(PopupTest, MayBeDestroyedWhileItIsOnTheScreen) {
  EXPECT_EQ(postAnd([&] { popup.reset(); }), 1);
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("owner 273 1003")) << "no grab is left";
}

TEST_F(PopupTest, EndsWithItsOwner) {
  EXPECT_EQ(postAnd([&] { frame.reset(); }), 1);
  EXPECT_EQ(popup->widget(), nullptr);
}

TEST_F(PopupTest, MayBeShownAgainByItsHandler) {
  MenuListener listener(journal);
  listener.answer = 1;
  popup->setCommand(&listener, listener.handler(), kAdd);
  listener.action = [&] {
    listener.action = nullptr;
    popup->popup(kPlace, kButton);
  };
  ui::ModalScript script;
  script.when([this] { return isPosted(); }, "the popup",
              [&] { ui::click(popup->itemWidget(kAdd)); });
  script.when([&] { return isPosted() && listener.action == nullptr; }, "the popup again",
              [] { ui::pressKey(XK_n); });
  script.run([this] { return popup->popup(kPlace, kButton); });
  EXPECT_THAT(takeJournal(), ElementsAre("273 2200", "owner 273 2203"));
  EXPECT_EQ(popup->widget(), nullptr);
}

// Intended: it stays the active popup until its destruction.
TEST_F(PopupTest, HearsTheEventsOfOtherMenusFirstOnceItWasShown) {
  MenuListener ofPopup(journal, "popup ");
  MenuListener ofBar(journal, "bar ");
  popup->setCommand(&ofPopup, ofPopup.handler(), kExit);
  bar->setCommand(&ofBar, ofBar.handler(), kExit);
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("bar 273 1003", "owner 273 1003"));
  postAnd([] { ui::pressKey(XK_Escape); });
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("popup 273 1003", "bar 273 1003", "owner 273 1003"));
  ofPopup.answer = 1;
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("popup 273 1003"));
  popup.reset();
  choose(0, kExit);
  EXPECT_THAT(takeJournal(), ElementsAre("bar 273 1003", "owner 273 1003"));
}

TEST_F(PopupTest, IsNotShownForAnOwnerThatIsNotOnTheScreen) {
  MenuFrame hidden(journal);
  zPopupMenu other({}, &hidden);
  EXPECT_EQ(other.popup(kPlace, kButton), 0);
  EXPECT_EQ(zPopupMenu::active(), nullptr);
}

TEST(PopupDeathTest, EndsWhenTheApplicationStops) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        MenuJournal journal;
        MenuFrame frame(journal);
        frame.show();
        ui::waitForDialog(MenuFrame::kTitle);
        zPopupMenu popup({}, &frame);
        popup.appendItem(kAdd, "Add", 0);
        ui::ModalScript script;
        script.when([&] { return ui::isViewable(popup.widget()); }, "the popup",
                    [] { zApp::instance()->stop(); });
        std::cerr << script.run([&] { return popup.popup(kPlace, kButton); })
                  << (popup.widget() == nullptr ? " ended" : " still there");
        std::_Exit(EXIT_SUCCESS);
      },
      testing::ExitedWithCode(EXIT_SUCCESS), "^1 ended$");
}

}  // namespace
