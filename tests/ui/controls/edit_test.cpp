// The edit controls: text, selection, limits, notifications; and the input of numbers.

#include "framework/controls/formatted_edit.h"
#include "tests/ui/controls/control_fixture.h"

namespace {

class EditTest : public ControlTest {
 protected:
  /// Marks `text` in the log and puts it in by the middle mouse button.
  void paste(const char* text, const zEditBase& edit) {
    log.setText(text);
    log.setSelection(0, log.textLength());
    ui::click(edit.widget(), ui::areaOf(edit.widget()).width - 5, 10, ui::kMiddleButton);
    heard();
  }
  /// What is seen, and what has been told.
  std::string state(const zEditBase& edit) {
    ui::drain();
    return ui::textView(edit.widget()) + " " + heard();
  }

  zEditLine line{&frame, place(10), kStyleControlStop, "one\n", 1};
  zEditBox log{&frame, place(150, 120), kStyleControl | kStyleBothScrolls | kEditReadOnly, "", 2};
};

TEST_F(EditTest, TheSelectionIsCutToTheTextAndTheProgramInsertsAnywhere) {
  // A selection, or where to insert a text; and what is seen then.
  const std::tuple<int, int, const char*, const char*> steps[] = {
      {1, 2, nullptr, "a[b]^c"}, {2, 90, nullptr, "ab[c]^"}, {-4, 2, nullptr, "[ab]^c"},
      {3, 1, nullptr, "a^bc"},   {5, 5, nullptr, "abc^"},    {1, 0, "12", "a12^bc"},
      {-1, 0, "0", "0^a12bc"},   {4000, 0, "!", "0a12bc!^"}, {1, 3, nullptr, "0[a1]^2bc!"}};
  for (zEditBase* edit : std::initializer_list<zEditBase*>{&line, &log}) {
    edit->setText("abc");
    for (const auto& [from, to, inserted, view] : steps) {
      inserted != nullptr ? edit->insertAt(from, inserted) : edit->setSelection(from, to);
      EXPECT_EQ(ui::textView(edit->widget()), view);
    }
    EXPECT_EQ(edit->selection(), RWCString("a1"));
    EXPECT_EQ(edit->selectionRange(), (zTextRange{1, 3}));
    EXPECT_EQ(edit->insertionPosition(), 3);
    edit->setSelection(2, 2);
    EXPECT_EQ(edit->selectionRange(), std::nullopt);
    EXPECT_EQ(ui::resource(edit->widget(), "cursorPositionVisible"), edit == &line ? 1 : 0);
  }
}

TEST_F(EditTest, ALineTakesWhatTheUserTypesInOneLineOfItsLengthAndTellsIt) {
  EXPECT_EQ(line.storeData() + line.showData(), 0);
  RWCString bound;
  line.setBoundString(&bound);
  line.storeData();
  EXPECT_EQ(bound, RWCString("one\n"));
  line.setMaxLength(3);
  ui::focus(line);
  ui::pressKey(XK_Delete);
  ui::typeText("ab\n");
  EXPECT_EQ(state(line), "a^ne 1:256 1:768 1:768 1:1792 ");
  ui::focus(*elsewhere);
  line.setText("longer text");
  ui::focus(line);
  EXPECT_EQ(state(line), "longer text^ 1:512 1:768 1:256 ");
  bound = "two\nlines\n";
  EXPECT_EQ(line.showData(), 1);
  bound = "";
  EXPECT_EQ(line.storeData(), 1);
  EXPECT_EQ(bound, RWCString("two\nlines\n")) << "as it was, when the user has left it alone";
  line.setMaxLength(0);
  paste("a\x01z\n", line);
  line.insertAt(99, "!\n");
  line.storeData();
  EXPECT_EQ(bound, RWCString("two linesa z!"));
}

TEST_F(EditTest, ANumberTakesOnlyWhatKeepsItOneAndKeepsTheDialogWhileItIsNone) {
  long value = -45;
  zLongEdit edit(&frame, place(50), kStyleControlStop, 3, &value);
  EXPECT_EQ(ui::textView(edit.widget()), "[-45]^");
  ui::focus(edit);
  heard();
  const std::tuple<const char*, ui::KeySymbol, const char*> steps[] = {
      {"a-1-23\xe4", 0, "-123^ 3:768 3:768 3:768 3:768 "},
      {"", XK_Home, "^-123 "},
      {"7", 0, "^-123 "},
      {"", XK_Delete, "^123 3:768 "},
      {"", XK_End, "123^ "},
      {"", XK_BackSpace, "12^ 3:768 "},
      {"", XK_Left, "1^2 "},
      {"0\n", 0, "10^2 3:768 3:1792 "}};
  for (const auto& [typed, key, expected] : steps) {
    key != 0 ? ui::pressKey(key) : ui::typeText(typed);
    EXPECT_EQ(state(edit), expected);
  }
  edit.storeData();
  EXPECT_EQ(value, 102);
  edit.setSelection(0, 3);
  ui::typeText("5");
  ui::pressKey('5', ui::kControl);
  paste("12", edit);
  paste("mark", edit);
  EXPECT_EQ(ui::textView(edit.widget()), "512^") << "what the user has marked must be a number";

  // The program may put in what it likes.
  edit.insertAt(2, "x4");
  EXPECT_EQ(frame.storeChildren(), 0);
  EXPECT_EQ(state(edit), "51[x42]^ 3:768 ");
  ui::typeText("8");
  EXPECT_EQ(frame.storeChildren(), 1);
  EXPECT_EQ(value, 518);
  edit.setText("");
  edit.storeData();
  EXPECT_EQ(value, 0);
}

}  // namespace
