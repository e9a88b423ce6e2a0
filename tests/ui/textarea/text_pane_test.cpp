// The log: appending, numbering, Clear, zoom, paging.

#include <algorithm>

#include "resources/resource_ids.h"
#include "tests/ui/textarea/textarea_fixture.h"
#include "textarea/command_queue.h"

namespace {

using testing::ElementsAre;
using testing::Pair;

TEST_F(TextAreaTest, AppendsEveryByteAndCountsItInEveryLocale) {
  std::string bytes;
  for (int c = 1; c < 256; ++c) {
    bytes += static_cast<char>(c);
  }
  theTextPane->appendText(bytes.c_str());
  theTextPane->appendText("\xE4\xC3\xA4\xC3\n");
  EXPECT_EQ(logText(), bytes + "\xE4\xC3\xA4\xC3\n");
  EXPECT_EQ(theTextPane->textEnd(), 260);
  EXPECT_EQ(theTextPane->textLength(), 260);
  EXPECT_EQ(theTextPane->lineCount(), 2);
  EXPECT_TRUE(isEndInView(log()));
}

TEST_F(TextAreaTest, AnAppendOfAnyLengthGoesInWhole) {
  std::string text(29990, 'a');
  for (int i = 0; i < 9000; ++i) {
    text += "line " + std::to_string(i) + "\n";
  }
  text += std::string(70000, 'z');
  theTextPane->appendText(text.c_str());
  EXPECT_TRUE(logText() == text);
  EXPECT_EQ(theTextPane->textEnd(), static_cast<int>(text.size()));
  EXPECT_EQ(theTextPane->lineCount(), 9000);

  theTextPane->numberLines();
  theTextPane->setNumbering(true);
  theTextPane->appendText(text.c_str());
  const std::string numbered = logText();
  EXPECT_EQ(numbered.size(), 2 * text.size() + std::size_t{18000} * 8);
  EXPECT_EQ(theTextPane->textEnd(), static_cast<int>(numbered.size()));
  EXPECT_NE(numbered.find("\n 18000: zzz"), std::string::npos);
  theTextPane->unnumberLines();
  EXPECT_TRUE(logText() == text + text);
}

TEST_F(TextAreaTest, WhoeverAsksTheLogFindsTheTextsThatAreHeldInIt) {
  std::string all;
  const auto hold = [&](const std::string& text) {
    theTextPane->holdText(text.c_str());
    all += text;
  };
  const std::vector<std::pair<const char*, std::function<bool()>>> questions = {
      {"length", [&] { return theTextPane->textLength() == static_cast<int>(all.size()); }},
      {"text", [&] { return logText() == all; }},
      {"end", [&] { return theTextPane->textEnd() == static_cast<int>(all.size()); }},
      {"lines", [&] { return theTextPane->lineCount() == std::count(all.begin(), all.end(), 10); }},
      {"all", [&] { return theTextPane->selectAll(), theTextPane->selection().str() == all; }},
      {"end in view", [&] { return theTextPane->scrollToEnd(), isEndInView(log()); }},
      {"hit",
       [&] {
         return theTextPane->findText("last held", false, true, false),
                theTextPane->selection() == RWCString("last held");
       }},
  };
  for (const auto& [name, isTrue] : questions) {
    hold("a text\n");
    hold(std::string(40000, 'x') + "\nlast held");
    EXPECT_TRUE(isTrue()) << name;
    all += "\n";
    theTextPane->appendText("\n");
    EXPECT_TRUE(logText() == all) << name;
    theTextPane->clear();
    all = logText();
    theTextPane->appendText("\n");
    all += "\n";
  }
}

TEST_F(TextAreaTest, HeldTextsAreShownTogetherByThemselves) {
  theTextPane->holdText("one\n");
  theTextPane->holdText("two\n");
  EXPECT_EQ(shownLength(log()), 0);
  ui::waitFor([] { return shownLength(log()) > 0; }, "the texts");
  EXPECT_EQ(shownLength(log()), 8);
}

TEST_F(TextAreaTest, AppendingDropsTheSelectionAndShowsTheEnd) {
  appendLines(200);
  EXPECT_TRUE(isEndInView(log()));
  theTextPane->scrollToTop();
  theTextPane->selectAll();
  EXPECT_EQ(theTextPane->selection().str(), logText());
  theTextPane->scrollToTop();
  EXPECT_EQ(topLine(log()), 0);
  theTextPane->appendText("");
  EXPECT_FALSE(theTextPane->selectionRange());
  theTextPane->appendText("last");
  EXPECT_TRUE(isEndInView(log()));
  theTextPane->setSelection(5, 9);
  EXPECT_EQ(theTextPane->selection().str(), "0\nli");
}

TEST_F(TextAreaTest, TheLogLeavesKeysToItsWidgetAndTypingToTheCommandLine) {
  appendLines(3);
  const std::string before = logText();
  focus(*theTextPane);
  for (const ui::KeySymbol key : {XK_Delete, XK_Left, XK_Insert}) {
    ui::pressKey(key);
    ui::pressKey(key, ui::kControl);
  }
  ui::pressKey(XK_End, ui::kControl);
  ui::pressKey(XK_Up, ui::kShift);
  EXPECT_EQ(theTextPane->selection().str(), "line 2\n");
  ui::pressKey(XK_Tab);
  ui::waitForFocus(theCommandLine->widget());

  focus(*theTextPane);
  theCommandLine->setText("1;go ");
  struct Row {
    ui::KeySymbol key;
    const char* next;
  };
  for (const Row& row :
       {Row{XK_a, "b"}, Row{XK_BackSpace, "c"}, Row{0xE4, ""}, Row{XK_Return, ""}}) {
    focus(*theTextPane);
    ui::pressKey(row.key);
    EXPECT_TRUE(ui::focusIs(theCommandLine->widget()));
    ui::typeText(row.next);
  }
  EXPECT_THAT(commandQueue, ElementsAre("go ac\xE4"));
  EXPECT_EQ(logText(), before);
}

TEST_F(TextAreaTest, NumberingComesAndGoesAndClearStartsAnew) {
  theTextPane->appendText("one\ntwo\n");
  theTextPane->numberLines();
  theTextPane->setNumbering(true);
  EXPECT_EQ(logText(), "one\n     1: two\n     2: ");
  EXPECT_EQ(theTextPane->textEnd(), theTextPane->textLength());
  theTextPane->appendText("three\nfour");
  EXPECT_EQ(logText(), "one\n     1: two\n     2: three\n     3: four");
  theTextPane->unnumberLines();
  theTextPane->setNumbering(false);
  EXPECT_EQ(logText(), "one\ntwo\nthree\nfour");

  const std::string banner = "------------- Text Log Cleared --------------\r\n";
  theTextPane->setNumbering(true);
  theTextPane->clear();
  EXPECT_EQ(logText(), banner);
  EXPECT_EQ(theTextPane->textEnd(), 47);
  EXPECT_EQ(theTextPane->lineCount(), 1);
  EXPECT_TRUE(theTextPane->numbering());
  // Intended: the line behind the banner has no number, the next one is 2.
  theTextPane->appendText("x\ny\n");
  EXPECT_EQ(logText(), banner + "x\n     2: y\n     3: ");
}

TEST_F(TextAreaTest, ZoomGoesFromNoughtToTwentyAndTellsWhatIsPossible) {
  std::vector<std::pair<int, bool>> told;
  theTextPane->setZoomListener(
      [&](int command, bool possible) { told.emplace_back(command, possible); });
  const auto lastTold = [&] { return std::vector(told.end() - 2, told.end()); };
  appendLines(200);
  ui::drain();
  const ui::ScreenArea place = ui::areaOf(log());
  EXPECT_EQ(theTextPane->zoomLevel(), 4);
  const int startHeight = lineHeight(log());
  theTextPane->setSelection(0, 0);
  theTextPane->bringIntoView(theTextPane->textLength());
  for (int level = 5; level <= 20; ++level) {
    theTextPane->zoomIn();
    EXPECT_EQ(theTextPane->zoomLevel(), level);
    ui::drain();
    EXPECT_TRUE(isEndInView(log()));
    EXPECT_THAT(lastTold(),
                ElementsAre(Pair(kCommandZoomIn, level < 20), Pair(kCommandZoomOut, true)));
  }
  EXPECT_GT(lineHeight(log()), 2 * startHeight);
  theTextPane->zoomIn();
  EXPECT_EQ(theTextPane->zoomLevel(), 20);
  for (int level = 19; level >= 0; --level) {
    theTextPane->zoomOut();
    EXPECT_THAT(lastTold(),
                ElementsAre(Pair(kCommandZoomOut, level > 0), Pair(kCommandZoomIn, true)));
  }
  theTextPane->zoomOut();
  EXPECT_EQ(theTextPane->zoomLevel(), 0);
  EXPECT_LT(lineHeight(log()), startHeight);
  ui::drain();
  EXPECT_EQ(ui::areaOf(log()), place) << "the log keeps its place and size";
  theTextPane->setZoomListener({});
}

TEST_F(TextAreaTest, PageKeysScrollTheLogFromEitherControlByPagesThatDoNotFollowTheZoom) {
  appendLines(500);
  for (zControl* control :
       {static_cast<zControl*>(theCommandLine), static_cast<zControl*>(theTextPane)}) {
    focus(*control);
    theTextPane->scrollToTop();
    const int page = theTextPane->linesPerPage();
    ASSERT_GT(page, 3);
    ui::pressKey(XK_Page_Down);
    ui::pressKey(XK_Page_Down);
    EXPECT_EQ(topLine(log()), 2 * page);
    ui::pressKey(XK_Page_Up);
    EXPECT_EQ(topLine(log()), page);
    theTextPane->zoomOut();
    ui::drain();
    EXPECT_EQ(theTextPane->linesPerPage(), page);
  }
}

// Intended: it is the pointer that ends what Control began, not the release of the key.
TEST_F(TextAreaTest, ControlMakesPageKeysGoToTheEndsUntilThePointerCrossesAnEdge) {
  appendLines(500);
  for (zControl* control :
       {static_cast<zControl*>(theCommandLine), static_cast<zControl*>(theTextPane)}) {
    movePointerAway();
    focus(*control);
    EXPECT_FALSE(theTextPane->controlHeld());
    ui::pressKey(XK_Control_L);
    EXPECT_TRUE(theTextPane->controlHeld());
    ui::pressKey(XK_Page_Up);
    EXPECT_EQ(topLine(log()), 0);
    ui::pressKey(XK_Page_Down);
    EXPECT_TRUE(isEndInView(log()));
    ui::pressKey(XK_Page_Up);
    EXPECT_EQ(topLine(log()), 0);
    ui::moveTo(control->widget(), 5, 5);
    ui::waitFor([] { return !theTextPane->controlHeld(); }, "the latch to fall");
    ui::pressKey(XK_Control_L);
    movePointerAway();
    ui::waitFor([] { return !theTextPane->controlHeld(); }, "the latch to fall again");
    ui::pressKey(XK_Page_Down);
    EXPECT_EQ(topLine(log()), theTextPane->linesPerPage());
  }
}

TEST_F(TextAreaTest, LogAndCommandLineFollowTheFrameAndTheKeyboardStays) {
  appendLines(100);
  struct Size {
    int width, height;
  };
  for (const Size& size : {Size{300, 184}, Size{800, 600}, Size{500, 300}}) {
    frame.moveResize(100, 100, size.width, size.height);
    ui::waitFor(
        [&] {
          const ui::ScreenArea inside = ui::areaOf(frame.widget());
          const ui::ScreenArea entry = ui::areaOf(theCommandLine->holder());
          return inside.width < size.width && inside.width > size.width - 40 &&
                 entry.x == inside.x + 80 && entry.width == inside.width - 82;
        },
        "the command line in its place");
    const ui::ScreenArea inside = ui::areaOf(frame.widget());
    const ui::ScreenArea text = ui::areaOf(theTextPane->holder());
    const ui::ScreenArea entry = ui::areaOf(theCommandLine->widget());
    EXPECT_EQ(text.x, inside.x);
    EXPECT_EQ(text.y, inside.y);
    EXPECT_EQ(text.width, inside.width);
    EXPECT_GE(entry.y, text.y + text.height);
    EXPECT_LE(entry.y + entry.height, inside.y + inside.height);
    ui::waitForFocus(theCommandLine->widget());
    EXPECT_TRUE(isEndInView(log()));
    EXPECT_LE(theTextPane->linesPerPage() * lineHeight(log()), ui::areaOf(log()).height)
        << "a page skips no line";
  }
}

}  // namespace
