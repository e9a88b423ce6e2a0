// Popup menus: their place, their loop and its ends.

#include "tests/ui/menus/menu_fixture.h"

namespace {

constexpr int kAdd = 2200;
constexpr int kRename = 2203;
constexpr int kButton = 3;
constexpr zPoint kPlace{120, 80};

class PopupTest : public MenuTest {
 protected:
  using Step = std::function<void()>;

  PopupTest() {
    renew();
    show();
  }

  void renew() {
    popup = std::make_unique<zPopupMenu>(zPoint{}, frame.get());
    popup->appendItem(kAdd, "&Add...", 0);
    popup->appendSeparator();
    popup->appendItem(kRename, "Re&name Group...", 0);
  }
  /// Shows the popup, takes each step when it has the keyboard, and returns what was heard.
  std::string post(const std::vector<Step>& steps) {
    ui::ModalScript script;
    for (const Step& step : steps) {
      script.when(
          [this] {
            return popup->widget() != nullptr &&
                   ui::look(popup->widget()).find(" focus") != std::string::npos;
          },
          "the popup to take keys", step);
    }
    ui::click(frame->widget(), 5, 200);  // its grabs need the time of an event
    EXPECT_EQ(script.run([this] { return popup->popup(kPlace, kButton); }), 1);
    return heard();
  }

  std::unique_ptr<zPopupMenu> popup;
};

TEST_F(PopupTest, ShowsAtAPlaceInItsOwnerWhatItsItemsAreAndTellsOfThem) {
  zMenu more;
  popup->addSubMenu(&more, "&More", 1);
  popup->setGrayed(kAdd, 1);
  popup->checkItem(kRename, 1);
  listenTo(*popup);
  const ui::ScreenArea owner = ui::areaOf(frame->widget());
  more.appendItem(kNumbers, "&Numbers", 0);
  EXPECT_EQ(post({[] {
              ui::typeText("m");
              ui::pressKey(XK_Left);
              ui::typeText("mn");
            }}),
            "l shown;l shown;l select 1106/0;l closed;l shown;l select 1106/0;l closed;l closed;"
            "l select 1106/32768;l closed;l 1106;o 1106;");
  const std::string events = post({[&] {
    const ui::ScreenArea at = ui::areaOf(popup->widget());
    EXPECT_EQ((zPoint{at.x - owner.x, at.y - owner.y}), kPlace);
    EXPECT_EQ(popup->position(), kPlace);
    EXPECT_EQ(popup->appendItem(kCopy, "Late", 0), 1);
    EXPECT_EQ(ui::look(popup->widget()),
              "( ) &Add... greyed\n&More focus\n---\n(x) Re&name Group...\n( ) Late\n");
    ui::click(popup->itemWidget(kRename), 5, 5);
  }});
  EXPECT_EQ(events, "l shown;l select 2203/0;l closed;l select 2203/32768;l closed;l 2203;o 2203;");
  EXPECT_EQ(popup->itemWidget(kAdd), nullptr);
}

TEST_F(PopupTest, EndsByTheKeyboardAnOutsideClickAndTheButtonItWasShownFor) {
  const auto key = [](ui::KeySymbol symbol) { return [=] { ui::pressKey(symbol); }; };
  const std::pair<std::vector<Step>, const char*> ends[] = {
      {{key(XK_Up), key(XK_Return)}, "o 2203;"},
      {{key(XK_Escape)}, ""},
      {{[&] { ui::click(frame->widget(), 5, 200); }}, ""},
      {{[&] { ui::click(popup->itemWidget(kAdd), ui::kRightButton); }}, "o 2200;"},
      {{[&] { ui::click(popup->itemWidget(kRename)); }}, "o 2203;"}};
  for (const auto& [steps, wanted] : ends) {
    EXPECT_EQ(post(steps), wanted);
    ui::drain();
    EXPECT_EQ(ui::part(frame->widget(), "PopupMenu"), nullptr) << "no widgets are left";
  }
  ui::waitForFocus(pane->widget());
  // Intended: it hears the events of all menus first as long as it exists.
  popup->setCommand(this, handler<'p'>(), kNumbers);
  EXPECT_EQ(choose(1, kNumbers), "p 1106;o 1106;") << "no grab is left";
  popup.reset();
  EXPECT_EQ(choose(1, kNumbers), "o 1106;");
}

TEST_F(PopupTest, MayBeShownAgainOrDestroyedByItsHandlerOrMeanwhileOrWithItsOwner) {
  const Step chooseAdd = [&] { ui::click(popup->itemWidget(kAdd)); };
  taker = 'a';
  popup->setCommand(this, handler<'a'>(), kAdd);
  action = [&] { EXPECT_EQ(post({[] { ui::pressKey(XK_n); }}), "a 2200;o 2203;"); };
  EXPECT_EQ(post({chooseAdd}), "");
  EXPECT_EQ(popup->widget(), nullptr);
  action = [&] { popup.reset(); };
  EXPECT_EQ(post({chooseAdd}), "a 2200;");
  EXPECT_EQ(zPopupMenu::active(), nullptr);
  renew();
  post({[&] { popup.reset(); }});
  EXPECT_EQ(choose(0, kExit), "o 1003;") << "no grab is left";
  renew();
  post({[&] { frame.reset(); }});
  EXPECT_EQ(popup->widget(), nullptr);
}

}  // namespace
