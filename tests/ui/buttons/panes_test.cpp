// The button area on the screen: what it shows of the set, presses, scrolling.

#include "framework/core/message_box.h"
#include "tests/ui/buttons/panes_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum ButtonSetDocument::Reading;

TEST(GroupGeometry, PlacesThreeButtonsARow) {
  const GroupMetrics metrics = GroupMetrics::from({40, 14}, 13, 8, 280, 32);
  EXPECT_EQ(metrics.groupButtonWidth, 50);
  EXPECT_EQ(metrics.headerHeight, 31);
  EXPECT_EQ(metrics.buttonRowHeight, 19);
  EXPECT_EQ(metrics.minGroupWidth, 242);
  const struct {
    int count;
    int height;
    int width;
    zRect last;
  } rows[] = {{0, 36, 242, {}},
              {1, 55, 242, {2, 31, 102, 48}},
              {3, 55, 310, {204, 31, 304, 48}},
              {4, 74, 310, {2, 50, 102, 67}},
              {7, 93, 310, {2, 69, 102, 86}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.count);
    EXPECT_EQ(expandedGroupHeight(metrics, row.count), row.height);
    EXPECT_EQ(expandedGroupWidth(242, 100, row.count), row.width);
    if (row.count > 0) {
      EXPECT_EQ(buttonPlace(metrics, 100, row.count - 1), row.last);
    }
  }
  EXPECT_EQ(widenedText(45), 62) << "floating point, cut off";
  EXPECT_EQ(collapsedGroupWidth(metrics, 100, 120), 242);
  EXPECT_EQ(collapsedGroupWidth(metrics, 300, 320), 370);
  EXPECT_EQ(collapsedGroupWidth(metrics, 300, 200), 353);
}

TEST(GroupGeometry, FindsTheButtonsInABand) {
  const GroupMetrics metrics = GroupMetrics::from({40, 14}, 13, 8, 280, 32);  // rows at 131, 150...
  const struct {
    CanvasBand band;
    ButtonSpan span;
  } rows[] = {{{0, 131}, {0, 0}},    {{0, 132}, {0, 3}},  {{149, 151}, {0, 6}},
              {{150, 169}, {3, 6}},  {{0, 9999}, {0, 8}}, {{188, 9999}, {8, 8}},
              {{187, 9999}, {6, 8}}, {{0, 50}, {0, 0}}};
  for (const auto& row : rows) {
    EXPECT_EQ(buttonsInBand(metrics, 8, 100, row.band), row.span)
        << row.band.top << ".." << row.band.bottom;
  }
}

TEST_F(ButtonPanes, StandBetweenTheirBars) {
  const zDimension all = frame->pane->sizer()->size();
  const zDimension strips = zDialogUnit(16, 8).size();
  const zDimension inside = {all.width - strips.width, all.height - strips.height};
  EXPECT_EQ(bar(0).sizer()->rect(),
            zRect(inside.width, 0, inside.width + strips.width / 2, inside.height));
  EXPECT_EQ(bar(1).sizer()->rect(),
            zRect(0, inside.height, zDialogUnit(144, 0).width(), all.height));
  EXPECT_EQ(childOf<zPanel3d>(*frame->pane)->sizer()->rect(),
            zRect(0, 0, inside.width, inside.height));
  EXPECT_EQ(set().parent()->sizer()->rect(), zRect(2, 2, inside.width - 2, inside.height - 2));
  EXPECT_EQ(ui::look(bar(0).widget()), "bar 0 of 0 to 448 by 448 greyed\n");
  EXPECT_EQ(ui::look(bar(1).widget()), "bar 0 of 0 to 224 by 224 greyed\n");
}

TEST_F(ButtonPanes, TakeTheKeyboardOnlyWithSomethingInThem) {
  const Widget panes[] = {set().widget(), set().parent()->widget(), frame->pane->widget()};
  for (const bool isEmpty : {true, false, true}) {
    for (Widget empty : panes) {
      EXPECT_EQ(ui::resource(empty, "traversalOn"), isEmpty ? 0 : 1) << "keys would be lost there";
    }
    isEmpty ? document().addGroup("Group") : document().removeGroup(group(0));
  }
}

