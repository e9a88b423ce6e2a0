// The command line: the history and its keys. Nothing is sent, since there is no link.

#include "link/wire.h"
#include "tests/ui/textarea/textarea_fixture.h"

namespace {

/// The entry and, behind a colon, the history.
std::string state() {
  std::string all = theCommandLine->text().str() + ":";
  for (int row = 0; row < theCommandLine->count(); ++row) {
    RWCString text;
    theCommandLine->itemText(text, row);
    all += " '" + text.str() + "'";
  }
  return all;
}

std::string confirm(const char* typed, const char* confirmed) {
  theCommandLine->setText(typed);
  theCommandLine->addToHistory(confirmed);
  return state();
}

TEST_F(TextAreaTest, HistoryHasTheNewestFirstAsOneLineAndOnlyTheNewestIsCompared) {
  EXPECT_EQ(confirm("typed", ""), "typed:");
  for (const char* command : {"A", "B", "A", "A", "", "a\nb\n", "a\nb"}) {
    confirm("", command);
  }
  EXPECT_EQ(state(), ": 'a;b' '' 'A' 'B' 'A'");
  // Intended: what is being typed goes in front of the confirmed command.
  confirm("x", "y");
  EXPECT_EQ(confirm("x", "y"), "x: 'xy' 'xy' 'a;b' '' 'A' 'B' 'A'");
  theCommandLine->setText("print \"");
  theTextPane->appendText("c\nd\n");
  theTextPane->setSelection(0, 4);
  ui::click(theCommandLine->widget(), ui::kMiddleButton);
  ui::waitFor([] { return entry() == "print \"c\";d"; }, "the pasted lines");
}

TEST_F(TextAreaTest, ReturnEmptiesTheEntryAndTheKeysBrowseTheHistory) {
  confirm("", "old");
  confirm("", "new");
  ui::typeText("first;second;third\n");
  EXPECT_EQ(state(), ": 'new' 'old'") << "Return alone is no confirmation";
  EXPECT_THAT(commandQueue, testing::ElementsAre("second", "third"));
  using Step = std::pair<ui::KeySymbol, const char*>;
  for (const auto& [key, shown] :
       {Step{XK_Down, "new"}, Step{XK_Down, "old"}, Step{XK_Down, "old"}, Step{XK_Up, "new"},
        Step{XK_Up, "new"}, Step{XK_Down, "old"}, Step{XK_Return, ""}, Step{XK_Down, "new"}}) {
    ui::pressKey(key);
    EXPECT_EQ(entry(), shown);
  }
  theCommandLine->showDropDown();
  zEvent event = zEvent::of(kMsgKeyDown, kKeyReturn);
  EXPECT_EQ(theCommandLine->handle(&event), 1);
  EXPECT_FALSE(theCommandLine->isDropDownShown());
  EXPECT_EQ(theCommandLine->curSel(), -1);

  commandQueue = {"waiting"};
  for (const std::size_t length : {kMaxSentText, kMaxSentText + 1}) {
    const std::string line = "short;" + std::string(length, 'c');
    theCommandLine->setText(line.c_str());
    ui::pressKey(XK_Return);
    const bool isSent = length == kMaxSentText;
    EXPECT_EQ(entry(), isSent ? "" : line);
    EXPECT_EQ(logText(), isSent ? ""
                                : "< Command of 16369 bytes is too long to be sent (at most 16368) "
                                  ">\n");
    EXPECT_EQ(commandQueue.front().size(), kMaxSentText) << "what waits stays";
  }
}

TEST_F(TextAreaTest, ShowsAndTakesEveryByteInEveryLocale) {
  std::string bytes;
  for (int c = 1; c < 256; ++c) {
    bytes += static_cast<char>(c);
  }
  bytes += "\xE4\xC3\xA4\xC3\n";
  theTextPane->appendText(bytes.c_str());
  theTextPane->appendText(nullptr);
  EXPECT_EQ(logText(), bytes);
  EXPECT_EQ(theTextPane->textEnd(), 260);
  ui::typeText("a\xE4\xFF~\xA7");
  EXPECT_EQ(entry(), "a\xE4\xFF~\xA7");
}

}  // namespace
