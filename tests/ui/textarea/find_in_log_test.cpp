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
  for (int level = theTextPane->zoomLevel(); level < 20; ++level) {
    theTextPane->zoomIn();
  }
  frame.moveResize(100, 100, 300, 184);
  ui::waitFor([this] { return ui::areaOf(frame.widget()).height < 184; }, "the small frame");
  theTextPane->findText("line 250", false, true, false);
  EXPECT_TRUE(theTextPane->isInView(theTextPane->selectionRange()->from))
      << "where the lines below have no room, the hit has";
}

/// A search with case behind a hit at 6 to 9, the box that comes of it, whether OK is pressed, and
/// where the selection begins then; it ends at 9.
struct Box {
  const char* wanted;
  bool goOn;
  bool regexp;
  std::string look;
  bool isOk;
  int from;
};

TEST_F(FindInLog, TellsWhatItCannotFindAndOffersToSearchFromTheStart) {
  constexpr char kHard[] = "^\\(.*\\)\\(.*\\)\\(.*\\)b\\1\\2\\3c$";
  const std::string text =
      ".abc\n.abc\n" + std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c";
  const std::string plain = "{warning}\nSearch string\n'";
  const std::string pattern = "{warning}\nRegular expression\n'";
  const std::string ok = "---\n[OK] default focus\n";
  const std::string offer =
      "'\nnot found.\nSearch from the start?\n---\n[OK] default focus\n[Cancel]\n";
  const std::string gaveUp = "'\nis too complex for this text. The search gave up.\n";
  const Box rows[] = {
      {"x*y", false, false, plain + "x*y'\nnot found.\n" + ok, true, 6},
      {"x*y", false, true, pattern + "x*y'\nnot found.\n" + ok, true, 6},
      {"Abc", true, false, plain + "Abc" + offer, false, 6},
      {".abc", true, true, pattern + ".abc" + offer, true, 5},
      {"\\(a", false, true, "{error}\nError in regular expression\n" + ok, true, 6},
      {kHard, false, true, pattern + kHard + gaveUp + ok, true, 6},
  };
  theTextPane->appendText(text.c_str());
  for (const Box& row : rows) {
    theTextPane->findText("abc", false, true, false);
    EXPECT_EQ(theTextPane->selectionRange(), (zTextRange{6, 9}));
    const std::string title = row.look.starts_with("{error}") ? "ERR" : "Korvane UI";
    ui::ModalScript script;
    script.onDialog(title, [&] {
      ui::waitFor([&] { return ui::look(title) == row.look; }, row.look);
      ui::pressKey(row.isOk ? XK_Return : XK_Escape);
    });
    script.run([&] {
      theTextPane->findText(row.wanted, row.goOn, true, row.regexp);
      return 0;
    });
    EXPECT_EQ(theTextPane->selectionRange(), (zTextRange{row.from, 9})) << row.look;
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
