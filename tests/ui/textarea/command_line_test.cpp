// The command line: the history and its keys. Nothing is sent, since there is no link.

#include "link/wire.h"
#include "tests/ui/textarea/textarea_fixture.h"
#include "textarea/command_queue.h"

namespace {

using testing::ElementsAre;

std::vector<std::string> history() {
  std::vector<std::string> items;
  for (int row = 0; row < theCommandLine->count(); ++row) {
    RWCString text;
    theCommandLine->itemText(text, row);
    items.emplace_back(text.str());
  }
  return items;
}

std::string entry() {
  return theCommandLine->text().str();
}

TEST_F(TextAreaTest, HistoryHasTheNewestFirstAndOnlyTheNewestIsCompared) {
  theCommandLine->setText("typed");
  theCommandLine->addToHistory("");
  EXPECT_THAT(history(), ElementsAre());
  theCommandLine->setText("");
  for (const char* command : {"A", "B", "A", "A", ""}) {
    theCommandLine->addToHistory(command);
  }
  EXPECT_THAT(history(), ElementsAre("", "A", "B", "A"));
  // Intended: what is being typed goes in front of the confirmed command.
  ui::typeText("x");
  theCommandLine->addToHistory("y");
  theCommandLine->addToHistory("y");
  EXPECT_THAT(history(), ElementsAre("xy", "xy", "", "A", "B", "A"));
  EXPECT_EQ(entry(), "x");
}

TEST_F(TextAreaTest, SeveralLinesBecomePiecesInTheHistoryAndInTheEntry) {
  for (int i = 0; i < 2; ++i) {
    theCommandLine->addToHistory("a\nb\n");
  }
  EXPECT_THAT(history(), ElementsAre("a;b"));
  theCommandLine->setText("print \"");
  theTextPane->appendText("c\nd\n");
  theTextPane->setSelection(0, 4);
  ui::click(theCommandLine->widget(), ui::kMiddleButton);
  ui::waitFor([] { return entry() == "print \"c\";d"; }, "the pasted lines");
}

TEST_F(TextAreaTest, ReturnEmptiesTheEntryAndTheKeysBrowseTheHistory) {
  for (const char* command : {"old", "middle", "new"}) {
    theCommandLine->addToHistory(command);
  }
  ui::typeText("first;second;third");
  ui::pressKey(XK_Return);
  EXPECT_EQ(entry(), "");
  EXPECT_EQ(theCommandLine->curSel(), -1);
  EXPECT_THAT(commandQueue, ElementsAre("second", "third"));
  EXPECT_EQ(history().size(), 3U) << "Return alone is no confirmation";
  using Step = std::pair<ui::KeySymbol, const char*>;
  for (const auto& [key, shown] :
       {Step{XK_Down, "new"}, Step{XK_Down, "middle"}, Step{XK_Down, "old"}, Step{XK_Down, "old"},
        Step{XK_Up, "middle"}, Step{XK_Up, "new"}, Step{XK_Up, "new"}}) {
    ui::pressKey(key);
    EXPECT_EQ(entry(), shown);
  }
  ui::pressKey(XK_Return);
  EXPECT_EQ(entry(), "");
  EXPECT_EQ(theCommandLine->curSel(), -1);
  ui::pressKey(XK_Down);
  EXPECT_EQ(entry(), "new") << "begins at the newest again";
  theCommandLine->showDropDown();
  ASSERT_TRUE(theCommandLine->isDropDownShown());
  zEvent event = zEvent::of(kMsgKeyDown, kKeyReturn);
  EXPECT_EQ(theCommandLine->handle(&event), 1);
  EXPECT_FALSE(theCommandLine->isDropDownShown());
}

TEST_F(TextAreaTest, ALineThatCannotBeSentStaysInTheEntryAndTheLogSaysWhy) {
  commandQueue = {"waiting"};
  const std::string line = "short;" + std::string(kMaxSentText + 1, 'c');
  theCommandLine->setText(line.c_str());
  ui::pressKey(XK_Return);
  EXPECT_EQ(entry(), line);
  EXPECT_EQ(logText(), "< Command of 16369 bytes is too long to be sent (at most 16368) >\n");
  EXPECT_THAT(commandQueue, ElementsAre("waiting"));
}

TEST_F(TextAreaTest, TypingRightAfterBrowsingReplacesTheEntryAndLosesNoKey) {
  theCommandLine->addToHistory("browsed");
  ui::pressKey(XK_Down);
  ui::typeText("a");
  bool isIdle = false;
  const Milliseconds kLongEnoughForIdleWork{20};
  const ui::Ticker ticker(kLongEnoughForIdleWork, [&] { isIdle = true; });
  ui::waitFor([&] { return isIdle; }, "idle work");
  ui::typeText("b");
  EXPECT_EQ(entry(), "ab");
}

TEST_F(TextAreaTest, TypesEveryLetterOfLatinOneInEveryLocale) {
  ui::typeText("a\xE4\xFF~\xA7");
  EXPECT_EQ(entry(), "a\xE4\xFF~\xA7");
  theCommandLine->addToHistory("\xC3\xA4");
  ui::pressKey(XK_Return);
  ui::pressKey(XK_Down);
  EXPECT_EQ(entry(), "a\xE4\xFF~\xA7\xC3\xA4");
}

}  // namespace
