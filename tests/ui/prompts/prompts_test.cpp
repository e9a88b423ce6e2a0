#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "framework/controls/button.h"
#include "framework/controls/combo_box.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/draw/screen.h"
#include "link/wire.h"
#include "prompts/find_dlg.h"
#include "prompts/pop_up_list_dlgs.h"
#include "prompts/pop_up_value_dlgs.h"
#include "tests/support/deadline.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

using ::testing::ElementsAre;

/// A main window for the prompts, and what a user does to them.
class Prompt : public testing::Test {
 protected:
  static constexpr const char* kTitle = "Korvane Select";

  Prompt() {
    frame->show();
    ui::waitForDialog("Parent");
  }
  ~Prompt() override {
    frame.reset();
    ui::waitForNoDialog("Parent");
  }

  /// Runs `dialog`, in which the user does `actions`; the last of them must end it.
  static void run(zDialogFrame& dialog, const ui::ModalScript::Action& actions) {
    ui::ModalScript script;
    script.onDialog(kTitle, actions);
    script.run([&] { return dialog.run(0); });
    ui::waitForNoDialog(kTitle);
  }
  static void run(zDialogFrame& dialog, const std::vector<ui::KeySymbol>& keys) {
    run(dialog,
        [&] { std::for_each(keys.begin(), keys.end(), [](auto key) { ui::pressKey(key); }); });
  }

  /// Number `index` of the dialog's controls of class T; null when there are not so many.
  template <class T>
  static T* find(zWindow& dialog, int index = 0) {
    zWindowDlist::Iter walk(dialog.children());
    while (zWindow* child = walk.next()) {
      if (T* control = windowCast<T>(child); control != nullptr && index-- == 0) {
        return control;
      }
    }
    return nullptr;
  }

  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, new zSizer(200, 150, 500, 400), 0xCF0000, "Parent");
};

TEST_F(Prompt, ForATextAnswersWhatWasTypedAndTakesAnEmptyOne) {
  for (const char* typed : {"some text", ""}) {
    UIPopUpStringDlg dialog(frame.get(), "Name:");
    run(dialog, [&] { ui::typeText(std::string(typed) + "\n"); });
    EXPECT_EQ(dialog.status, 1);
    EXPECT_EQ(dialog.answer(), typed);
  }
  UIPopUpStringDlg dialog(frame.get(), "Name:");
  run(dialog, [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); });
  EXPECT_EQ(dialog.status, 0);
}

TEST_F(Prompt, ForATextTakesNoMoreThanFitsAFrame) {
  UIPopUpStringDlg dialog(frame.get(), "Name:");
  run(dialog, [&] {
    find<zEditLine>(dialog)->setText(std::string(kMaxSentText - 1, 'a').c_str());
    ui::typeText("bc\n");
  });
  EXPECT_EQ(dialog.answer().str().size(), kMaxSentText);
}

TEST_F(Prompt, ForANumberStartsWithZeroWhichTypingReplaces) {
  const std::map<std::string, std::string> rows = {
      {"", "0"}, {"17", "17"}, {"-4x2", "-42"}, {"007", "7"}, {"-", "0"}};
  for (const auto& row : rows) {
    UIPopUpIntegerDlg dialog(frame.get(), "Number:");
    run(dialog, [&] { ui::typeText(row.first + "\n"); });
    EXPECT_EQ(dialog.accepted, 1);
    EXPECT_EQ(dialog.answer(), row.second.c_str()) << row.first;
  }
  UIPopUpIntegerDlg dialog(frame.get(), "Number:");
  run(dialog, {XK_Escape});
  EXPECT_EQ(dialog.accepted, 0);
}

// That the dialog stays open without a word, with the number reset to 0, is intended.
TEST_F(Prompt, ForANumberWithinLimitsStaysOpenWithZeroOnAnyOther) {
  UIPopUpIntegerLimitDlg dialog(frame.get(), "Number:", 2, 5);
  EXPECT_EQ(find<zCheckBox>(dialog), nullptr);
  run(dialog, [&] {
    for (const char* outside : {"", "6", "1", "-3", "9999999999"}) {
      ui::typeText(std::string(outside) + "\n");
      EXPECT_TRUE(dialog.isRunning()) << outside;
      EXPECT_EQ(dialog.answer(), "0");
    }
    ui::typeText("5\n");
  });
  EXPECT_EQ(dialog.accepted, 1);
  EXPECT_EQ(dialog.answer(), "5");
}

