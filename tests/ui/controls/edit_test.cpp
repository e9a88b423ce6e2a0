// The edit controls: text, selection, limits, notifications; and the input of numbers.

#include "framework/controls/formatted_edit.h"
#include "tests/ui/controls/control_fixture.h"

#include <X11/keysym.h>

namespace {

using testing::ElementsAre;

class EditTest : public ControlTest {
 protected:
  static constexpr std::uint32_t kLineStyle = 0x50890080;
  static constexpr std::uint32_t kLogStyle = 0x50B108C4;

  zEditLine* makeLine(const char* text = "", int id = 1, int y = 10) {
    auto* line = new zEditLine(frame.get(), new zSizer(10, y, 200, 30), kLineStyle, text, id);
    ui::drain();
    return line;
  }
  zEditBox* makeLog() {
    auto* box = new zEditBox(frame.get(), new zSizer(10, 60, 300, 120), kLogStyle, "", 2);
    ui::drain();
    return box;
  }
  zLongEdit* makeLong(long* value, int y = 10) {
    auto* edit = new zLongEdit(frame.get(), new zSizer(10, y, 200, 30), 0x50810080, 1, value);
    ui::drain();
    return edit;
  }
  /// Marks `text` in a line of its own, for the middle mouse button to paste.
  void mark(const char* text) {
    auto* source = new zEditBox(frame.get(), new zSizer(10, 250, 200, 40), kLogStyle, text, 9);
    ui::drain();
    source->setSelection(0, source->textLength());
  }
  static void pasteAtEnd(zEditBase& edit) {
    ui::click(edit.widget(), ui::areaOf(edit.widget()).width - 5, 10, ui::kMiddleButton);
  }
};

TEST_F(EditTest, TheSelectionIsCutToTheTextAndTheProgramInsertsAnywhere) {
  for (zEditBase* edit : std::initializer_list<zEditBase*>{makeLine("abc"), makeLog()}) {
    // A selection, or where to insert a text; and what is seen then.
    const struct {
      int from, to;
      const char* inserted;
      const char* view;
    } steps[] = {
        {1, 2, nullptr, "a[b]^c"}, {2, 90, nullptr, "ab[c]^"}, {-4, 2, nullptr, "[ab]^c"},
        {3, 1, nullptr, "a^bc"},   {5, 5, nullptr, "abc^"},    {1, 0, "12", "a12^bc"},
        {-1, 0, "0", "0^a12bc"},   {4000, 0, "!", "0a12bc!^"}, {1, 3, nullptr, "0[a1]^2bc!"},
    };
    edit->setText("abc");
    EXPECT_EQ(textView(edit->widget()), "abc^");
    for (const auto& step : steps) {
      step.inserted != nullptr ? edit->insertAt(step.from, step.inserted)
                               : edit->setSelection(step.from, step.to);
      EXPECT_EQ(textView(edit->widget()), step.view);
    }
    EXPECT_EQ(edit->selection(), RWCString("a1"));
    EXPECT_EQ(edit->selectionRange(), (zTextRange{1, 3}));
    EXPECT_EQ(edit->insertionPosition(), 3);
    edit->setSelection(2, 2);
    EXPECT_EQ(edit->selection(), RWCString(""));
    EXPECT_FALSE(edit->selectionRange());
    edit->selectForTyping();
    EXPECT_EQ(textView(edit->widget()), "[0a12bc!]^");
  }
  ControlFrame hidden;
  zEditLine unseen(&hidden, new zSizer(0, 0, 80, 30), kLineStyle, "abc", 1);
  unseen.setSelection(0, 2);
  EXPECT_EQ(textView(unseen.widget()), "ab^c") << "only the insertion point before it is realized";
}

TEST_F(EditTest, TheMaximumLengthBindsTheUserOnlyAndTheParentIsToldOfWhatHappens) {
  zEditLine* edit = makeLine();
  edit->setMaxLength(3);
  focus(*makeLine("", 2, 50));
  edit->setFocus();
  ui::waitForFocus(edit->widget());
  ui::typeText("abcde\n");
  EXPECT_EQ(edit->text(), RWCString("abc"));
  edit->setText("longer text");
  ui::pressKey('a', ui::kAlt);
  ui::pressKey(XK_Clear);
  EXPECT_EQ(edit->text(), RWCString("longer text")) << "no control characters";
  EXPECT_EQ(told(), (Told{{2, kEditFocusLost},
                          {1, kEditFocusGained},
                          {1, kEditChanged},
                          {1, kEditChanged},
                          {1, kEditChanged},
                          {1, kEditReturn},
                          {1, kEditChanged}}));
  edit->setMaxLength(0);
  edit->setText(std::string(31999, 'x').c_str());
  ui::typeText("yz");
  EXPECT_EQ(edit->textLength(), 32000);
}

TEST_F(EditTest, ALineStaysOneLineAndStoresWhatTheUserHasLeftAloneAsItWas) {
  zEditLine* edit = makeLine("one\n");
  EXPECT_EQ(edit->text(), RWCString("one"));
  EXPECT_EQ(edit->storeData() + edit->showData(), 0);
  RWCString bound = "two\nlines\n";
  edit->setBoundString(&bound);
  EXPECT_EQ(edit->showData(), 1);
  EXPECT_EQ(edit->text(), RWCString("two lines"));
  bound = "";
  EXPECT_EQ(edit->storeData(), 1);
  EXPECT_EQ(bound, RWCString("two\nlines\n"));
  focus(*edit);
  mark("a\x01z\n");
  pasteAtEnd(*edit);
  ui::waitFor([&] { return edit->text() == RWCString("two linesa z"); }, "the pasted text");
  edit->insertAt(99, "!\n");
  edit->storeData();
  EXPECT_EQ(bound, RWCString("two linesa z!"));
}

TEST_F(EditTest, ALowLineKeepsRoomForItsText) {
  zEditLine* edit = makeLine("Xg");
  edit->setFontSpec(zFontSpec("courier", {0, 14}), 1);
  const int text = 2 * ui::resource(edit->widget(), "shadowThickness") +
                   ui::areaOf(edit->widget()).height - edit->linesHeight();
  EXPECT_GT(text, 0);
  std::vector<std::vector<int>> edges;
  for (const int height : {12, 20, 22, 24, 26, 60}) {
    edit->moveResize(10, 10, 200, height);
    edges.push_back(numbers(edit->widget(), {"highlightThickness", "marginHeight"}));
  }
  EXPECT_TRUE(std::is_sorted(edges.begin(), edges.end()));
  EXPECT_THAT(edges.front(), ElementsAre(0, 0));
  EXPECT_THAT(edges.back(), ElementsAre(2, 1));
}

TEST_F(EditTest, ALogScrollsByLinesAndTellsWhatIsInView) {
  zEditBox* log = makeLog();
  for (int line = 0; line < 50; ++line) {
    log->insertAt(log->textLength(), "line\n");
  }
  ui::drain();
  log->bringIntoView(0);
  const int lines = log->linesHeight() / 13;
  EXPECT_GT(lines, 3);
  EXPECT_TRUE(log->isInView(0));
  EXPECT_FALSE(log->isInView(200));
  log->scroll(2);
  EXPECT_EQ(ui::topLineOf(log->widget()), 2);
  log->scroll(-90);
  EXPECT_EQ(ui::topLineOf(log->widget()), 0);
  log->bringIntoView(log->textLength());
  EXPECT_TRUE(log->isInView(log->textLength()));
  log->setBackground(zColor(0x8090A0));
  for (const char* bar : {"VertScrollBar", "HorScrollBar"}) {
    EXPECT_EQ(ui::resource(ui::part(log->holder(), bar), "background"),
              ui::resource(log->widget(), "background"));
  }
}

TEST_F(EditTest, ANumberShowsItsValueAndStoresWhatIsTyped) {
  long value = 0;
  zLongEdit* edit = makeLong(&value);
  EXPECT_EQ(textView(edit->widget()), "[0]^");
  mark("mark");
  for (const long number : {0L, -45L, 17L}) {
    value = number;
    EXPECT_EQ(edit->showData(), 1);
    EXPECT_EQ(textView(edit->widget()), "[" + std::to_string(number) + "]^");
    EXPECT_EQ(edit->storeData(), 1);
    EXPECT_EQ(value, number);
  }
  focus(*edit);
  ui::typeText("9876543210");
  edit->storeData();
  EXPECT_EQ(value, 9876543210L);
  edit->setText("");
  edit->storeData();
  EXPECT_EQ(value, 0);
  pasteAtEnd(*edit);
  ui::drain();
  EXPECT_EQ(edit->text(), RWCString("")) << "what the user has marked is no number";
  zLongEdit* unbound = makeLong(nullptr);
  EXPECT_EQ(unbound->storeData() + unbound->showData(), 0);
}

TEST_F(EditTest, ANumberTakesOnlyKeysThatKeepItOne) {
  zLongEdit* edit = makeLong(nullptr);
  focus(*edit);
  const std::tuple<const char*, ui::KeySymbol, const char*, std::size_t> steps[] = {
      {"a-1-2b34567890123\xe4", 0, "-1234567890^", 11},
      {"x", 0, "-1234567890^", 0},
      {"", XK_Home, "^-1234567890", 0},
      {"7", 0, "^-1234567890", 0},
      {"", XK_Delete, "^1234567890", 1},
      {"", XK_End, "1234567890^", 0},
      {"", XK_BackSpace, "123456789^", 1},
      {"", XK_Left, "12345678^9", 0},
      {"0", 0, "123456780^9", 1}};
  for (const auto& [typed, key, view, changes] : steps) {
    key != 0 ? ui::pressKey(key) : ui::typeText(typed);
    EXPECT_EQ(textView(edit->widget()), view);
    EXPECT_EQ(told(), Told(changes, {1, kEditChanged}));
  }
  EXPECT_EQ(edit->formattedText(kNumRead), RWCString("1234567809"));
  edit->setSelection(1, 9);
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(textView(edit->widget()), "1^9");
  edit->setSelection(0, 2);
  ui::typeText("5");
  EXPECT_EQ(textView(edit->widget()), "5^");
  told();
  ui::pressKey('5', ui::kControl);
  ui::pressKey(XK_Return);
  EXPECT_EQ(told(), (Told{{1, kEditReturn}}));
  mark("12");
  pasteAtEnd(*edit);
  ui::waitFor([&] { return edit->text() == RWCString("512"); }, "the pasted number");
}

TEST_F(EditTest, AnInvalidNumberKeepsTheDialogAndIsSelected) {
  long value = 3;
  zLongEdit* edit = makeLong(&value);
  edit->setText("-");
  EXPECT_EQ(frame->storeChildren(), 0);
  EXPECT_FALSE(edit->isValid());
  EXPECT_EQ(textView(edit->widget()), "[-]^");
  edit->setText("12");
  edit->insertAt(2, "x4");
  EXPECT_EQ(frame->storeChildren(), 0);
  EXPECT_EQ(textView(edit->widget()), "12[x4]^") << "the program may put in what it likes";
  EXPECT_EQ(value, 3);
  ui::waitForFocus(edit->widget());
  ui::typeText("8");
  EXPECT_EQ(frame->storeChildren(), 1);
  EXPECT_EQ(value, 128);
  edit->insertAt(3, "xyz");
  edit->setSelection(5, 6);
  for (int key = 0; key < 3; ++key) {
    ui::pressKey(XK_BackSpace);
  }
  EXPECT_EQ(edit->text(), RWCString("128")) << "mended from its end";
}

}  // namespace
