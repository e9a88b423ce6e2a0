// Find in the log: the selection, the view and the boxes.

#include <string>
#include <utility>
#include <vector>

#include "framework/core/busy_scope.h"
#include "framework/core/pane.h"
#include "tests/ui/textarea/textarea_fixture.h"

namespace {

class FindInLog : public TextAreaTest {};

TEST_F(FindInLog, SelectsTheHitAndBringsItIntoView) {
  appendLines(500);
  theTextPane->scroll(-100);
  theTextPane->findText("LINE 321", false, false, false);
  EXPECT_EQ(theTextPane->selection().str(), "line 321");
  EXPECT_EQ(theTextPane->insertionPosition(), theTextPane->selectionRange()->to);
  for (const auto& [seen, isSeen] :
       {std::pair{"line 321", true}, {"line 323", true}, {"line 325", false}}) {
    EXPECT_EQ(theTextPane->isInView(static_cast<int>(logText().find(seen))), isSeen) << seen;
  }
  theTextPane->findText("e 32.$", false, false, true);
  EXPECT_EQ(theTextPane->selection().str(), "e 320");
  theTextPane->findText("e 32.$", true, false, true);
  EXPECT_EQ(theTextPane->selection().str(), "e 321");
  theTextPane->findText("line 498", false, true, false);
  EXPECT_TRUE(ui::isEndInView(log()));
}

/// A search behind a first hit at 1 to 4, the box that comes of it, its answer and the selection
/// then.
struct Box {
  const char* wanted;
  bool goOn;
  bool regexp;
  const char* title;
  std::string look;
  ui::KeySymbol answer;
  zTextRange selected;
};

TEST_F(FindInLog, TellsWhatItCannotFindAndOffersToSearchFromTheStart) {
  constexpr char kHard[] = "^\\(.*\\)\\(.*\\)\\(.*\\)b\\1\\2\\3c$";
  const std::string text =
      ".abc\n.abc\n" + std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c";
  const std::string ok = "---\n[OK] default focus\n";
  const std::string offer =
      "not found.\nSearch from the start?\n---\n[OK] default focus\n[Cancel]\n";
  const Box rows[] = {
      {"x*y",
       false,
       false,
       "Korvane UI",
       "{warning}\nSearch string\n'x*y'\nnot found.\n" + ok,
       XK_Return,
       {6, 9}},
      {"x*y",
       false,
       true,
       "Korvane UI",
       "{warning}\nRegular expression\n'x*y'\nnot found.\n" + ok,
       XK_Return,
       {6, 9}},
      {"Abc",
       true,
       false,
       "Korvane UI",
       "{warning}\nSearch string\n'Abc'\n" + offer,
       XK_Escape,
       {6, 9}},
      {".abc",
       true,
       true,
       "Korvane UI",
       "{warning}\nRegular expression\n'.abc'\n" + offer,
       XK_Return,
       {5, 9}},
      {"\\(a",
       false,
       true,
       "ERR",
       "{error}\nError in regular expression\n" + ok,
       XK_Return,
       {6, 9}},
      {kHard,
       false,
       true,
       "Korvane UI",
       std::string("{warning}\nRegular expression\n'") + kHard +
           "'\nis too complex for this text. The search gave up.\n" + ok,
       XK_Return,
       {6, 9}},
  };
  theTextPane->appendText(text.c_str());
  for (const Box& row : rows) {
    theTextPane->findText("abc", false, true, false);
    EXPECT_EQ(theTextPane->selectionRange(), (zTextRange{6, 9}));
    ui::ModalScript script;
    script.onDialog(row.title, [&row] {
      ui::waitFor([&row] { return ui::look(row.title) == row.look; }, row.look);
      ui::pressKey(row.answer);
    });
    script.run([&] {
      theTextPane->findText(row.wanted, row.goOn, true, row.regexp);
      return 0;
    });
    EXPECT_EQ(theTextPane->selectionRange(), row.selected) << row.look;
  }
}

/// Remembers the pointer that was shown when it was painted last.
class Painted : public zPane {
 public:
  explicit Painted(zWindow* parent)
      : zPane(parent, new zSizer(0, 0, 400, 300, parent->sizer()), 0x50000000, -1) {}
  int draw(zEvent* event) override {
    pointer = pointerShape();
    return zPane::draw(event);
  }
  std::vector<unsigned long> pointer;
};

TEST_F(FindInLog, EscapeStopsASearchThatLastsWhileTheWindowIsPaintedAndOtherKeysWait) {
  appendLines(150000);
  ui::moveTo(frame.widget(), 200, 200);
  const auto usualPointer = pointerShape();
  const auto usualPatience = std::exchange(zBusyScope::patience, std::chrono::milliseconds(0));
  Painted painted(&frame);
  painted.show();
  screen::Screen unheard(ui::display());  // handles no events
  for (const ui::KeySymbol key : {XK_x, XK_Escape, XK_y}) {
    unheard.press(key);
  }
  theTextPane->update();  // until all of that has come

  theTextPane->findText("line 149999", false, true, false);
  zBusyScope::patience = usualPatience;
  EXPECT_FALSE(theTextPane->selectionRange());
  EXPECT_EQ(theCommandLine->text().str(), "");
  EXPECT_FALSE(painted.pointer.empty());
  EXPECT_TRUE(painted.pointer != usualPointer);
  EXPECT_TRUE(pointerShape() == usualPointer);
  ui::drain();
  EXPECT_EQ(theCommandLine->text().str(), "xy");
}

}  // namespace