// The negative limit only offers all: it is no legal number. The number is tested also when all is
// chosen. Both intended.
TEST_F(Prompt, ForANumberOffersAllIfTheLowLimitIsNegative) {
  UIPopUpIntegerLimitDlg dialog(frame.get(), "Number:", -1, 5);
  run(dialog, [&] {
    ui::typeText("-1\n");
    EXPECT_TRUE(dialog.isRunning());
    ui::pressKey(XK_Tab);
    ui::typeText(" ");
    EXPECT_EQ(dialog.answer(), "-1");
    ui::pressKey(XK_Tab, ui::kShift);
    ui::typeText("9\n");
    EXPECT_TRUE(dialog.isRunning());
    ui::pressKey(XK_Return);
  });
  EXPECT_EQ(dialog.accepted, 1);
  EXPECT_EQ(dialog.answer(), "-1");
}

TEST_F(Prompt, GrowsByTwoUnitsForEachLineOfItsText) {
  const zRCFont font(12);
  const int line = 2 * zDialogUnit(4, 4, *font.font()).height();
  const int rows = 9 * line + 2;  // gaps, field and buttons
  for (const auto& [text, lines] :
       std::map<const char*, int>{{"", 1}, {"1\n", 1}, {"1\n2 & 3", 2}}) {
    UIPopUpStringDlg dialog(frame.get(), text);
    EXPECT_EQ(dialog.sizer()->size().height, rows + lines * line) << text;
    EXPECT_NE(find<zStaticText>(dialog), nullptr);
  }
}

TEST_F(Prompt, StaysOnTheScreenAndShowsEveryWordWhateverItsText) {
  const std::string tall = std::string(200, '\n') + "end";
  const std::string wide(1000, 'x');
  for (const std::string& text : {tall, wide}) {
    UIPopUpIntegerDlg dialog(frame.get(), text.c_str());
    zRect outer;
    run(dialog, [&] {
      dialog.getExterior(outer);
      ui::typeText("3\n");
    });
    EXPECT_GE(outer.top, 0);
    EXPECT_LE(outer.bottom, theScreen().screenHeight);
    EXPECT_LE(outer.right, theScreen().screenWidth);
    EXPECT_EQ(dialog.answer(), "3");
    EXPECT_EQ(find<zEditBox>(dialog)->text(), text.c_str());
  }
}

PromptItems numbered(int count) {
  PromptItems items;
  for (int i = 0; i < count; ++i) {
    items.emplace_back("item " + std::to_string(count - i));
  }
  return items;
}

TEST_F(Prompt, ForAnItemShowsTheFirstAndAnswersTheOneChosen) {
  struct Row {
    PromptItems items;
    std::vector<ui::KeySymbol> keys;
    const char* answer;
    int accepted;
  };
  const PromptItems items = {"b", "c", "a"};
  for (const Row& row : {Row{items, {XK_Return}, "a", 1},
                         {items, {XK_Down, XK_Tab, XK_space}, "b", 1},
                         {items, {XK_Down, XK_Escape}, "b", 0},
                         {items, {XK_End, XK_Return}, "c", 1},
                         {items, {XK_End, XK_Home, XK_Return}, "a", 1},
                         {{"two\nlines\n"}, {XK_Return}, "two\nlines\n", 1},
                         {{}, {XK_Return}, "", 1}}) {
    UIPopUpListDlg dialog(frame.get(), "Timer:", row.items, true);
    run(dialog, row.keys);
    EXPECT_EQ(dialog.accepted, row.accepted);
    EXPECT_EQ(dialog.answer(), row.answer);
  }
}

TEST_F(Prompt, ForAnItemIsFilledByMessagesBeforeAndWhileItRuns) {
  UIPopUpListDlg dialog(frame.get(), "Timer:", {"d", "c"}, true);
  dialog.addItems({"b", "e"});
  EXPECT_EQ(find<zListBox>(dialog)->count(), 4);
  EXPECT_EQ(ui::windowWithTitle(kTitle), 0U);
  run(dialog, [&] {
    EXPECT_EQ(dialog.answer(), "b");
    ui::pressKey(XK_Down);
    dialog.addItems({"a"});
    EXPECT_EQ(dialog.answer(), "c");
    // A double click on the second row is OK.
    const int y = dialog.fontObject()->measure("X", 1).height * 2;
    ui::click(find<zListBox>(dialog)->widget(), y, y);
    ui::click(find<zListBox>(dialog)->widget(), y, y);
  });
  EXPECT_EQ(dialog.accepted, 1);
  EXPECT_EQ(dialog.answer(), "b");
}

