// The button area on the screen: what it shows of the set, presses, scrolling.

#include "framework/core/message_box.h"
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
  EXPECT_EQ(placeOf(*frame->pane) + placeOf(bar(0)) + placeOf(bar(1)),
            "0,0 260x469; 234,0 13x454; 0,454 234x15; ");
  EXPECT_EQ(placeOf(childOf<zPanel3d>(*frame->pane)) + placeOf(*set().parent()),
            "0,0 234x454; 2,2 230x450; ");
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
  const auto takesKeys = [&] {
    return ui::resource(set().widget(), "traversalOn") +
           ui::resource(set().parent()->widget(), "traversalOn") +
           ui::resource(frame->pane->widget(), "traversalOn");
  };
  EXPECT_EQ(takesKeys(), 0);
  addGroup("R&D", 4);
  EXPECT_EQ(takesKeys(), 3);
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
    ui::click(childOf<zCheckBox>(pane(1)).widget());
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
  // Intended: a rename gives up the extra room, but not that of the mark.
  const zDimension text = set().textExtent(group(0).name);
  const zSizer& box = *childOf<zCheckBox>(pane(0)).sizer();
  EXPECT_EQ(box.size(), (zDimension{widenedText(text.width) + 20, pane(0).menuPlace().y - 7}));
  document().renameGroup(group(0), group(0).name);
  EXPECT_EQ(box.size(), (zDimension{text.width + text.height + 16, pane(0).menuPlace().y - 7}));
  EXPECT_EQ(set().buttonWidth("i"), set().textExtent("i").width + 4) << "its shadows count";
  EXPECT_EQ(set().buttonWidth("a\tb"), set().buttonWidth("a       b"));
  document().removeGroup(group(0));
  EXPECT_EQ(takesKeys(), 0);
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
  theTextPane->setFocus();
  ui::waitForFocus(theTextPane->widget());
  EXPECT_EQ(pressed(1, 1) + pressed(size.width - 1, size.height - 1), inside + inside);
  EXPECT_EQ(pressed(0, 1) + pressed(size.width, 5), outside + outside);
  EXPECT_EQ(pressed(1, 0) + pressed(5, size.height), outside + outside);
  EXPECT_EQ(pressed(5, 5, ui::kMiddleButton) + pressed(5, 5, ui::kRightButton), "");
  awaitCommandLine();
  button(0, 2).setFocus();
  ui::waitForFocus(button(0, 2).widget());
  ui::typeText(" ");
  awaitJournal("b3;");
  awaitCommandLine();
  // An empty definition becomes what it stands for, for good. Intended.
  document().addButton(group(0), {"Help", ""});
  ui::click(button(0, 3).widget());
  awaitJournal("status Execute Command: ;??;status ;");
  EXPECT_EQ(group(0).buttons.back().definition, "??");
}

TEST_F(ButtonPanes, LetGoOfAPressThatCannotEndAsOne) {
  addGroup("Group", 1);
  const auto press = [&] {
    ui::moveTo(button(0, 0).widget(), 5, 5);
    ui::pressButton();
    awaitJournal("status Execute Command: b1;");
  };
  press();
  ui::ModalScript script;
  script.onDialog("Question", [] { ui::releaseButton(); })
      .when([&] { return frame->journal == "status ;"; }, "an empty status line",
            [] { ui::pressKey(XK_Return); });
  script.run([&] { return zMessage(frame.get(), "?", "Question", kBoxOk).result; });
  ui::waitForDialog(PanesFrame::kTitle);
  frame->journal.clear();
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
  auto& checkBox = childOf<zCheckBox>(pane(0));
  checkBox.setFocus();
  ui::waitForFocus(checkBox.widget());
  ui::pressKey(XK_Next);
  EXPECT_EQ(canvasTop(), -std::min(down.page(), total - down.page()));
  ui::pressKey(XK_Prior);
  EXPECT_EQ(canvasTop(), 0);
  // The wheel over a button, which a line step of ten pixels three times a notch follows.
  ui::wheel(button(0, 0).widget(), 5, 5, -1);
  EXPECT_EQ(canvasTop(), -30);
  ui::wheel(set().parent()->widget(), 5, visible - 5, -1);
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
  // What is read, and folding all, goes to the top.
  document().append({std::list<ButtonGroup>(60, {"G", true, {}}), {}});
  for (const bool isRead : {true, false}) {
    scroll(0, 500);
    EXPECT_EQ(canvasTop(), -500);
    isRead ? document().append({}) : set().collapseAll();
    EXPECT_EQ(down.position() + canvasTop(), 0);
  }
}

TEST_F(ButtonPanes, KeepTheButtonOfAWideGroupInSight) {
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
  for (const int position : {0, 50, pane(0).width()}) {
    scroll(1, position);
    EXPECT_EQ(set().sizer()->pos().x, -std::min(position, largest));
    const int gap = rightEdge(*set().parent()) - rightEdge(childOf<zPushButton>(pane(0)));
    EXPECT_THAT(gap, testing::AllOf(testing::Ge(0), testing::Le(30))) << position;
  }
}

TEST_F(ButtonPanes, ReachTheLastButtonOfAnyNumber) {
  addGroup("First", 9000);
  addGroup("Second", 2);
  EXPECT_GT(pane(0).height(), 40000) << "more than a window can have";
  EXPECT_EQ(pane(0).commands()[8999].window, nullptr) << "made before it can be seen";
  const auto press = [&](int position, std::size_t ofGroup, std::size_t index) {
    scroll(0, position);
    ui::click(button(ofGroup, index).widget());
  };
  press(pane(0).height(), 1, 1);
  press(pane(0).height(), 0, 8999);
  press(pane(0).height() / 2, 0, 4500);
  press(0, 0, 0);
  EXPECT_EQ(frame->journal,
            "status Execute Command: b2;b2;status ;status Execute Command: b9000;b9000;status ;"
            "status Execute Command: b4501;b4501;status ;status Execute Command: b1;b1;status ;");
}

}  // namespace
