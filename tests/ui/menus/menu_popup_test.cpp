// Popup menus: their place, their loop and its ends.

#include "tests/ui/menus/menu_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kButton = 3;
constexpr zPoint kPlace{120, 80};

class PopupTest : public MenuTest {
 protected:
  PopupTest() : popup(std::make_unique<zPopupMenu>(zPoint{}, frame.get())) {
    more.appendItem(kExtra, "&Extra", 0);
    popup->appendItem(kAdd, "&Add...", 0);
    popup->appendSeparator();
    popup->appendItem(kRename, "Re&name Group...", 0);
    show();
  }

  bool isPosted() const { return popup->widget() != nullptr && ui::isViewable(popup->widget()); }

  /// Shows the popup, does `action` when it is on the screen, and returns what was heard.
  MenuJournal postAnd(std::function<void()> action) {
    ui::ModalScript script;
    script.when([this] { return isPosted(); }, "the popup", std::move(action));
    EXPECT_EQ(script.run([this] { return popup->popup(kPlace, kButton); }), 1);
    return takeJournal();
  }

  zMenu more;
  std::unique_ptr<zPopupMenu> popup;
};

TEST_F(PopupTest, ShowsAtAPlaceInItsOwnerWhatItsItemsAreAndTellsOfThem) {
  popup->addSubMenu(&more, "&More", 1);
  popup->setGrayed(kAdd, 1);
  popup->checkItem(kRename, 1);
  listen(*popup, listener);
  const ui::ScreenArea owner = ui::areaOf(frame->widget());
  EXPECT_THAT(postAnd([&] {
                const ui::ScreenArea at = ui::areaOf(popup->widget());
                EXPECT_EQ((zPoint{at.x - owner.x, at.y - owner.y}), kPlace);
                EXPECT_EQ(popup->position(), kPlace);
                EXPECT_EQ(popup->appendItem(kCopy, "Late", 0), 1);
                EXPECT_EQ(ui::look(popup->widget()),
                          "( ) &Add... greyed\n&More focus\n---\n(x) Re&name Group...\n( ) Late\n");
                ui::moveTo(popup->itemWidget(kRename), 5, 5);
                EXPECT_EQ(takeJournal().front(), "shown");
                ui::click(popup->itemWidget(kRename), 5, 5);
              }),
              ElementsAre("select 2203 0", "closed", "select 2203 32768", "closed", "command 2203",
                          "owner command 2203"));
  EXPECT_EQ(popup->widget(), nullptr);
  EXPECT_EQ(popup->itemWidget(kAdd), nullptr);
}

TEST_F(PopupTest, EndsByTheKeyboardAnOutsideClickAndTheButtonItWasShownFor) {
  popup->addSubMenu(&more, "&More", 1);
  const MenuJournal nothing;
  const MenuJournal extra = {"owner command 1200"};
  const MenuJournal add = {"owner command 2200"};
  const MenuJournal rename = {"owner command 2203"};
  const auto key = [](ui::KeySymbol symbol) { return [=] { ui::pressKey(symbol); }; };
  ui::click(pane->widget());
  const std::function<void()> chooseInSubMenu = [&] {
    ui::pressKey(XK_m);
    ui::waitFor([&] { return ui::isViewable(popup->itemWidget(kExtra)); }, "the sub menu");
    ui::click(popup->itemWidget(kExtra));
  };
  const std::pair<std::function<void()>, MenuJournal> ends[] = {
      {chooseInSubMenu, extra},
      {chooseInSubMenu, extra},
      {[] { ui::pressKey(XK_Up), ui::pressKey(XK_Return); }, rename},
      {key(XK_Return), add},
      {key(XK_Escape), nothing},
      {key(XK_n), rename},
      {[&] { ui::click(frame->widget(), 5, 200); }, nothing},
      {[&] { ui::click(popup->itemWidget(kAdd), ui::kRightButton); }, add},
      {[&] { ui::click(popup->itemWidget(kRename)); }, rename},
  };
  for (const auto& [end, heard] : ends) {
    EXPECT_EQ(postAnd(end), heard);
    ui::drain();
    EXPECT_EQ(ui::part(frame->widget(), "PopupMenu"), nullptr) << "no widgets are left";
  }
  ui::waitForFocus(pane->widget());
  EXPECT_THAT(choose(1, kNumbers), ElementsAre("owner command 1106")) << "no grab is left";
  EXPECT_EQ(more.appendItem(kCopy, "Later", 0), 0);
}

TEST_F(PopupTest, MayBeDestroyedByItsHandlerOrMeanwhileOrWithItsOwner) {
  const auto anew = [&] {
    popup = std::make_unique<zPopupMenu>(zPoint{}, frame.get());
    popup->appendItem(kAdd, "&Add...", 0);
  };
  popup->setCommand(&listener, MenuListener::handler(), kAdd);
  listener.action = [&] { popup.reset(); };
  EXPECT_THAT(postAnd([&] { ui::click(popup->itemWidget(kAdd)); }), ElementsAre("command 2200"));
  EXPECT_EQ(zPopupMenu::active(), nullptr);
  anew();
  postAnd([&] { popup.reset(); });
  EXPECT_THAT(choose(0, kExit), ElementsAre("owner command 1003")) << "no grab is left";
  anew();
  postAnd([&] { frame.reset(); });
  EXPECT_EQ(popup->widget(), nullptr);
}

TEST_F(PopupTest, MayBeShownAgainByItsHandler) {
  listener.answer = 1;
  popup->setCommand(&listener, MenuListener::handler(), kAdd);
  listener.action = [&] { popup->popup(kPlace, kButton); };
  ui::ModalScript script;
  script.when([this] { return isPosted(); }, "the popup",
              [&] { ui::click(popup->itemWidget(kAdd)); });
  script.when([&] { return isPosted() && !journal.empty(); }, "the popup again",
              [] { ui::pressKey(XK_n); });
  script.run([this] { return popup->popup(kPlace, kButton); });
  EXPECT_THAT(takeJournal(), ElementsAre("command 2200", "owner command 2203"));
  EXPECT_EQ(popup->widget(), nullptr);
}

// Intended: it stays the active popup until its destruction.
TEST_F(PopupTest, HearsTheEventsOfOtherMenusFirstOnceItWasShown) {
  MenuListener ofPopup(journal, "popup ");
  MenuListener ofBar(journal, "bar ");
  popup->setCommand(&ofPopup, MenuListener::handler(), kExit);
  bar->setCommand(&ofBar, MenuListener::handler(), kExit);
  const MenuJournal usual = {"bar command 1003", "owner command 1003"};
  EXPECT_EQ(choose(0, kExit), usual);
  EXPECT_THAT(postAnd([] { ui::pressKey(XK_Escape); }), IsEmpty());
  EXPECT_THAT(choose(0, kExit),
              ElementsAre("popup command 1003", "bar command 1003", "owner command 1003"));
  ofPopup.answer = 1;
  EXPECT_THAT(choose(0, kExit), ElementsAre("popup command 1003"));
  popup.reset();
  EXPECT_EQ(choose(0, kExit), usual);
  MenuFrame hidden(journal);
  zPopupMenu unseen({}, &hidden);
  EXPECT_EQ(unseen.popup(kPlace, kButton), 0) << "its owner is not on the screen";
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