TEST_F(Prompt, ForAnItemWithAnOpenFieldAlsoTakesWhatIsTyped) {
  UIPopUpListDlg dialog(frame.get(), "Timer:", {"a", "b"}, false);
  run(dialog, [&] {
    ui::pressKey(XK_Tab);
    ui::typeText("typed");
    EXPECT_EQ(dialog.answer(), "typed");
    // Back in the list its last choice is shown again.
    ui::pressKey(XK_Tab, ui::kShift);
    EXPECT_EQ(dialog.answer(), "a");
    ui::pressKey(XK_Return);
  });
  EXPECT_EQ(dialog.accepted, 1);
}

TEST_F(Prompt, ForItemsAnswersTheChosenOnesInTheirOrder) {
  UIPopUpBitDlg dialog(frame.get(), "Traces:", {"c", "a", "b"});
  run(dialog, [] {
    ui::typeText(" ");
    ui::pressKey(XK_Down, ui::kShift);
    ui::pressKey(XK_Return);
  });
  EXPECT_EQ(dialog.accepted, 1);
  EXPECT_THAT(promptItems(dialog.answer()), ElementsAre("c", "a"));

  UIPopUpBitDlg all(frame.get(), "Traces:", {"c", "a", "b"});
  run(all, [] {
    ui::pressKey(XK_Home);
    ui::pressKey(XK_End, ui::kShift);
    ui::pressKey(XK_Return);
  });
  EXPECT_THAT(promptItems(all.answer()), ElementsAre("c", "a", "b"));

  UIPopUpBitDlg nothing(frame.get(), "Traces:", {"c", "a"});
  run(nothing, {XK_Return});
  EXPECT_EQ(nothing.accepted, 1);
  EXPECT_EQ(nothing.answer(), nullptr);
  run(nothing, {XK_Escape});
  EXPECT_EQ(nothing.accepted, 0);
}

TEST_F(Prompt, WithTenThousandItemsIsReadyAtOnceAndChoosesTheFirst) {
  const Deadline deadline(Milliseconds(30000));  // on a busy machine with sanitizers
  UIPopUpListDlg dialog(frame.get(), "Timer:", numbered(10000), true);
  EXPECT_FALSE(deadline.hasPassed());
  EXPECT_EQ(find<zListBox>(dialog)->count(), 10000);
  EXPECT_EQ(dialog.answer(), "item 1");
}

// The rows below the definitions stand in the lower part of their text, and later definitions move
// nothing. Intended.
TEST_F(Prompt, ForSignalParametersShowsTheDefinitionsInTheirPlace) {
  UIPopUpSigParDlg dialog(frame.get(), "Values:", {"a", "b"});
  const zStaticText& definitions = *find<zStaticText>(dialog, 1);
  const zEditLine& field = *find<zEditLine>(dialog);
  EXPECT_EQ(definitions.text(), "  a\n  b\n");
  const zRect place = definitions.sizer()->rect();
  const zRect fieldPlace = field.sizer()->rect();
  EXPECT_EQ(fieldPlace.top, place.top + place.height() / 6 * 5);
  EXPECT_EQ(dialog.addDefinitions({"c"}, 0), 2);
  EXPECT_EQ(definitions.text(), "  a\n  b\n  c\n");
  EXPECT_EQ(definitions.sizer()->rect(), place);
  run(dialog, [&] {
    // The field is in front.
    ui::click(field.widget(), 5, 2);
    ui::typeText("1, 2\n");
  });
  EXPECT_EQ(field.sizer()->rect(), fieldPlace);
  EXPECT_EQ(dialog.answer(), "1, 2");
}

TEST_F(Prompt, ForSignalParametersScrollsDefinitionsThatItCannotShow) {
  UIPopUpSigParDlg dialog(frame.get(), "Values:", numbered(100));
  run(dialog, {XK_Escape});
  zRect outer;
  dialog.getExterior(outer);
  EXPECT_LE(outer.bottom, theScreen().screenHeight);
  EXPECT_EQ(find<zEditBox>(dialog)->text(), find<zStaticText>(dialog, 1)->text());
  EXPECT_EQ(dialog.accepted, 0);
}

