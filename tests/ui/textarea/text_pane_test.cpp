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

TEST_F(TextAreaTest, WhoeverAsksTheLogFindsTheTextsThatAreHeldInIt) {
  std::string all;
  const std::vector<std::pair<const char*, std::function<bool()>>> questions = {
      {"length", [&] { return theTextPane->textLength() == static_cast<int>(all.size()); }},
      {"text", [&] { return logText() == all; }},
      {"end", [&] { return theTextPane->textEnd() == static_cast<int>(all.size()); }},
      {"lines", [&] { return theTextPane->lineCount() == std::count(all.begin(), all.end(), 10); }},
      {"all", [&] { return theTextPane->selectAll(), theTextPane->selection().str() == all; }},
      {"end in view", [&] { return theTextPane->scrollToEnd(), ui::isEndInView(log()); }},
      {"a key",
       [&] {
         zEvent key = zEvent::of(kMsgKeyDown, kKeyLeftControl);
         return theTextPane->handle(&key), shownLength(log()) == static_cast<int>(all.size());
       }},
      {"hit",
       [&] {
         return theTextPane->findText("last held", false, true, false),
                theTextPane->selection() == RWCString("last held");
       }},
  };
  for (const auto& [name, isTrue] : questions) {
    for (const std::string& held :
         {std::string("a text\n"), std::string(40000, 'x') + "\nlast held"}) {
      theTextPane->holdText(held.c_str());
      all += held;
    }
    EXPECT_TRUE(isTrue()) << name;
    theTextPane->appendText("\n");
    all += "\n";
    EXPECT_TRUE(logText() == all) << name;
    theTextPane->clear();
    all = logText() + "\n";
    theTextPane->appendText("\n");
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
    ui::drain();
    EXPECT_EQ(theTextPane->zoomLevel(), level);
    reference.setFont(zRCFont({"courier new", size, kFontNormal, kPitchFixed}), 1);
    ui::drain();
    EXPECT_EQ(lineHeight(log()), lineHeight(reference.widget()));
    EXPECT_EQ(ui::areaOf(log()), place) << "the log keeps its place and size";
  };
  const auto zoom = [&](bool in, int level) {
    told.clear();
    in ? theTextPane->zoomIn() : theTextPane->zoomOut();
    EXPECT_EQ(theTextPane->zoomLevel(), std::clamp(level, 0, 20));
    EXPECT_THAT(told,
                ElementsAre(Pair(in ? kCommandZoomIn : kCommandZoomOut, level > 0 && level < 20),
                            Pair(in ? kCommandZoomOut : kCommandZoomIn, true)));
  };
  theTextPane->setSelection(0, 0);
  theTextPane->bringIntoView(theTextPane->textLength());
  expectLetters(4, {90, 102});
  for (int level = 5; level <= 21; ++level) {
    zoom(true, level);
    ui::drain();
    EXPECT_TRUE(ui::isEndInView(log())) << "who saw the end goes on seeing it";
  }
  expectLetters(20, {314, 358});
  theTextPane->scrollToTop();
  for (int level = 19; level >= -1; --level) {
    zoom(false, level);
  }
  expectLetters(0, {34, 38});
  EXPECT_EQ(ui::topLineOf(log()), 0) << "who did not see the end does not see it now";
  EXPECT_FALSE(ui::isEndInView(log()));
  theTextPane->setZoomListener({});
  auto* strip = static_cast<zGravSizer*>(theCommandLine->parent()->sizer());
  for (const bool in : {true, false}) {
    const int height = in ? 60 : 40;
    strip->setExtent({0, height});
    in ? theTextPane->zoomIn() : theTextPane->zoomOut();
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

/// A message to the log or the command line, and what it does: the result of either, the line at
/// the top (kMiddle before) and the latch of Control.
struct Message {
  int message;
  std::intptr_t code;
  bool latch;
  int logResult;
  int lineResult;
  int top;
  bool latchAfter;
};

TEST_F(TextAreaTest, EachKeyOfTheLogDoesWhatItIsForInEitherControl) {
  constexpr int kMiddle = 200;
  constexpr int kNoResult = -1;  // not sent there
  appendLines(500);
  const int page = theTextPane->linesPerPage();
  theTextPane->scrollToEnd();
  const int end = ui::topLineOf(log());
  const Message rows[] = {
      {kMsgKeyDown, kKeyPageUp, false, 1, 1, kMiddle - page, false},
      {kMsgKeyDown, kKeyPageUp, true, 1, 1, 0, true},
      {kMsgKeyDown, kKeyPageDown, false, 1, 1, kMiddle + page, false},
      {kMsgKeyDown, kKeyPageDown, true, 1, 1, end, true},
      {kMsgKeyDown, kKeyLeftControl, false, 1, 1, kMiddle, true},
      {kMsgKeyDown, 'A', false, 0, 0, kMiddle, false},
      {kMsgKeyDown, 'B', true, 0, 0, kMiddle, true},
      {kMsgKeyDown, kKeyReturn, true, 0, kNoResult, kMiddle, true},  // Control with M
      {kMsgKeyDown, kKeyBackspace, true, 0, 0, kMiddle, true},       // Control with H
      {515, 0, true, 1, 0, kMiddle, false},
      {516, 0, true, 1, kNoResult, kMiddle, true},
      {517, 0, true, 1, kNoResult, kMiddle, true},
      {518, 0, true, 1, kNoResult, kMiddle, true},
      {516, 0, true, kNoResult, 0, kMiddle, false},
      {519, 0, true, 1, 0, kMiddle, false},
      {0, 0, true, 1, 0, kMiddle, false},  // the pointer crosses an edge
  };
  for (const Message& row : rows) {
    for (const bool toLog : {true, false}) {
      const int expected = toLog ? row.logResult : row.lineResult;
      if (expected == kNoResult) {
        continue;
      }
      SCOPED_TRACE(testing::Message() << row.message << ' ' << row.code << ' ' << toLog);
      theTextPane->scrollToTop();
      theTextPane->scroll(kMiddle);
      theTextPane->setControlHeld(row.latch);
      zEvent event = zEvent::of(row.message, row.code);
      EXPECT_EQ(toLog ? theTextPane->handle(&event) : theCommandLine->handle(&event), expected);
      EXPECT_EQ(ui::topLineOf(log()), row.top);
      EXPECT_EQ(theTextPane->controlHeld(), row.latchAfter);
    }
  }
  EXPECT_FALSE(theTextPane->selectionRange());
  zEvent event = zEvent::of(kMsgKeyDown, 'A');
  theTextPane->setControlHeld(true);
  EXPECT_EQ(theTextPane->handle(&event), 1);
  EXPECT_EQ(theTextPane->selection().str(), logText());
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
        if (isColoured) {
          EXPECT_EQ(window->backgroundColour(), frame.backgroundColour());
        }
      }
      EXPECT_NE(theTextPane, nullptr);
    }
    EXPECT_EQ(theTextPane, nullptr);
    EXPECT_EQ(theCommandLine, nullptr);
  }
}

}  // namespace