TEST_F(ButtonPanes, ShowTheSetAndFollowEachChange) {
  const TemporaryFolder folder;
  const std::string file = folder.write("new.btn", ":New\na\nb\n");
  addGroup("R&D", 4);
  addGroup("Second", 2, false);
  EXPECT_EQ(seen(), "(x) R&D [Group] [B1] [B2] [B3] [B4] ( ) Second [Group]");
  document().removeButtons(group(0), {"B4", "B3"});
  document().addButton(group(1), {"a&&b&", "x"});
  EXPECT_EQ(seen(), "(x) R&D [Group] [B1] [B2] (x) Second [Group] [B1] [B2] [a&&b&]");
  document().changeButton(group(0), group(0).buttons.front(), {"A much longer label", "x"});
  EXPECT_EQ(seen(),
            "(x) R&D [Group] [A much longer label] [B2] (x) Second [Group] [B1] [B2] [a&&b&]");
  document().removeButtons(group(0), {"A much longer label"});
  document().renameGroup(group(0), "A&B");
  EXPECT_EQ(seen(), "(x) A&B [Group] [B2] (x) Second [Group] [B1] [B2] [a&&b&]");
  document().setExpanded(group(1), false);
  EXPECT_EQ(seen(), "(x) A&B [Group] [B2] ( ) Second [Group] [B1] [B2] [a&&b&]");
  set().expandAll();
  EXPECT_EQ(seen(), "(x) A&B [Group] [B2] (x) Second [Group] [B1] [B2] [a&&b&]");
  set().collapseAll();
  document().addGroup("Third");
  EXPECT_EQ(seen(), "( ) A&B [Group] [B2] ( ) Second [Group] [B1] [B2] [a&&b&] (x) Third [Group]");
  document().removeGroup(group(1));
  EXPECT_EQ(seen(), "( ) A&B [Group] [B2] (x) Third [Group]");
  document().read(file, load);
  EXPECT_EQ(seen(), "(x) New [Group] [a]");
  document().read(NEL_EXAMPLE_BUTTONS, load);
  set().expandAll();
  for (const ButtonPane* shown : set().groups()) {
    EXPECT_EQ(shown->width(), set().metrics().minGroupWidth) << "the example fits";
  }
}

TEST_F(ButtonPanes, GiveUpTheExtraRoomOfANameWithARename) {
  const std::string name = "A name of medium length";
  const zSizer* box = childOf<zCheckBox>(addGroup(name, 0))->sizer();
  const int text = set().textExtent(name).width;
  EXPECT_EQ(box->size(), (zDimension{widenedText(text) + 20, set().metrics().headerHeight - 9}));
  EXPECT_EQ(pane(0).height(), set().metrics().headerHeight + 5) << "with a margin, as read";
  document().renameGroup(group(0), name);
  EXPECT_LT(box->size().width, widenedText(text) + 20) << "intended";
  EXPECT_GT(box->size().width, text + 20) << "the mark has room";
  EXPECT_EQ(box->size().height, set().metrics().headerHeight - 9);
  document().addGroup("New");
  EXPECT_EQ(pane(1).height(), set().metrics().headerHeight) << "a new group has no margin below";
  EXPECT_EQ(set().buttonWidth("a\tb"), set().buttonWidth("a       b"));
}

TEST_F(ButtonPanes, ExecuteACommandOnAReleaseInsideTheButton) {
  addGroup("Group", 3);
  const zDimension size = pane(0).commands()[1].window->sizer()->size();
  const struct {
    int x;
    int y;
    ui::MouseButton mouseButton = ui::kLeftButton;
    bool isExecuted = false;
  } rows[] = {{size.width - 1, size.height - 1, ui::kLeftButton, true},
              {1, 1, ui::kLeftButton, true},
              {0, 1},
              {1, 0},
              {size.width, 5},
              {5, size.height},
              {5, 5, ui::kMiddleButton},
              {5, 5, ui::kRightButton}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.x << "," << row.y << " " << row.mouseButton);
    frame->executed.clear();
    frame->status.clear();
    theTextPane->setFocus();
    ui::waitForFocus(theTextPane->widget());
    ui::moveTo(button(0, 1), 5, 5);
    ui::pressButton(row.mouseButton);
    ui::moveTo(button(0, 1), row.x, row.y);
    ui::releaseButton(row.mouseButton);
    if (row.mouseButton == ui::kLeftButton) {
      ui::waitFor([&] { return frame->status == "Execute Command: b2||"; }, "the status");
      awaitCommandLine();
    }
    EXPECT_THAT(frame->executed, testing::SizeIs(row.isExecuted ? 1 : 0));
    EXPECT_EQ(frame->status.empty(), row.mouseButton != ui::kLeftButton);
  }
  pane(0).commands()[2].window->setFocus();
  ui::waitForFocus(button(0, 2));
  ui::typeText(" ");
  awaitExecuted({"b3"});
  awaitCommandLine();
  // An empty definition becomes what it stands for, for good. Intended.
  document().addButton(group(0), {"Help", ""});
  ui::click(button(0, 3));
  awaitExecuted({"b3", "??"});
  EXPECT_EQ(group(0).buttons.back().definition, "??");
}

TEST_F(ButtonPanes, LetGoOfAPressThatCannotEndAsOne) {
  addGroup("Group", 1);
  const auto press = [&] {
    frame->status.clear();
    ui::moveTo(button(0, 0), 5, 5);
    ui::pressButton();
    ui::waitFor([&] { return frame->status == "Execute Command: b1|"; }, "the press");
  };
  press();
  ui::ModalScript script;
  script.onDialog("Question", [] { ui::releaseButton(); })
      .when([&] { return frame->status == "Execute Command: b1||"; }, "an empty status line",
            [] { ui::pressKey(XK_Return); });
  script.run([&] { return zMessage(frame.get(), "?", "Question", kBoxOk).result; });
  ui::waitForDialog(PanesFrame::kTitle);
  press();
  document().removeGroup(group(0));
  EXPECT_EQ(frame->status, "Execute Command: b1||");
  ui::releaseButton();
  EXPECT_THAT(frame->executed, IsEmpty());
}

