#include <algorithm>
#include <utility>

#include "framework/core/application.h"
#include "framework/core/message_box.h"
#include "framework/menus/menu.h"
#include "resources/resource_ids.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/buttons/panes_fixture.h"
#include "tests/ui/controls/label_view.h"

#include <X11/keysym.h>
#include <Xm/XmAll.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(ButtonPanes, ExecuteACommandOnAReleaseInsideTheButton) {
  addGroup("Group", 3);
  DynButton& button = *group(0).commands()[1].window;
  const zDimension size = button.sizer()->size();
  const struct {
    int x;
    int y;
    unsigned mouseButton;
    bool isExecuted;
  } rows[] = {{size.width - 1, size.height - 1, 1, true},
              {1, 1, 1, true},
              {0, 1, 1, false},
              {1, 0, 1, false},
              {size.width, 5, 1, false},
              {5, 5, 2, false},
              {5, 5, 3, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.x << "," << row.y << " " << row.mouseButton);
    frame->executed.clear();
    frame->status.clear();
    const auto mouseButton = static_cast<ui::MouseButton>(row.mouseButton);
    ui::moveTo(button.widget(), 5, 5);
    ui::pressButton(mouseButton);
    ui::moveTo(button.widget(), row.x, row.y);
    ui::releaseButton(mouseButton);
    if (row.isExecuted) {
      EXPECT_THAT(frame->executed, ElementsAre("b2"));
    } else {
      EXPECT_THAT(frame->executed, IsEmpty());
    }
    if (row.mouseButton == 1) {
      EXPECT_THAT(frame->status, ElementsAre("Execute Command: b2", ""));
    } else {
      EXPECT_THAT(frame->status, IsEmpty());
    }
  }
}

TEST_F(ButtonPanes, LetGoOfAPressWhoseReleaseADialogGot) {
  addGroup("Group", 1);
  ui::moveTo(group(0).commands()[0].window->widget(), 5, 5);
  ui::pressButton();
  ui::ModalScript script;
  script.onDialog("Question", [] { ui::releaseButton(); })
      .when([&] { return frame->status.back().empty(); }, "an empty status line",
            [] { ui::pressKey(XK_Return); });
  script.run([&] { return zMessage(frame.get(), "?", "Question", kBoxOk).result; });
  EXPECT_THAT(frame->executed, IsEmpty());
}

TEST_F(ButtonPanes, ShowLabelsAsTheyAre) {
  ButtonPane& shown = addGroup("R&D", 1);
  EXPECT_EQ(viewOf(childOf<zCheckBox>(shown)->widget()).text, "R&D");
  document().changeButton(shown.group(), shown.group().buttons.front(), {"a&&b&", "x"});
  EXPECT_EQ(viewOf(shown.commands()[0].window->widget()).text, "a&&b&");
  EXPECT_EQ(set().buttonWidth("a\tb"), set().buttonWidth("a       b"));
}

TEST_F(ButtonPanes, MakeAnEmptyDefinitionTheRequestForHelpForGood) {
  document().append({{{"Group", true, {{"Help", ""}}}}, {}});
  ui::drain();
  ButtonPane& added = group(0);
  ui::click(added.commands()[0].window->widget());
  EXPECT_THAT(frame->executed, ElementsAre("??"));
  EXPECT_EQ(added.group().buttons.front().definition, "??") << "intended";
}

TEST_F(ButtonPanes, FoldAGroupByItsCheckBox) {
  addGroup("First", 4);
  addGroup("Second", 1);
  const GroupMetrics& metrics = set().metrics();
  EXPECT_EQ(group(1).yPosition, 1 + expandedGroupHeight(metrics, 4) + 2);
  ui::click(childOf<zCheckBox>(group(0))->widget());
  EXPECT_FALSE(group(0).group().expanded);
  EXPECT_EQ(group(1).yPosition, 1 + metrics.headerHeight + 2);
  EXPECT_EQ(group(1).sizer()->pos().y, group(1).yPosition);
  EXPECT_FALSE(document().isModified());
  set().expandAll();
  EXPECT_TRUE(group(0).group().expanded);
  EXPECT_TRUE(childOf<zCheckBox>(group(0))->checked());
  set().collapseAll();
  EXPECT_FALSE(group(1).group().expanded);
}

