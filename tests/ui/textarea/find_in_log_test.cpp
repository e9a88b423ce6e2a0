// Find in the log: the selection, the view and the boxes.

#include "framework/core/busy_scope.h"
#include "framework/core/pane.h"
#include "tests/ui/textarea/textarea_fixture.h"

#include <string>
#include <utility>
#include <vector>

namespace {

class FindInLog : public TextAreaTest {};

TEST_F(FindInLog, SelectsTheHitAndBringsItIntoView) {
  appendLines(500);
  theTextPane->findText("LINE 321", false, false, false);
  EXPECT_EQ(theTextPane->selection().str(), "line 321");
  EXPECT_EQ(theTextPane->insertionPosition(), theTextPane->selectionRange()->to);
  for (const char* seen : {"line 321", "line 323"}) {
    EXPECT_TRUE(theTextPane->isInView(static_cast<int>(logText().find(seen)))) << seen;
  }
  theTextPane->findText("e 32.$", false, false, true);
  EXPECT_EQ(theTextPane->selection().str(), "e 320");
  theTextPane->findText("e 32.$", true, false, true);
  EXPECT_EQ(theTextPane->selection().str(), "e 321");
}

TEST_F(FindInLog, TellsThatThereIsNoHitAndKeepsTheSelection) {
  theTextPane->appendText("abc\nabc\n");
  theTextPane->findText("abc", false, true, false);
  for (const bool regexp : {false, true}) {
    ui::ModalScript script;
    script.onDialog("Korvane UI", XK_Return);
    script.run([&] {
      theTextPane->findText("x*y", false, true, regexp);
      return 0;
    });
    EXPECT_EQ(theTextPane->selectionRange(), (zTextRange{4, 7}));
  }
}

TEST_F(FindInLog, ASearchThatWentOnIsOfferedFromTheStart) {
  theTextPane->appendText(".abc\nabc\n");
  theTextPane->findText("c", false, true, true);
  theTextPane->findText("c", true, true, true);
  for (const ui::KeySymbol answer : {XK_Escape, XK_Return}) {
    ui::ModalScript script;
    script.onDialog("Korvane UI", answer);
    script.run([] {
      theTextPane->findText("c", true, true, true);
      return 0;
    });
    EXPECT_EQ(theTextPane->selectionRange(),
              answer == XK_Return ? (zTextRange{3, 4}) : (zTextRange{7, 8}));
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

TEST_F(FindInLog, TellsThatAPatternIsWrongOrTooComplex) {
  theTextPane->appendText(
      (".\n" + std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c").c_str());
  struct Row {
    const char* pattern;
    const char* title;
  };
  for (const Row& row :
       {Row{"\\(a", "ERR"}, Row{"^\\(.*\\)\\(.*\\)\\(.*\\)b\\1\\2\\3c$", "Korvane UI"}}) {
    ui::ModalScript script;
    script.onDialog(row.title, XK_Return);
    script.run([&] {
      theTextPane->findText(row.pattern, false, true, true);
      return 0;
    });
    EXPECT_FALSE(theTextPane->selectionRange());
  }
}

}  // namespace