TEST_F(ButtonPanes, FoldAGroupByItsCheckBox) {
  addGroup("First", 4);
  addGroup("Second", 1);
  for (const std::string wanted : {"( ) First", "(x) First"}) {
    ui::click(checkBox(0));
    ui::waitFor([&] { return seen().substr(0, wanted.size()) == wanted; }, "the fold");
    EXPECT_EQ(group(0).expanded, wanted[1] == 'x');
    awaitCommandLine();
  }
  EXPECT_FALSE(document().isModified());
}

TEST_F(ButtonPanes, ScrollAsFarAsThereIsSomething) {
  zScrollPos& down = *bar(0).scrollPos();
  const auto canvasTop = [] { return set().sizer()->pos().y; };
  addGroup("First", 90);
  const int total = pane(0).height() + 2;
  const int visible = set().parent()->sizer()->size().height;
  EXPECT_TRUE(bar(0).isEnabled());
  EXPECT_FALSE(bar(1).isEnabled());
  EXPECT_EQ(down.range().maximum, total - visible + 2);
  EXPECT_EQ(canvasTop(), 0);
  childOf<zCheckBox>(pane(0))->setFocus();
  ui::waitForFocus(checkBox(0));
  ui::pressKey(XK_Next);
  EXPECT_EQ(canvasTop(), -std::min(down.page(), total - down.page()));
  ui::pressKey(XK_Prior);
  EXPECT_EQ(canvasTop(), 0);
  // The wheel over a button, which a line step of ten pixels three times a notch follows.
  ui::wheel(button(0, 0), 5, 5, -1);
  EXPECT_EQ(canvasTop(), -30);
  ui::wheel(set().parent()->widget(), 5, visible - 5, -1);
  EXPECT_EQ(canvasTop(), -60);
  awaitCommandLine();
  down.setPosition(down.range().maximum);
  set().scrolled(bar(0));
  EXPECT_EQ(canvasTop(), -(total - down.page()));
  // What is folded away takes the position along.
  document().setExpanded(group(0), false);
  EXPECT_FALSE(bar(0).isEnabled());
  EXPECT_EQ(canvasTop(), 2);
  // What is read, and folding all, goes to the top.
  document().append({std::list<ButtonGroup>(60, {"G", true, {}}), {}});
  for (const auto& goToTop : {std::function<void()>([] { document().append({}); }),
                              std::function<void()>([] { set().collapseAll(); })}) {
    down.setPosition(500);
    set().scrolled(bar(0));
    EXPECT_EQ(canvasTop(), -500);
    goToTop();
    EXPECT_EQ(down.position(), 0);
    EXPECT_EQ(canvasTop(), 0);
  }
}

TEST_F(ButtonPanes, KeepTheButtonOfAWideGroupInSight) {
  addGroup("Narrow", 1);
  document().addButton(group(0), {std::string(60, 'W'), "w"});
  EXPECT_TRUE(bar(1).isEnabled());
  EXPECT_FALSE(bar(0).isEnabled());
  zScrollPos& across = *bar(1).scrollPos();
  EXPECT_EQ(across.page(), zDialogUnit(142, 0).width() - 6);
  const int largest = pane(0).width() - set().metrics().minGroupWidth;
  const auto rightEdge = [](const zWindow& window) {
    const auto area = ui::areaOf(window.widget());
    return area.x + area.width;
  };
  for (const int position : {0, 50, pane(0).width()}) {
    across.setPosition(position);
    set().scrolled(bar(1));
    ui::drain();
    EXPECT_EQ(set().sizer()->pos().x, -std::min({position, largest, across.range().maximum}));
    const int gap = rightEdge(*set().parent()) - rightEdge(*childOf<zPushButton>(pane(0)));
    EXPECT_THAT(gap, testing::AllOf(testing::Ge(0), testing::Le(30))) << position;
  }
}

TEST_F(ButtonPanes, ReachTheLastButtonOfAnyNumber) {
  constexpr int kButtons = 9000;
  addGroup("First", kButtons);
  addGroup("Second", 2);
  EXPECT_GT(pane(0).height(), 40000) << "more than a window can have";
  EXPECT_EQ(pane(0).commands()[kButtons - 1].window, nullptr) << "made before it can be seen";
  const auto scrollTo = [&](int position) {
    bar(0).scrollPos()->setPosition(position);
    set().scrolled(bar(0));
    ui::drain();
  };
  scrollTo(pane(0).height());
  ui::click(button(1, 1));
  ui::click(button(0, kButtons - 1));
  scrollTo(pane(0).height() / 2);
  ui::click(button(0, kButtons / 2));
  scrollTo(0);
  ui::click(button(0, 0));
  awaitExecuted({"b2", "b9000", "b4501", "b1"});
}

}  // namespace