TEST_F(ButtonPanes, EnableABarOnlyWhenThereIsSomethingToScroll) {
  zScrollPos& down = *bar(0).scrollPos();
  EXPECT_FALSE(bar(0).isEnabled());
  EXPECT_FALSE(bar(1).isEnabled());
  addGroup("First", 90);
  const int total = group(0).height() + 2;
  EXPECT_TRUE(bar(0).isEnabled());
  EXPECT_FALSE(bar(1).isEnabled());
  EXPECT_EQ(down.range().maximum, total - set().parent()->sizer()->size().height + 2);
  childOf<zCheckBox>(group(0))->setFocus();
  ui::waitForFocus(childOf<zCheckBox>(group(0))->widget());
  ui::pressKey(XK_Next);
  EXPECT_EQ(set().sizer()->pos().y, -std::min(down.page(), total - down.page()));
  ui::pressKey(XK_Prior);
  EXPECT_EQ(set().sizer()->pos().y, 0);
  // The wheel over a button, which a line step of ten pixels three times a notch follows.
  ui::wheel(group(0).commands()[0].window->widget(), 5, 5, -1);
  EXPECT_EQ(set().sizer()->pos().y, -30);
  down.setPosition(down.range().maximum);
  set().scrolled(bar(0));
  EXPECT_EQ(set().sizer()->pos().y, -(total - down.page()));
  // What is folded away takes the position along.
  document().setExpanded(group(0).group(), false);
  EXPECT_FALSE(bar(0).isEnabled());
  EXPECT_EQ(set().sizer()->pos().y, 2);
  ButtonPane& wide = addGroup("Wide", 0);
  document().addButton(wide.group(), {std::string(60, 'W'), "w"});
  EXPECT_TRUE(bar(1).isEnabled());
  EXPECT_EQ(group(0).sizer()->size().width, wide.width()) << "all groups have one width";
  const auto rightEdge = [](const zWindow& window) {
    const ui::ScreenArea area = ui::areaOf(window.widget());
    return area.x + area.width;
  };
  for (const int position : {0, 50, wide.width()}) {
    bar(1).scrollPos()->setPosition(position);
    set().scrolled(bar(1));
    ui::drain();
    const int gap = rightEdge(*set().parent()) - rightEdge(*childOf<zPushButton>(group(0)));
    EXPECT_THAT(gap, testing::AllOf(testing::Ge(0), testing::Le(30))) << position;
  }
}

TEST_F(ButtonPanes, ShowTheExampleInTheirWidth) {
  ASSERT_EQ(document().read(NEL_EXAMPLE_BUTTONS, ButtonSetDocument::Reading::start), true);
  set().expandAll();
  for (const ButtonPane* shown : set().groups()) {
    EXPECT_EQ(shown->width(), set().metrics().minGroupWidth) << shown->group().name;
  }
}

TEST_F(ButtonPanes, ReachTheLastButtonOfAnyNumber) {
  constexpr int kButtons = 9000;
  addGroup("First", kButtons);
  addGroup("Second", 2);
  EXPECT_GT(group(0).height(), 40000) << "more than a window can have";
  EXPECT_EQ(group(0).commands()[kButtons - 1].window, nullptr) << "made before it can be seen";
  bar(0).scrollPos()->setPosition(group(0).height());
  set().scrolled(bar(0));
  ui::drain();
  ui::click(group(1).commands()[1].window->widget());
  ui::click(group(0).commands()[kButtons - 1].window->widget());
  EXPECT_THAT(frame->executed, ElementsAre("b2", "b9000"));
  bar(0).scrollPos()->setPosition(group(0).height() / 2);
  set().scrolled(bar(0));
  ui::drain();
  ui::click(group(0).commands()[kButtons / 2].window->widget());
  bar(0).scrollPos()->setPosition(0);
  set().scrolled(bar(0));
  ui::drain();
  ui::click(group(0).commands()[0].window->widget());
  EXPECT_THAT(frame->executed, ElementsAre("b2", "b9000", "b4501", "b1"));
}

class GroupMenu : public ButtonPanes {
 protected:
  static void replaceBy(const std::string& path) {
    document().read(path, ButtonSetDocument::Reading::start);
  }
  static bool isOpen() {
    const zPopupMenu* menu = zPopupMenu::active();
    return menu != nullptr && menu->widget() != nullptr && ui::isViewable(menu->widget());
  }
  /// Runs the script from the click that opens a group's menu to the end of the menu.
  void runMenuOf(ButtonPane& group, ui::ModalScript& script) {
    bool hasBeenOpen = false;
    const ui::Ticker look(Milliseconds(5), [&] { hasBeenOpen |= isOpen(); });
    script.run([&] {
      ui::click(childOf<zPushButton>(group)->widget());
      // Everything else happens in loops inside this one.
      zApp::instance()->pumpWhile([&] { return !hasBeenOpen; });
      return 0;
    });
  }
  /// Opens a group's menu, presses the key of an item, and types into the dialogs that come, after
  /// `meanwhile`.
  void choose(
      ButtonPane& group, char key, const std::vector<std::pair<std::string, std::string>>& dialogs,
      const std::function<void()>& meanwhile = [] {}) {
    ui::ModalScript script;
    script.when(isOpen, "the menu", [key] { ui::typeText({&key, 1}); });
    for (const auto& [title, keys] : dialogs) {
      script.onDialog(title, [keys = keys, &meanwhile] {
        meanwhile();
        for (const char typed : keys) {
          typed == '\t' ? ui::pressKey(XK_Tab) : ui::typeText({&typed, 1});
        }
      });
    }
    runMenuOf(group, script);
    for (const auto& dialog : dialogs) {
      ui::waitForNoDialog(dialog.first);
    }
    ui::waitForDialog(PanesFrame::kTitle);
    ui::drain();
  }
};

