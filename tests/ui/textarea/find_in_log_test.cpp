// Find in the log: the selection, the view and the boxes.

#include "framework/core/busy_scope.h"
#include "tests/ui/textarea/textarea_fixture.h"

namespace {

class FindInLog : public TextAreaTest {};

TEST_F(FindInLog, SelectsTheHitAndBringsItIntoView) {
  const auto find = [](const char* wanted, bool goOn, bool isRegexp) {
    theTextPane->findText(wanted, goOn, false, isRegexp);
    return selected();
  };
  const auto isSeen = [](const char* text) {
    return theTextPane->isInView(static_cast<int>(logText().find(text)));
  };
  appendLines(500);
  theTextPane->scrollToTop();
  EXPECT_EQ(find("LINE 321", false, false), "line 321");
  EXPECT_EQ(theTextPane->insertionPosition(), theTextPane->selectionRange()->to);
  EXPECT_TRUE(isSeen("line 321") && isSeen("line 323"));
  EXPECT_FALSE(isSeen("line 325"));
  EXPECT_EQ(find("e 32.$", false, true), "e 320");
  EXPECT_EQ(find("e 32.$", true, true), "e 321");
}

// A search with case behind a hit at 6 to 9, the box that comes of it, the key that ends it, and
// where the selection begins then; it ends at 9.
TEST_F(FindInLog, TellsWhatItCannotFindAndOffersToSearchFromTheStart) {
  const std::string ok = "---\n[OK] default focus\n";
  const std::string offer = "'\nnot found.\nSearch from the start?\n" + ok + "[Cancel]\n";
  const std::string plain = "{warning}\nSearch string\n'";
  const std::string pattern = "{warning}\nRegular expression\n'";
  const std::string hard = "^\\(.*\\)\\(.*\\)\\(.*\\)b\\1\\2\\3c$";
  const std::tuple<std::string, bool, bool, std::string, ui::KeySymbol, int> rows[] = {
      {hard, false, true,
       pattern + hard + "'\nis too complex for this text. The search gave up.\n" + ok, XK_Return,
       6},
      {"x*y", false, true, pattern + "x*y'\nnot found.\n" + ok, XK_Return, 6},
      {"Abc", true, false, plain + "Abc" + offer, XK_Escape, 6},
      {".abc", true, true, pattern + ".abc" + offer, XK_Return, 5},
      {"\\(a", false, true, "{error}\nError in regular expression\n" + ok, XK_Return, 6},
  };
  const std::string hardLine = std::string(3000, 'a') + "b" + std::string(2000, 'a') + "c\n";
  theTextPane->appendText((".abc\n.abc\n" + hardLine).c_str());
  for (const auto& [wanted, goOn, isRegexp, look, key, from] : rows) {
    theTextPane->findText("abc", false, true, false);
    EXPECT_EQ(theTextPane->selectionRange(), (zTextRange{6, 9}));
    const std::string title = look.starts_with("{error}") ? "ERR" : "Korvane UI";
    const auto answer = [&, &look = look, &key = key] {
      ui::waitFor([&] { return ui::look(title) == look; }, look);
      ui::pressKey(key);
    };
    ui::inDialog(title, answer, [&, &wanted = wanted, &goOn = goOn, &isRegexp = isRegexp] {
      theTextPane->findText(wanted, goOn, true, isRegexp);
    });
    EXPECT_EQ(theTextPane->selectionRange(), (zTextRange{from, 9})) << look;
  }
}

struct Painted : zPane {
  using zPane::zPane;
  int draw(zEvent* /*event*/) override { return isPainted = 1; }
  int isPainted = 0;
};

TEST_F(FindInLog, EscapeStopsASearchThatLastsWhileTheWindowIsPaintedAndOtherKeysWait) {
  appendLines(150000);
  const auto usualPatience = std::exchange(zBusyScope::patience, std::chrono::milliseconds(0));
  Painted painted(&frame, new zSizer(0, 0, 400, 300, frame.sizer()), 0x50000000, -1);
  painted.show();
  screen::Screen unheard(ui::display());  // handles no events
  for (const ui::KeySymbol key : {XK_x, XK_Escape, XK_y}) {
    unheard.press(key);
  }
  theTextPane->update();  // until all of that has come

  theTextPane->findText("line 149999", false, true, false);
  zBusyScope::patience = usualPatience;
  EXPECT_FALSE(theTextPane->selectionRange());
  EXPECT_EQ(entry(), "");
  EXPECT_EQ(painted.isPainted, 1);
  ui::drain();
  EXPECT_EQ(entry(), "xy");
}

}  // namespace
