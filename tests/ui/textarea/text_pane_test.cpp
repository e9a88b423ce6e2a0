// The log: appending, numbering, Clear, zoom, keys.

#include "framework/draw/measure.h"
#include "resources/resource_ids.h"
#include "tests/ui/textarea/textarea_fixture.h"

namespace {

zDimension letterOf(const zRCFont& font) {
  return font.font()->measure("X", 1);
}

TEST_F(TextAreaTest, AppendsOfAnyLengthGoInWholeDropTheSelectionAndShowTheEnd) {
  std::string text(29990, 'a');
  for (int i = 0; i < 9000; ++i) {
    text += "line " + std::to_string(i) + "\n";
  }
  text += std::string(70000, 'z');
  theTextPane->appendText(text.c_str());
  theTextPane->selectAll();
  EXPECT_TRUE(selected() == text);
  theTextPane->scrollToTop();
  theTextPane->appendText("");
  EXPECT_EQ(selected(), "");
  theTextPane->numberLines();
  theTextPane->setNumbering(true);
  theTextPane->appendText(text.c_str());
  EXPECT_TRUE(ui::isEndInView(log()));
  const std::string numbered = logText();
  EXPECT_EQ(numbered.size(), 2 * text.size() + std::size_t{18000} * 8);
  EXPECT_EQ(theTextPane->textEnd(), static_cast<int>(numbered.size()));
  EXPECT_NE(numbered.find("\n 18000: zzz"), std::string::npos);
  theTextPane->unnumberLines();
  EXPECT_TRUE(logText() == text + text);

  const std::string banner = "------------- Text Log Cleared --------------\r\n";
  theTextPane->clear();
  EXPECT_EQ(logText(), banner);
  EXPECT_EQ(theTextPane->textEnd(), 47);
  // Intended: the line behind the banner has no number, the next one is 2.
  theTextPane->appendText("x\ny\n");
  EXPECT_EQ(logText(), banner + "x\n     2: y\n     3: ");
  theTextPane->unnumberLines();
  theTextPane->numberLines();
  EXPECT_EQ(logText(), banner + "     1: x\n     2: y\n     3: ");
}

TEST_F(TextAreaTest, HeldTextsAreShownTogetherByThemselvesAndBeforeAnyoneAsksTheLog) {
  const auto shown = [] { return ui::textOf(log()); };
  theTextPane->holdText("one\n");
  theTextPane->holdText("two\n");
  EXPECT_EQ(shown(), "");
  ui::waitFor([&] { return !shown().empty(); }, "the texts");
  std::string all = "one\ntwo\n";
  EXPECT_EQ(shown(), all);
  zEvent key = zEvent::of(kMsgKeyDown, kKeyLeftControl);
  const std::vector<std::function<bool()>> questions = {
      [&] { return theTextPane->textLength() == static_cast<int>(all.size()); },
      [&] { return logText() == all; },
      [&] { return theTextPane->selectAll(), selected() == all; },
      [&] { return theTextPane->scrollToEnd(), ui::isEndInView(log()); },
      [&] { return theTextPane->handle(&key), shown() == all; },
      [&] { return theTextPane->findText("held 5", false, true, false), selected() == "held 5"; },
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

TEST_F(TextAreaTest, TheLogLeavesKeysToItsWidgetAndTypingToTheCommandLine) {
  appendLines(3);
  const std::string before = logText();
  ui::focus(*theTextPane);
  for (const ui::KeySymbol key : {XK_Delete, XK_Left, XK_Insert, XK_End}) {
    ui::pressKey(key);
    ui::pressKey(key, ui::kControl);
  }
  ui::pressKey(XK_Tab);
  ui::waitForFocus(theCommandLine->widget());
  ui::focus(*theTextPane);
  theCommandLine->setText("1;go ");
  for (const auto& [key, next] : {std::pair<ui::KeySymbol, const char*>{XK_a, "b"},
                                  {XK_BackSpace, "\xE4"},
                                  {XK_Return, ""}}) {
    ui::focus(*theTextPane);
    ui::pressKey(key);
    EXPECT_TRUE(ui::focusIs(theCommandLine->widget()));
    ui::typeText(next);
  }
  EXPECT_THAT(commandQueue, testing::ElementsAre("go a\xE4"));
  EXPECT_EQ(logText(), before);
}

// Levels from 0 to 20; 4 at the start. The sizes are tenths of a point.
TEST_F(TextAreaTest, ZoomChangesTheLettersAloneAndTellsWhatIsPossible) {
  std::string told;
  theTextPane->setZoomListener([&](int command, bool possible) {
    told += std::string(possible ? " " : " no ") + (command == kCommandZoomIn ? "in" : "out");
  });
  appendLines(200);
  ui::drain();
  const ui::ScreenArea place = ui::areaOf(log());
  const auto expectLevel = [&](int level, const zPrPoint& size) {
    EXPECT_EQ(theTextPane->zoomLevel(), level);
    EXPECT_EQ(letterOf(zRCFont({"courier new", size, kFontNormal, kPitchFixed})),
              theTextPane->fontObject()->measure("X", 1));
    ui::drain();
    EXPECT_EQ(ui::areaOf(log()), place) << "the log keeps its place and size";
  };
  expectLevel(4, {90, 102});
  for (int level = 5; level <= 21; ++level, told.clear()) {
    theTextPane->zoomIn();
    EXPECT_EQ(told, level < 20 ? " in out" : " no in out");
    ui::drain();
    EXPECT_TRUE(ui::isEndInView(log())) << "who saw the end goes on seeing it";
  }
  expectLevel(20, {314, 358});
  theTextPane->scrollToTop();
  for (int level = 19; level >= -1; --level, told.clear()) {
    theTextPane->zoomOut();
    EXPECT_EQ(told, level > 0 ? " out in" : " no out in");
  }
  expectLevel(0, {34, 38});
  EXPECT_EQ(ui::topLineOf(log()), 0) << "who did not see the end does not see it now";
  theTextPane->setZoomListener({});
}

// Intended: pages do not follow the zoom, and it is the pointer that ends what Control began, not
// the release of the key.
TEST_F(TextAreaTest, PageKeysOfEitherControlGoByPagesOrBehindControlToTheEnds) {
  appendLines(500);
  const int page = theTextPane->linesPerPage();
  EXPECT_EQ(page, theTextPane->linesHeight() / letterOf(zRCFont(11)).height);
  const auto press = [](ui::KeySymbol key) {
    ui::pressKey(key);
    return ui::topLineOf(log());
  };
  for (zControl* control : std::initializer_list<zControl*>{theCommandLine, theTextPane}) {
    ui::focus(*control);
    theTextPane->scrollToTop();
    EXPECT_EQ(press(XK_Page_Down), page);
    EXPECT_EQ(press(XK_Page_Down), 2 * page);
    EXPECT_EQ(press(XK_Page_Up), page);
    press(XK_Control_L);
    EXPECT_EQ(press(XK_Page_Up), 0);
    press(XK_Page_Down);
    EXPECT_TRUE(ui::isEndInView(log()));
    for (const bool enters : {true, false}) {
      press(XK_Control_L);
      enters ? ui::moveTo(control->widget(), 5, 5) : movePointerAway();
      ui::waitFor([] { return !theTextPane->controlHeld(); }, "the latch to fall");
    }
    theTextPane->zoomOut();
    ui::drain();
  }
  for (const bool isBehindControl : {false, true}) {
    if (isBehindControl) {
      press(XK_Control_L);
    }
    ui::pressKey(XK_A, ui::kAlt);
    EXPECT_EQ(selected() == logText(), isBehindControl);
  }
}

TEST_F(TextAreaTest, LogAndCommandLineFollowTheFrameAndTheKeyboardStays) {
  appendLines(100);
  const int strip = 2 * letterOf(zRCFont(11)).height;
  frame.moveResize(100, 100, 300, 184);
  ui::ScreenArea inside{};
  const auto hasFollowed = [&] {
    inside = ui::areaOf(frame.widget());
    const ui::ScreenArea line = ui::areaOf(theCommandLine->holder());
    return inside.width < 320 && line.x == inside.x + 80 && line.width == inside.width - 82;
  };
  ui::waitFor(hasFollowed, "the command line in its place");
  EXPECT_EQ(ui::areaOf(theTextPane->holder()),
            (ui::ScreenArea{inside.x, inside.y, inside.width, inside.height - strip}));
  const ui::ScreenArea line = ui::areaOf(theCommandLine->widget());
  EXPECT_LE(line.y + line.height, inside.y + inside.height);
  ui::waitForFocus(theCommandLine->widget());
  EXPECT_TRUE(ui::isEndInView(log()));
}

}  // namespace
