// The button area on the screen: what it shows of the set, presses, scrolling.

#include "tests/ui/buttons/panes_fixture.h"

namespace {

using enum ButtonSetDocument::Reading;

TEST(GroupGeometry, PlacesThreeButtonsARow) {
  const GroupMetrics metrics = GroupMetrics::from({40, 14}, 13, 8, 280, 32);
  EXPECT_EQ(metrics.groupButtonWidth, 50);
  EXPECT_EQ(metrics.minGroupWidth, 242);
  std::string places;
  for (const int count : {1, 3, 4, 7}) {
    const zRect last = buttonPlace(metrics, 100, count - 1);
    for (const int number :
         {expandedGroupWidth(242, 100, count), expandedGroupHeight(metrics, count), last.left,
          last.top, last.right, last.bottom}) {
      places += std::to_string(number) + " ";
    }
  }
  EXPECT_EQ(places,
            "242 55 2 31 102 48 310 55 204 31 304 48 310 74 2 50 102 67 310 93 2 69 102 86 ");
  EXPECT_EQ(expandedGroupHeight(metrics, 0), 36);
  EXPECT_EQ(widenedText(45), 62) << "floating point, cut off";
  EXPECT_EQ(collapsedGroupWidth(metrics, 100, 120), 242);
  EXPECT_EQ(collapsedGroupWidth(metrics, 300, 320), 370);
  EXPECT_EQ(collapsedGroupWidth(metrics, 300, 200), 353);
  // Rows at 131, 150 and 169, the last of two buttons.
  std::string found;
  for (const CanvasBand band : std::initializer_list<CanvasBand>{
           {0, 50}, {0, 131}, {0, 132}, {149, 151}, {150, 169}, {187, 9999}, {188, 9999}}) {
    const ButtonSpan span = buttonsInBand(metrics, 8, 100, band);
    found += std::to_string(span.first) + "-" + std::to_string(span.last) + " ";
  }
  EXPECT_EQ(found, "0-0 0-0 0-3 0-6 3-6 6-8 8-8 ");
}

TEST_F(ButtonPanes, StandBetweenTheirBars) {
  EXPECT_EQ(frame->pane->sizer()->rect(), zRect(0, 0, 260, 469));
  EXPECT_EQ(bar(0).sizer()->rect(), zRect(234, 0, 247, 454));
  EXPECT_EQ(bar(1).sizer()->rect(), zRect(0, 454, 234, 469));
  EXPECT_EQ(ui::childOf<zPanel3d>(*frame->pane)->sizer()->rect(), zRect(0, 0, 234, 454));
  EXPECT_EQ(set().parent()->sizer()->rect(), zRect(2, 2, 232, 452));
  EXPECT_EQ(ui::look(bar(0).widget()), "bar 0 of 0 to 448 by 448 greyed\n");
  EXPECT_EQ(ui::look(bar(1).widget()), "bar 0 of 0 to 224 by 224 greyed\n");
}

TEST_F(ButtonPanes, ShowTheSetAndFollowEachChange) {
  // What stands on the canvas, of whose groups and buttons the places are checked.
  const auto seen = [] {
    ui::drain();
    int y = 1;
    const int width = std::ranges::max(set().groups(), {}, &ButtonPane::width)->width();
    for (ButtonPane* shown : set().groups()) {
      EXPECT_EQ(shown->sizer()->rect(), zRect(zPoint{1, y}, zDimension{width, shown->height()}));
      y += shown->height() + 2;
      int widest = 0;
      for (const Button& labelled : shown->group().buttons) {
        widest = std::max(widest, set().buttonWidth(labelled.label));
      }
      for (int i = 0; shown->group().expanded && i < std::ssize(shown->commands()); ++i) {
        EXPECT_EQ(shown->commands()[static_cast<std::size_t>(i)].window->sizer()->rect(),
                  buttonPlace(set().metrics(), widest, i));
      }
    }
    std::string shown = ui::look(set().widget());
    std::replace(shown.begin(), shown.end(), '\n', ' ');
    return shown;
  };
  // Empty panes would take the keyboard, and every key be lost there.
  EXPECT_EQ(ui::resource(set().widget(), "traversalOn"), 0);
  addGroup("R&D", 4);
  EXPECT_NE(ui::resource(set().widget(), "traversalOn"), 0);
  addGroup("Second", 2, false);
  EXPECT_EQ(seen(), "(x) R&D [Group] [B1] [B2] [B3] [B4] ( ) Second [Group] ");
  document().removeButtons(group(0), {"B4", "B3"});
  document().addButton(group(1), {"a&&b&", "x"});
  EXPECT_EQ(seen(), "(x) R&D [Group] [B1] [B2] (x) Second [Group] [B1] [B2] [a&&b&] ");
  document().changeButton(group(0), group(0).buttons.front(), {"A much longer label", "x"});
  EXPECT_EQ(seen(),
            "(x) R&D [Group] [A much longer label] [B2] (x) Second [Group] [B1] [B2] [a&&b&] ");
  document().removeButtons(group(0), {"A much longer label"});
  document().renameGroup(group(0), "A&B");
  EXPECT_EQ(seen(), "(x) A&B [Group] [B2] (x) Second [Group] [B1] [B2] [a&&b&] ");
  for (const std::string mark : {"( )", "(x)"}) {
    ui::click(ui::childOf<zCheckBox>(pane(1))->widget());
    EXPECT_EQ(seen(), "(x) A&B [Group] [B2] " + mark + " Second [Group] [B1] [B2] [a&&b&] ");
    EXPECT_EQ(group(1).expanded, mark == "(x)");
  }
  awaitCommandLine();
  set().collapseAll();
  document().addGroup("Third");
  EXPECT_EQ(seen(), "( ) A&B [Group] [B2] ( ) Second [Group] [B1] [B2] [a&&b&] (x) Third [Group] ");
  EXPECT_EQ(pane(2).height(), set().metrics().headerHeight) << "a new group has no margin below";
  document().removeGroup(group(1));
  set().expandAll();
  EXPECT_EQ(seen(), "(x) A&B [Group] [B2] (x) Third [Group] ");
  const TemporaryFolder folder;
  document().read(folder.write("new.btn", ":A name of medium length\n"), load);
  EXPECT_EQ(seen(), "(x) A name of medium length [Group] ");
}

TEST_F(ButtonPanes, ExecuteACommandOnAReleaseInsideTheButton) {
  addGroup("Group", 3);
  const auto pressed = [&](int x, int y, ui::MouseButton mouseButton = ui::kLeftButton) {
    ui::moveTo(button(0, 1).widget(), 5, 5);
    ui::pressButton(mouseButton);
    ui::moveTo(button(0, 1).widget(), x, y);
    ui::releaseButton(mouseButton);
    return std::exchange(frame->journal, "");
  };
  const zDimension size = button(0, 1).sizer()->size();
  const std::string inside = "status Execute Command: b2;b2;status ;";
  const std::string outside = "status Execute Command: b2;status ;";
  ui::focus(*theTextPane);
  EXPECT_EQ(pressed(1, 1) + pressed(size.width - 1, size.height - 1), inside + inside);
  EXPECT_EQ(pressed(0, 1) + pressed(size.width, 5), outside + outside);
  EXPECT_EQ(pressed(1, 0) + pressed(5, size.height), outside + outside);
  EXPECT_EQ(pressed(5, 5, ui::kMiddleButton) + pressed(5, 5, ui::kRightButton), "");
  awaitCommandLine();
  ui::focus(button(0, 2));
  ui::typeText(" ");
  awaitJournal("b3;");
  awaitCommandLine();
  // An empty definition becomes what it stands for, for good. Intended.
  document().addButton(group(0), {"Help", ""});
  ui::click(button(0, 3).widget());
  awaitJournal("status Execute Command: ;??;status ;");
  EXPECT_EQ(group(0).buttons.back().definition, "??");
  awaitCommandLine();
  // A press lets go when its release is lost and when its button goes.
  const auto press = [&] {
    ui::moveTo(button(0, 0).widget(), 5, 5);
    ui::pressButton();
    awaitJournal("status Execute Command: b1;");
  };
  press();
  releasePointer(button(0, 0));
  ui::moveTo(theTextPane->widget(), 5, 5);
  ui::releaseButton();
  awaitJournal("status ;");
  press();
  document().removeGroup(group(0));
  ui::releaseButton();
  EXPECT_EQ(frame->journal, "status ;");
}

TEST_F(ButtonPanes, ScrollAsFarAsThereIsSomething) {
  zScrollPos& down = *bar(0).scrollPos();
  const auto canvasTop = [] { return set().sizer()->pos().y; };
  addGroup("First", 90);
  const int total = pane(0).height() + 2;
  const int visible = set().parent()->sizer()->size().height;
  EXPECT_TRUE(bar(0).isEnabled() && !bar(1).isEnabled());
  EXPECT_EQ(down.range().maximum, total - visible + 2);
  ui::focus(*ui::childOf<zCheckBox>(pane(0)));
  ui::pressKey(XK_Next);
  EXPECT_EQ(canvasTop(), -std::min(down.page(), total - down.page()));
  ui::pressKey(XK_Prior);
  EXPECT_EQ(canvasTop(), 0);
  // The wheel over a button, which a line step of ten pixels three times a notch follows.
  ui::click(button(0, 0).widget(), ui::kWheelDown);
  EXPECT_EQ(canvasTop(), -30);
  ui::click(set().parent()->widget(), 5, visible - 5, ui::kWheelDown);
  EXPECT_EQ(canvasTop(), -60);
  awaitCommandLine();
  scroll(0, down.range().maximum);
  EXPECT_EQ(canvasTop(), -(total - down.page()));
  // What is folded away takes the position along.
  addGroup("Second", 60);
  scroll(0, down.range().maximum);
  document().setExpanded(group(1), false);
  EXPECT_EQ(canvasTop(), -(total + pane(1).height() + 2 - down.page()));
  document().setExpanded(group(0), false);
  EXPECT_FALSE(bar(0).isEnabled());
  EXPECT_EQ(canvasTop(), 2);
}

TEST_F(ButtonPanes, KeepTheButtonOfAWideGroupInSightAndALongNameWholeBesideIt) {
  addGroup("Narrow", 1);
  document().addButton(group(0), {std::string(60, 'W'), "w"});
  EXPECT_TRUE(bar(1).isEnabled() && !bar(0).isEnabled());
  EXPECT_EQ(bar(1).scrollPos()->page(), zDialogUnit(142, 0).width() - 6);
  const int largest = std::min(pane(0).width() - set().metrics().minGroupWidth,
                               bar(1).scrollPos()->range().maximum);
  const auto rightEdge = [](const zWindow& window) {
    const auto area = ui::areaOf(window.widget());
    return area.x + area.width;
  };
  const ui::ScreenArea across = ui::areaOf(bar(1).widget());
  ui::click(bar(1).widget(), across.width - 5, across.height / 2);  // its right arrow
  EXPECT_EQ(set().sizer()->pos().x, -10);
  awaitCommandLine();
  for (const int position : {0, 50, pane(0).width()}) {
    scroll(1, position);
    EXPECT_EQ(set().sizer()->pos().x, -std::min(position, largest));
    const int gap = rightEdge(*set().parent()) - rightEdge(*ui::childOf<zPushButton>(pane(0)));
    EXPECT_TRUE(gap >= 0 && gap <= 30) << position;
  }
  document().renameGroup(group(0), std::string(40, 'N'));
  document().setExpanded(group(0), false);
  EXPECT_EQ(rightEdge(*ui::childOf<zCheckBox>(pane(0))),
            ui::areaOf(ui::childOf<zPushButton>(pane(0))->widget()).x);
}

TEST_F(ButtonPanes, ReachTheLastButtonOfMoreThanAWindowCanHold) {
  addGroup("First", 9000);
  EXPECT_EQ(pane(0).commands()[8999].window, nullptr) << "made before it can be seen";
  for (const int index : {8999, 4500, 0}) {
    scroll(0, pane(0).height() * index / 9000);
    ui::click(button(0, static_cast<std::size_t>(index)).widget());
    const std::string command = "b" + std::to_string(index + 1) + ";";
    awaitJournal("status Execute Command: " + command + command + "status ;");
  }
}

}  // namespace