TEST_F(GroupMenu, EditsItsGroup) {
  addGroup("First", 0);
  addGroup("Second", 2, 0);
  choose(group(1), 'a', {{"App Add Button", "New\tnew; x\n"}});
  EXPECT_TRUE(group(1).group().expanded);
  EXPECT_TRUE(document().isModified());
  EXPECT_THAT(frame->explained, Contains(kCommandAddButton)) << "the status line hears of it";
  EXPECT_EQ(frame->explained.back(), 0);
  choose(group(1), 'e', {{"App Edit Button", "\n"}, {"App Edit Button", "Other\n"}});
  EXPECT_THAT(labelsOf(group(1)), ElementsAre("Other", "B2", "New"));
  choose(group(1), 'd', {{"App Delete Button", " \n"}});
  EXPECT_THAT(labelsOf(group(1)), ElementsAre("B2", "New"));
  // There is nothing to edit in a group without buttons.
  choose(group(0), 'e', {{"App Edit Button", "\n"}});
  choose(group(0), 'n', {{"App Rename Group", "Renamed\n"}});
  EXPECT_EQ(group(0).group().name, "Renamed");
  choose(group(0), 'l', {{"App Delete Group", "\n"}});
  ASSERT_EQ(set().groups().size(), 1);
  EXPECT_EQ(group(0).group().name, "Second");
  EXPECT_EQ(group(0).yPosition, 1);
}

TEST_F(GroupMenu, AddsToTheGroupOfThatNameWhenTheSetIsReplaced) {
  const TemporaryFolder folder;
  const std::string same = folder.write("same", ":Other\nx\ny\n:First\nx\ny\n");
  const std::string other = folder.write("other", ":Other\nx\ny\n");
  const std::string third = folder.write("third", ":Third\nx\ny\n");
  addGroup("First", 1);
  choose(group(0), 'a', {{"App Add Button", "New\n"}}, [&] { replaceBy(same); });
  EXPECT_THAT(labelsOf(group(1)), ElementsAre("x", "New"));
  EXPECT_EQ(log(), "");
  choose(group(1), 'a', {{"App Add Button", "New\n"}}, [&] { replaceBy(other); });
  EXPECT_THAT(labelsOf(group(0)), ElementsAre("x"));
  choose(group(0), 'l', {{"App Delete Group", "\n"}}, [&] { replaceBy(third); });
  EXPECT_THAT(labelsOf(group(0)), ElementsAre("x"));
  EXPECT_EQ(log(),
            "Button \"New\" dropped: there is no group \"First\" any more\n"
            "Deletion dropped: there is no group \"Other\" any more\n");
}

TEST_F(GroupMenu, OpensBelowItsButtonAtEveryScrollPosition) {
  addGroup("First", 90);
  addGroup("Second", 90);
  const int inset = zDialogUnit(5, 0).width();
  for (const int position : {0, 450}) {
    bar(0).scrollPos()->setPosition(position);
    set().scrolled(bar(0));
    ui::drain();
    ButtonPane& shown = group(position == 0 ? 0 : 1);
    ui::ModalScript script;
    zPoint place;
    script.when(isOpen, "the menu", [&] {
      place = zPopupMenu::active()->position();
      ui::pressKey(XK_Escape);
    });
    runMenuOf(shown, script);
    EXPECT_EQ(place.x,
              inset + set().sizer()->pos().x + childOf<zPushButton>(shown)->sizer()->pos().x + 6);
    EXPECT_EQ(place.y, inset - position + shown.yPosition + set().metrics().headerHeight - 2);
  }
}

TEST_F(GroupMenu, GivesUpTheExtraRoomOfANameWithARename) {
  const RWCString name = "A name of medium length";
  ButtonPane& renamed = addGroup(name, 0);
  const int text = set().textExtent(name).width;
  const zSizer* box = childOf<zCheckBox>(renamed)->sizer();
  EXPECT_EQ(box->size().width, widenedText(text) + 20);
  EXPECT_EQ(renamed.height(), set().metrics().headerHeight + 5);
  document().renameGroup(renamed.group(), name.str());
  EXPECT_LT(box->size().width, widenedText(text) + 20) << "intended";
  EXPECT_GT(box->size().width, text + 20) << "the mark has room";
}

TEST_F(GroupMenu, CountsGroupsAddedByApplyAsNoModification) {
  EXPECT_FALSE(XmIsTraversable(set().widget())) << "keys would be lost in an empty area";
  ui::ModalScript script;
  script.onDialog("App Add Group", [] { ui::typeText("A"); })
      .onDialog("App Add Group",
                [] {
                  ui::pressKey(XK_Tab);
                  ui::pressKey(XK_Tab);
                  ui::typeText(" ");
                })
      .when([] { return set().groups().size() == 1; }, "the group",
            [] { ui::pressKey(XK_Escape); });
  script.run([] {
    set().addGroup();
    return 0;
  });
  EXPECT_TRUE(XmIsTraversable(childOf<zCheckBox>(group(0))->widget()));
  EXPECT_FALSE(document().isModified()) << "intended";
  EXPECT_EQ(group(0).height(), set().metrics().headerHeight) << "a new group has no margin below";
}

}  // namespace