class Find : public Prompt {
 protected:
  std::unique_ptr<FindDlg> make(const FindSettings& settings, const PromptItems& processes = {}) {
    return std::make_unique<FindDlg>(frame.get(), settings, kFindProcesses, processes);
  }
  /// What the four fields show: text, process, signal, timer.
  static std::vector<std::string> fields(zWindow& dialog) {
    constexpr int kFields = 4;
    std::vector<std::string> texts;
    texts.reserve(kFields);
    for (int i = 0; i < kFields; ++i) {
      texts.push_back(find<zComboBoxBase>(dialog, i)->text().str());
    }
    return texts;
  }
};

TEST_F(Find, MovesItsFieldsCloserWhereTheScreenIsLow) {
  const int plain = make({})->sizer()->size().height;
  constexpr int kDecoration = 48;
  const int low = plain + kDecoration - 50;
  const int whole = std::exchange(theScreen().screenHeight, low);
  EXPECT_LE(make({})->sizer()->size().height, low - kDecoration);
  theScreen().screenHeight = whole;
}

TEST_F(Find, StartsWithTheNewestSearchAndReturnsTextAndOptions) {
  const auto dialog = make({{"newest", "older"}, true, true, false});
  // Over the greyed lists to the options, and on to OK.
  run(*dialog, {XK_Down, XK_Tab, XK_Tab, XK_space, XK_Tab, XK_space});
  EXPECT_EQ(dialog->accepted, 1);
  EXPECT_EQ(dialog->searchString, "older");
  EXPECT_EQ(dialog->useRegexp, 1);
  EXPECT_EQ(dialog->matchCase, 1);

  const auto lines = make({{"two\nlines"}});
  run(*lines, {XK_Return});
  EXPECT_EQ(lines->searchString, "two\nlines");

  const auto typed = make({{"newest"}});
  run(*typed, [] { ui::typeText("other\n"); });
  EXPECT_EQ(typed->searchString, "other");
}

TEST_F(Find, AChoiceInOneFieldClearsTheOthersButFillingAndTypingDoNot) {
  const auto dialog = make({{"text"}}, {"p1", "p2"});
  dialog->addItems(kFindSignals, {"s2", "s1"});
  EXPECT_THAT(fields(*dialog), ElementsAre("text", "p1", "s2", "No Timer available"));
  run(*dialog, [&] {
    ui::typeText("typed");
    EXPECT_THAT(fields(*dialog), ElementsAre("typed", "p1", "s2", "No Timer available"));
    ui::pressKey(XK_Tab);
    ui::pressKey(XK_Down);
    EXPECT_THAT(fields(*dialog), ElementsAre("", "p2", "", "No Timer available"));
    ui::pressKey(XK_Tab);
    ui::pressKey(XK_Down);
    EXPECT_THAT(fields(*dialog), ElementsAre("", "", "s1", "No Timer available"));
    ui::pressKey(XK_Tab, ui::kShift);
    ui::pressKey(XK_Tab, ui::kShift);
    ui::pressKey(XK_Down);
    EXPECT_THAT(fields(*dialog), ElementsAre("text", "", "", "No Timer available"));
    ui::pressKey(XK_Tab);
    ui::pressKey(XK_Down);
    ui::pressKey(XK_Return);
  });
  EXPECT_EQ(dialog->searchString, "p1");
}

// With nothing to search for, OK is Cancel, and a placeholder is nothing. Intended.
TEST_F(Find, AnswersTheFirstListWithAChoiceAndIsCancelledWithoutAny) {
  const auto empty = make({});
  run(*empty, {XK_Return});
  EXPECT_EQ(empty->accepted, 0);
  EXPECT_EQ(empty->searchString, "");

  // Nor are regular expressions used where they are not offered.
  const auto timers = make({{}, false, true, true});
  timers->addItems(kFindSignals, {});
  timers->addItems(kFindTimers, {"t2", "t1"});
  run(*timers, {XK_Escape});
  EXPECT_EQ(timers->accepted, 0);
  run(*timers, {XK_Return});
  EXPECT_EQ(timers->searchString, "t2");
  EXPECT_EQ(timers->useRegexp, 0);
  EXPECT_EQ(timers->matchCase, 1);
}

}  // namespace
