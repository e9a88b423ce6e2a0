// The prompts in real modal runs: what is seen of each, what the user does, what comes out.

#include "framework/controls/button.h"
#include "framework/controls/combo_box.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/draw/screen.h"
#include "link/wire.h"
#include "prompts/find_dlg.h"
#include "prompts/pop_up_list_dlgs.h"
#include "prompts/pop_up_value_dlgs.h"
#include "tests/ui/support/ui_test.h"

namespace {

using testing::HasSubstr;

constexpr const char* kTitle = "Korvane Select";
const PromptItems kItems = {"b", "c", "a"};

/// A main window for the prompts, and what a user does to them.
class Prompt : public testing::Test {
 protected:
  Prompt() { ui::bringUp(frame); }

  /// Runs `dialog`, in which the user does `actions`; the last of them must end it. The outcome.
  static int run(zDialogFrame& dialog, const ui::ModalScript::Action& actions) {
    return ui::inDialog(kTitle, actions, [&] { return dialog.run(0); });
  }
  static int run(zDialogFrame& dialog, const char* typed) {
    return run(dialog, [&] { ui::typeText(typed); });
  }

  zAppFrame frame{nullptr, new zSizer(200, 150, 500, 400), 0xCF0000, "Parent"};
};

/// The places of a dialog's controls in the order in which they were made, "x,y widthxheight", and
/// its own size, in units of the prompts' font and with what is left.
std::string places(zWindow& dialog) {
  const zRCFont font(12);
  const zDialogUnit unit(4, 4, *font.font());
  const auto in = [](int pixels, int size) {
    const int rest = pixels % size;
    return std::to_string(pixels / size) + (rest != 0 ? "+" + std::to_string(rest) : "");
  };
  const auto pair = [&](int across, const char* sign, int down) {
    return in(across, unit.width()) + sign + in(down, unit.height());
  };
  std::string all;
  zWindowDlist::Iter walk(dialog.children());
  while (const zWindow* child = walk.next()) {
    const zRect place = child->sizer()->rect();
    all += pair(place.left, ",", place.top) + " " + pair(place.width(), "x", place.height()) + "\n";
  }
  return all + pair(dialog.sizer()->size().width, "x", dialog.sizer()->size().height);
}

TEST_F(Prompt, ShowsItsTextItsFieldAndItsButtonsInTheirPlaces) {
  zWindow* const parent = &frame;
  const auto expectLook = [&](UIPopUpDlgBase&& dialog, const std::string& look,
                              const std::string& where) {
    SCOPED_TRACE(look);
    EXPECT_EQ(ui::windowWithTitle(kTitle), 0U) << "it waits unseen";
    EXPECT_EQ(places(dialog), where);
    const auto check = [&] {
      EXPECT_EQ(ui::look(kTitle), look + "[OK]\n[Cancel]\n");
      ui::pressKey(XK_Escape);
    };
    EXPECT_EQ(run(dialog, check), 0);
    EXPECT_EQ(dialog.accepted, 0);
  };
  expectLook(UIPopUpStringDlg(parent, "Name &\nso:\n"), "Name &\nso:\n<> focus\n",
             "4,2 42x4\n4,8 42x3\n0,13 50x0+2\n8,16+2 12x3\n30,16+2 12x3\n50x22+2");
  expectLook(UIPopUpIntegerLimitDlg(parent, "", -1, 5), "<0> focus\n( ) All\n",
             "4,2 42x2\n4,6 42x3\n4,11 42x3\n0,16 50x0+2\n8,19+2 12x3\n30,19+2 12x3\n50x25+2");
  expectLook(UIPopUpListDlg(parent, "T:", kItems, true), "T:\n|*a\n| b\n| c\n<a> greyed\n",
             "4,2 42x2\n4,6 42x20\n4,28 42x3\n0,33 50x0+2\n8,36+2 12x3\n30,36+2 12x3\n50x42+2");
  expectLook(UIPopUpBitDlg(parent, "T:", kItems), "T:\n| b\n| c\n| a\n",
             "4,2 42x2\n4,6 42x20\n0,28 50x0+2\n8,31+2 12x3\n30,31+2 12x3\n50x37+2");
  // The rows below the definitions stand in the lower part of their text. Intended.
  expectLook(UIPopUpSigParDlg(parent, "T:", kItems), "T:\n  b\n  c\n  a\n\n<> focus\n",
             "4,2 42x2\n4,12 42x3\n0,17 50x0+2\n8,20+2 12x3\n30,20+2 12x3\n4,6 42x8\n50x26+2");
  expectLook(
      FindDlg(parent, {{}, false, true, true}, 0, kItems),
      "Find Text:\n<> focus\n[]\nFind Process:\n<No Process available> greyed\n[] greyed\n"
      "Find Signal:\n<No Signal available> greyed\n[] greyed\n"
      "Find Timer:\n<No Timer available> greyed\n[] greyed\n"
      "Options\n( ) Regular expression greyed\n(x) Match case\n",
      "5,4 40x22\n5,12 40x22\n5,20 40x22\n5,28 40x22\n4,2 42x6\n4,10 42x6\n4,18 42x6\n4,26 42x6\n"
      "4,34 42x8\n0,44 50x0+2\n8,47+2 12x3\n30,47+2 12x3\n50x53+2");
}

TEST_F(Prompt, StaysOnTheScreenAndShowsEveryWordWhateverItsText) {
  for (const std::string& text : {std::string(200, '\n') + "end", std::string(1000, 'x')}) {
    UIPopUpListDlg dialog(&frame, text, kItems, true);
    run(dialog, [&] {
      EXPECT_LE(dialog.sizer()->size().height, theScreen().screenHeight - 40) << "with its frame";
      const Widget box = ui::childOf<zEditBox>(dialog)->widget();
      EXPECT_EQ(ui::textOf(box), text);
      EXPECT_EQ(ui::topLineOf(box) + ui::resource(box, "editable"), 0);
      ui::pressKey(XK_Escape);
    });
  }
  // On a low screen four lines stay of a text and of definitions; Find's rows move together.
  const int whole = std::exchange(theScreen().screenHeight, 200);
  UIPopUpStringDlg five(&frame, "1\n2\n3\n4\n5");
  EXPECT_THAT(places(five), testing::StartsWith("4,2 42x8\n"));
  UIPopUpSigParDlg values(&frame, "Values:", PromptItems(100, "i"));
  EXPECT_THAT(places(values), HasSubstr("\n4,6 42x9\n"));
  theScreen().screenHeight = 440;
  EXPECT_LE(FindDlg(&frame, {}, 0, {}).sizer()->size().height, 440 - 48);
  theScreen().screenHeight = whole;
}

// That the dialog stays open without a word, with the number reset to 0, is intended. So is it that
// a negative limit only offers all and is no legal number, and that the number is tested also when
// all is chosen.
TEST_F(Prompt, ForANumberStartsWithZeroWhichTypingReplacesAndStaysOpenOutsideTheLimits) {
  UIPopUpIntegerDlg any(&frame, "Number:");
  EXPECT_EQ(run(any, "-4x2\n"), 1);
  EXPECT_EQ(any.answer(), "-42");
  const auto answerOf = [this](long low, const char* typed) {
    UIPopUpIntegerLimitDlg dialog(&frame, "Number:", low, 5);
    EXPECT_EQ(run(dialog, typed), 1);
    return dialog.answer().str();
  };
  EXPECT_EQ(answerOf(2, "\n6\n1\n-3\n9999999999\n5\n"), "5");
  EXPECT_EQ(answerOf(2, "1\n2\n"), "2");
  EXPECT_EQ(answerOf(-2, "-2\n9\t \n \n"), "0") << "with all chosen and not chosen again";
  EXPECT_EQ(answerOf(-2, "\t \n"), "-1");
}

TEST_F(Prompt, ForAnItemAnswersTheOneChosenAlsoOfThoseThatCameMeanwhile) {
  for (const PromptItems& items : {PromptItems{}, PromptItems{"two\nlines\n"}}) {
    UIPopUpListDlg dialog(&frame, "Timer:", items, true);
    EXPECT_EQ(run(dialog, "\n"), 1);
    EXPECT_EQ(dialog.answer(), items.empty() ? "" : "two\nlines\n");
  }
  UIPopUpListDlg dialog(&frame, "Timer:", {"d", "c"}, true);
  dialog.addItems({"b", "e"});
  const auto choose = [&] {
    EXPECT_THAT(ui::look(kTitle), HasSubstr("|*b\n| c\n| d\n| e\n<b> greyed\n"));
    ui::pressKey(XK_Down);
    dialog.addItems({"a"});
    ui::typeText("\t");
    ui::pressKey(XK_Tab, ui::kShift);
    EXPECT_THAT(ui::look(kTitle), HasSubstr("| a\n| b\n|*c\n| d\n| e\n<c>"));
    ui::typeText("\n");
  };
  EXPECT_EQ(run(dialog, choose), 1);
  EXPECT_EQ(dialog.answer(), "c");
  EXPECT_EQ(run(dialog, [&] { ui::doubleClickRow(ui::childOf<zListBox>(dialog)->widget(), 0); }),
            1);
}

TEST_F(Prompt, ForItemsOrATextAnswersTheChosenOnesOrWhatFitsAFrame) {
  UIPopUpBitDlg dialog(&frame, "Traces:", {"c", "a", "b"});
  const auto chooseTwo = [] {
    ui::typeText(" ");
    ui::pressKey(XK_Down, ui::kShift);
    ui::typeText("\n");
  };
  EXPECT_EQ(run(dialog, chooseTwo), 1);
  EXPECT_THAT(promptItems(dialog.answer()), testing::ElementsAre("c", "a"));
  EXPECT_EQ(run(dialog, [&] { ui::doubleClickRow(ui::childOf<zMultiList>(dialog)->widget(), 2); }),
            1);
  EXPECT_THAT(promptItems(dialog.answer()), testing::ElementsAre("b"));
  UIPopUpStringDlg text(&frame, "Name:");
  ui::childOf<zEditLine>(text)->setText(std::string(kMaxSentText - 1, 'a').c_str());
  EXPECT_EQ(run(text, "bc\n"), 1);
  EXPECT_EQ(text.answer().str().size(), kMaxSentText);
}

// Later definitions move nothing. Intended.
TEST_F(Prompt, ForSignalParametersTakesFurtherDefinitionsInTheirPlace) {
  UIPopUpSigParDlg dialog(&frame, "Values:", {"a", "b & c"});
  EXPECT_EQ(dialog.addDefinitions({"d"}, 0), 2);
  const auto answer = [&] {
    EXPECT_THAT(ui::look(kTitle), HasSubstr("\n<  a\n  b & c\n  d\n>\n"));
    // The field is in front.
    ui::click(ui::childOf<zEditLine>(dialog)->widget(), 5, 2);
    ui::typeText("1, 2\n");
  };
  EXPECT_EQ(run(dialog, answer), 1);
  EXPECT_EQ(dialog.answer(), "1, 2");
}

TEST_F(Prompt, ForASearchStartsWithTheNewestAndReturnsTextAndOptions) {
  FindDlg dialog(&frame, {{"newest", "older"}, true, true, false}, 0, {});
  EXPECT_THAT(places(*ui::childOf<zGroupBox>(dialog, 4)),
              testing::MatchesRegex("1,2 38x2.*\n1,4.* 38x2.*\n42x8"));
  const auto chooseOptions = [] {
    ui::pressKey(XK_Down);
    ui::typeText("\t\t \t \n");  // over the greyed lists
  };
  EXPECT_EQ(run(dialog, chooseOptions), 1);
  EXPECT_EQ(dialog.searchString, "older");
  EXPECT_EQ(dialog.useRegexp + dialog.matchCase, 2);
  FindDlg lines(&frame, {{"two\nlines"}}, 0, {});
  EXPECT_EQ(run(lines, "\n"), 1);
  EXPECT_EQ(lines.searchString, "two\nlines");
  EXPECT_EQ(lines.useRegexp + lines.matchCase, 0);
}

TEST_F(Prompt, ForASearchClearsTheOtherFieldsByAChoiceInOneButNotByFillingAndTyping) {
  FindDlg dialog(&frame, {{"text"}}, kFindProcesses, {"p1", "p2"});
  dialog.addItems(kFindSignals, {"s2", "s1"});
  dialog.addItems(kFindSignals, {"s3"});
  dialog.addItems(0, {"none"});
  dialog.addItems(4, {"none"});
  const auto fields = [&](ui::KeySymbol key, unsigned modifiers = ui::kNoModifier) {
    ui::pressKey(key, modifiers);
    std::string texts;
    for (int i = 0; i < 3; ++i) {
      texts += ui::childOf<zComboBoxBase>(dialog, i)->text().str() + "|";
    }
    return texts;
  };
  run(dialog, [&] {
    EXPECT_EQ(fields(XK_t), "t|p1|s3|");
    dialog.addItems(kFindProcesses, {"p3"});
    EXPECT_EQ(fields(XK_Tab), "t|p1|s3|");
    EXPECT_EQ(fields(XK_Down), "|p2||");
    fields(XK_Tab);
    EXPECT_EQ(fields(XK_Down), "||s1|");
    fields(XK_Tab, ui::kShift);
    fields(XK_Tab, ui::kShift);
    EXPECT_EQ(fields(XK_Down), "text|||");
    ui::typeText("\n");
  });
  EXPECT_EQ(dialog.searchString, "text");
}

// With nothing to search for, OK is Cancel, and a placeholder is nothing. Intended.
TEST_F(Prompt, ForASearchAnswersTheFirstListWithAChoiceAndIsCancelledWithoutAny) {
  FindDlg dialog(&frame, {{}, false, true, true}, 0, {});
  EXPECT_EQ(run(dialog, "\n"), 0);
  dialog.addItems(kFindTimers, {"t2", "t1"});
  EXPECT_EQ(run(dialog, "\n"), 1);
  EXPECT_EQ(dialog.searchString, "t2");
  // Regular expressions are not used where they are not offered.
  EXPECT_EQ(dialog.useRegexp, 0);
  EXPECT_EQ(dialog.matchCase, 1);
}

}  // namespace
