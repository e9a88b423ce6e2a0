// The log: appending, numbering, Clear, zoom, keys.

#include <algorithm>

#include "framework/draw/displays.h"
#include "framework/draw/measure.h"
#include "resources/resource_ids.h"
#include "tests/ui/textarea/textarea_fixture.h"
#include "textarea/command_queue.h"

namespace {

using testing::ElementsAre;
using testing::Pair;

int heightOfLetter(const zRCFont& font) {
  ziInfoDisplay measuring;
  measuring.setFont(font);
  zDimension letter;
  measuring.lock();
  measuring.textSize(letter, "X", 1);
  measuring.unlock();
  return letter.height;
}

TEST_F(TextAreaTest, AppendsEveryByteAndCountsItInEveryLocale) {
  std::string bytes;
  for (int c = 1; c < 256; ++c) {
    bytes += static_cast<char>(c);
  }
  theTextPane->appendText(bytes.c_str());
  theTextPane->appendText("\xE4\xC3\xA4\xC3\n");
  theTextPane->appendText(nullptr);
  EXPECT_EQ(logText(), bytes + "\xE4\xC3\xA4\xC3\n");
  EXPECT_EQ(theTextPane->textEnd(), 260);
  EXPECT_EQ(theTextPane->textLength(), 260);
  EXPECT_EQ(theTextPane->lineCount(), 2);
  EXPECT_TRUE(ui::isEndInView(log()));
}

TEST_F(TextAreaTest, AppendsOfAnyLengthGoInWholeAndNumberingComesAndGoes) {
  std::string text(29990, 'a');
  for (int i = 0; i < 9000; ++i) {
    text += "line " + std::to_string(i) + "\n";
  }
  text += std::string(70000, 'z');
  theTextPane->appendText(text.c_str());
  EXPECT_TRUE(logText() == text);
  theTextPane->numberLines();
  theTextPane->setNumbering(true);
  theTextPane->appendText(text.c_str());
  const std::string numbered = logText();
  EXPECT_EQ(numbered.size(), 2 * text.size() + std::size_t{18000} * 8);
  EXPECT_EQ(theTextPane->textEnd(), static_cast<int>(numbered.size()));
  EXPECT_EQ(theTextPane->lineCount(), 18000);
  EXPECT_NE(numbered.find("\n     1: line 1\n"), std::string::npos);
  EXPECT_NE(numbered.find("\n 18000: zzz"), std::string::npos);
  theTextPane->unnumberLines();
  EXPECT_TRUE(logText() == text + text);

  const std::string banner = "------------- Text Log Cleared --------------\r\n";
  theTextPane->clear();
  EXPECT_EQ(logText(), banner);
  EXPECT_EQ(theTextPane->textEnd(), 47);
  EXPECT_EQ(theTextPane->lineCount(), 1);
  EXPECT_TRUE(theTextPane->numbering());
  // Intended: the line behind the banner has no number, the next one is 2.
  theTextPane->appendText("x\ny\n");
  EXPECT_EQ(logText(), banner + "x\n     2: y\n     3: ");
  theTextPane->unnumberLines();
  theTextPane->numberLines();
  EXPECT_EQ(logText(), banner + "     1: x\n     2: y\n     3: ");
}

TEST_F(TextAreaTest, HeldTextsAreShownTogetherByThemselvesAndBeforeAnyoneAsksTheLog) {
  theTextPane->holdText("one\n");
  theTextPane->holdText("two\n");
  EXPECT_EQ(shownLength(log()), 0);
  ui::waitFor([] { return shownLength(log()) > 0; }, "the texts");
  EXPECT_EQ(shownLength(log()), 8);
  std::string all = "one\ntwo\n";
  const auto length = [&] { return static_cast<int>(all.size()); };
  zEvent key = zEvent::of(kMsgKeyDown, kKeyLeftControl);
  const std::vector<std::function<bool()>> questions = {
      [&] { return theTextPane->textLength() == length(); },
      [&] { return logText() == all; },
      [&] { return theTextPane->textEnd() == length(); },
      [&] { return theTextPane->lineCount() == std::count(all.begin(), all.end(), '\n'); },
      [&] { return theTextPane->selectAll(), theTextPane->selection().str() == all; },
      [&] { return theTextPane->scrollToEnd(), ui::isEndInView(log()); },
      [&] { return theTextPane->handle(&key), shownLength(log()) == length(); },
      [&] {
        theTextPane->findText("held 7", false, true, false);
        return theTextPane->selection() == RWCString("held 7");
      },
      [&] { return theTextPane->appendText("\n"), logText() == all + "\n"; },
  };
  for (std::size_t i = 0; i < questions.size(); ++i) {
    for (const std::string& held : {std::string(40, '\n'), "held " + std::to_string(i) + '\n'}) {
      theTextPane->holdText(held.c_str());
      all += held;
    }
    EXPECT_TRUE(questions[i]()) << i;
  }
}

TEST_F(TextAreaTest, AppendingDropsTheSelectionAndShowsTheEnd) {
  appendLines(200);
  EXPECT_TRUE(ui::isEndInView(log()));
  theTextPane->selectAll();
  EXPECT_EQ(theTextPane->selection().str(), logText());
  theTextPane->scrollToTop();
  EXPECT_EQ(ui::topLineOf(log()), 0);
  theTextPane->appendText("");
  EXPECT_FALSE(theTextPane->selectionRange());
  EXPECT_EQ(theTextPane->selection().str(), "");
  theTextPane->appendText("last");
  EXPECT_TRUE(ui::isEndInView(log()));
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
  for (const auto& [key, next] : {std::pair<ui::KeySymbol, const char*>{XK_a, "b"},
                                  {XK_BackSpace, "c"},
                                  {0xE4, ""},
                                  {XK_Return, ""}}) {
    focus(*theTextPane);
    ui::pressKey(key);
    EXPECT_TRUE(ui::focusIs(theCommandLine->widget()));
    ui::typeText(next);
  }
  EXPECT_THAT(commandQueue, ElementsAre("go ac\xE4"));
  EXPECT_EQ(logText(), before);
}

// Levels from 0 to 20; 4 at the start. The sizes are tenths of a point.
TEST_F(TextAreaTest, ZoomChangesTheLettersAloneAndTellsWhatIsPossible) {
  std::vector<std::pair<int, bool>> told;
  theTextPane->setZoomListener(
      [&](int command, bool possible) { told.emplace_back(command, possible); });
  appendLines(200);
  ui::drain();
  const ui::ScreenArea place = ui::areaOf(log());
  zEditBox reference(&frame, new zSizer(0, 0, 300, 300, frame.sizer()), 0x50B108C4, "1\n2\n3", -1);
  reference.show();
  const auto expectLetters = [&](int level, const zPrPoint& size) {
    EXPECT_EQ(theTextPane->zoomLevel(), level);
    reference.setFont(zRCFont({"courier new", size, kFontNormal, kPitchFixed}), 1);
    ui::drain();
    EXPECT_EQ(lineHeight(log()), lineHeight(reference.widget()));
    EXPECT_EQ(ui::areaOf(log()), place) << "the log keeps its place and size";
  };
  theTextPane->setSelection(0, 0);
  theTextPane->bringIntoView(theTextPane->textLength());
  expectLetters(4, {90, 102});
  for (int level = 5; level <= 21; ++level, told.clear()) {
    theTextPane->zoomIn();
    EXPECT_THAT(told, ElementsAre(Pair(kCommandZoomIn, level < 20), Pair(kCommandZoomOut, true)));
    ui::drain();
    EXPECT_TRUE(ui::isEndInView(log())) << "who saw the end goes on seeing it";
  }
  expectLetters(20, {314, 358});
  theTextPane->scrollToTop();
  for (int level = 19; level >= -1; --level, told.clear()) {
    theTextPane->zoomOut();
    EXPECT_THAT(told, ElementsAre(Pair(kCommandZoomOut, level > 0), Pair(kCommandZoomIn, true)));
  }
  expectLetters(0, {34, 38});
  EXPECT_EQ(ui::topLineOf(log()), 0) << "who did not see the end does not see it now";
  EXPECT_FALSE(ui::isEndInView(log()));
  theTextPane->setZoomListener({});
  auto* strip = static_cast<zGravSizer*>(theCommandLine->parent()->sizer());
  for (const int height : {60, 40}) {
    strip->setExtent({0, height});
    height == 60 ? theTextPane->zoomIn() : theTextPane->zoomOut();
    ui::drain();
    EXPECT_EQ(ui::areaOf(theTextPane->holder()).height, ui::areaOf(frame.widget()).height - height)
        << "all is laid out anew";
  }
}

// Intended: pages do not follow the zoom, and it is the pointer that ends what Control began, not
// the release of the key.
TEST_F(TextAreaTest, PageKeysOfEitherControlGoByPagesOrBehindControlToTheEnds) {
  appendLines(500);
  const int letter = heightOfLetter(zRCFont(11));
  const int page = theTextPane->linesPerPage();
  EXPECT_LE(page * letter, theTextPane->linesHeight());
  EXPECT_GT((page + 1) * letter, theTextPane->linesHeight());
  const auto press = [](ui::KeySymbol key) {
    ui::pressKey(key);
    return ui::topLineOf(log());
  };
  for (zControl* control :
       {static_cast<zControl*>(theCommandLine), static_cast<zControl*>(theTextPane)}) {
    movePointerAway();
    focus(*control);
    theTextPane->scrollToTop();
    EXPECT_EQ(press(XK_Page_Down), page);
    EXPECT_EQ(press(XK_Page_Down), 2 * page);
    EXPECT_EQ(press(XK_Page_Up), page);
    press(XK_Control_L);
    EXPECT_EQ(press(XK_Page_Up), 0);
    press(XK_Page_Down);
    EXPECT_TRUE(ui::isEndInView(log()));
    ui::moveTo(control->widget(), 5, 5);
    ui::waitFor([] { return !theTextPane->controlHeld(); }, "the latch to fall");
    press(XK_Control_L);
    movePointerAway();
    ui::waitFor([] { return !theTextPane->controlHeld(); }, "the latch to fall again");
    theTextPane->zoomOut();
    ui::drain();
  }
}

TEST_F(TextAreaTest, OtherMessagesOfEitherControlDropTheLatchOrGoOnToTheWidget) {
  constexpr int kNoResult = -1;  // not sent there
  struct Row {
    int message;
    std::intptr_t code;
    int logResult, lineResult;
    bool latchAfter;
  };
  const Row rows[] = {
      {kMsgKeyDown, kKeyPageUp, 1, 1, true},
      {kMsgKeyDown, kKeyPageDown, 1, 1, true},
      {kMsgKeyDown, kKeyLeftControl, 1, 1, true},
      {kMsgKeyDown, 'B', 0, 0, true},
      {kMsgKeyDown, kKeyReturn, 0, kNoResult, true},  // Control with M
      {kMsgKeyDown, kKeyBackspace, 0, 0, true},       // Control with H
      {515, 0, 1, 0, false},
      {516, 0, 1, kNoResult, true},
      {518, 0, 1, kNoResult, true},
      {516, 0, kNoResult, 0, false},
      {519, 0, 1, 0, false},
      {0, 0, 1, 0, false},  // the pointer crosses an edge
  };
  for (const Row& row : rows) {
    for (const bool toLog : {true, false}) {
      const int expected = toLog ? row.logResult : row.lineResult;
      if (expected == kNoResult) {
        continue;
      }
      theTextPane->setControlHeld(true);
      zEvent event = zEvent::of(row.message, row.code);
      EXPECT_EQ(toLog ? theTextPane->handle(&event) : theCommandLine->handle(&event), expected)
          << row.message << ' ' << row.code << ' ' << toLog;
      EXPECT_EQ(theTextPane->controlHeld(), row.latchAfter) << row.message << ' ' << toLog;
    }
  }
  appendLines(3);
  zEvent event = zEvent::of(kMsgKeyDown, 'A');
  for (const bool latch : {false, true}) {
    theTextPane->setControlHeld(latch);
    EXPECT_EQ(theTextPane->handle(&event), latch ? 1 : 0);
    EXPECT_EQ(theTextPane->selection().str(), latch ? logText() : "");
  }
}

TEST_F(TextAreaTest, LogAndCommandLineFollowTheFrameAndTheKeyboardStays) {
  appendLines(100);
  for (const zDimension& size :
       {zDimension{300, 184}, zDimension{800, 600}, zDimension{500, 300}}) {
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
    const int strip = 2 * heightOfLetter(zRCFont(11));
    EXPECT_EQ(ui::areaOf(theTextPane->holder()),
              (ui::ScreenArea{inside.x, inside.y, inside.width, inside.height - strip}));
    const ui::ScreenArea entry = ui::areaOf(theCommandLine->widget());
    EXPECT_GE(entry.y, inside.y + inside.height - strip);
    EXPECT_LE(entry.y + entry.height, inside.y + inside.height);
    ui::waitForFocus(theCommandLine->widget());
    EXPECT_TRUE(ui::isEndInView(log()));
    EXPECT_LE(theTextPane->linesPerPage() * lineHeight(log()), ui::areaOf(log()).height)
        << "a page skips no line";
  }
}

TEST(MyPaneTest, TakesTheBackgroundOfItsWindowAndTellsWhenItIsGone) {
  for (const bool isColoured : {false, true}) {
    zAppFrame frame(nullptr, new zSizer(100, 100, 300, 200), 0xCF0000, "Colours");
    if (isColoured) {
      frame.setBackground(zColor(0x123456));
    }
    {
      const MyPane pane(&frame, new zGravSizer(kGravityFill, zDimension{}, frame.sizer()));
      for (const zWindow* window : {static_cast<const zWindow*>(&pane),
                                    static_cast<const zWindow*>(theCommandLine->parent())}) {
        EXPECT_EQ(window->background() == zWindow::kNoBackground, !isColoured);
        EXPECT_TRUE(!isColoured || window->backgroundColour() == frame.backgroundColour());
      }
    }
    EXPECT_TRUE(theTextPane == nullptr && theCommandLine == nullptr);
  }
}

}  // namespace
