#include "framework/core/message_box.h"

#include <algorithm>

#include "tests/ui/core/core_test.h"

namespace {

constexpr const char* kBoxTitle = "Korvane - Page file";

struct MessageBox : testing::Test {
  MessageBox() {
    ui::bringUp(*main);
    ui::bringUp(*frame);
    noted();
  }

  /// Notes the answer of a box that is answered by `action`.
  void answer(int style, const std::function<void()>& action, const std::string& text = "Text") {
    const auto act = [&] {
      const auto hasFocus = [&] { return (look = ui::look(kBoxTitle)).find("focus") != look.npos; };
      ui::waitFor(hasFocus, "the focus on a button");
      action();
    };
    const auto ask = [&] { return zMessage(frame.get(), text.c_str(), kBoxTitle, style).result; };
    note(std::to_string(ui::inDialog(kBoxTitle, act, ask)));
  }

  std::unique_ptr<TestFrame> main = std::make_unique<TestFrame>();
  std::unique_ptr<TestFrame> frame = std::make_unique<TestFrame>();
  std::string look;  ///< of the box, once it has the keyboard
};

// Its look, its modality, then the answers: to Return, to each button, to Tab and Return, to
// Escape, to a close.
TEST_F(MessageBox, ShowsItsStyleAndAnswersByMouseKeyboardAndTheWindowManagersClose) {
  for (const auto& [style, expected] : {
           std::pair(kBoxOk + 0, "{} Text --- [OK] default focus 1: 1 1 1 0 0 "),
           {kBoxStop | kBoxOkCancel | kBoxFullModal,
            "{error} Text --- [OK] default focus [Cancel] 2: 1 1 2 2 2 2 "},
           {kBoxQuestion | kBoxAbortRetryIgnore,
            "{question} Text --- [Abort] default focus [Retry] [Ignore] 1: 3 3 4 5 4 4 4 "},
           {kBoxWarning | kBoxYesNoCancel,
            "{warning} Text --- [Yes] default focus [No] [Cancel] 1: 6 6 7 2 7 2 2 "},
           {kBoxInformation | kBoxYesNo,
            "{information} Text --- [Yes] default focus [No] 1: 6 6 7 7 7 7 "},
           {0x50 | kBoxRetryCancel, "{} Text --- [Retry] default focus [Cancel] 1: 4 4 2 2 2 2 "},
           {6 | kBoxSystemModal, "{} Text --- [OK] default focus [Cancel] 3: 1 1 2 2 2 2 "},
       }) {
    std::string modality;
    answer(style, [&] {
      modality = std::to_string(ui::resource(ui::part(kBoxTitle, "MessageBox"), "dialogStyle"));
      ui::pressKey(XK_Return);
    });
    std::replace(look.begin(), look.end(), '\n', ' ');
    const std::string seen = look + modality + ": ";
    for (auto left = std::count(seen.begin(), seen.end(), '['); left > 0; --left) {
      answer(style,
             [left] { ui::click(*(ui::partsOf(ui::part(kBoxTitle, "MessageBox")).end() - left)); });
    }
    answer(style, [] { ui::typeText("\t\n"); });
    answer(style, [] { ui::pressKey(XK_Escape); });
    answer(style, [] { ui::closeByWindowManager(ui::windowWithTitle(kBoxTitle)); });
    EXPECT_EQ(seen + noted(), expected);
  }
}

TEST_F(MessageBox, ShowsAnyTextWholeWithItsButtonsOnTheScreen) {
  const std::string wide(140, 'w');
  std::string lines = "byte \xe4\xff";
  for (int line = 2; line <= 40; ++line) {
    lines += "\nline " + std::to_string(line);
  }
  for (const auto& [text, scrolls] :
       {std::pair(lines, false), {lines + "\n", true}, {wide, false}, {wide + "w", true}}) {
    answer(
        kBoxWarning,
        [&] {
          EXPECT_TRUE(look.starts_with("{warning}\n" +
                                       (scrolls ? "<" + text + ">\nbar" : text + "\n---\n")))
              << look;
          const ui::ScreenArea box = ui::areaOf(ui::windowWithTitle(kBoxTitle));
          EXPECT_TRUE(box.x >= 0 && box.x + box.width <= 1280) << box.x;
          EXPECT_TRUE(box.y >= 0 && box.y + box.height <= 1024) << box.y;
          ui::pressKey(XK_F1);  // stands for a button that is not there
          ui::pressKey(XK_Return);
        },
        text);
  }
  EXPECT_EQ(noted(), "1 1 1 1 ");
}

// The boxes share the flag that ends their wait; other code relies on the outer box going too.
TEST_F(MessageBox, EndsWithoutAnAnswerWithTheBoxOverItOrWithItsParent) {
  // A box of any modality leaves the keyboard to the one over it.
  answer(kBoxSystemModal | kBoxOkCancel, [&] {
    const auto enter = [] { ui::pressKey(XK_Return); };
    const auto ask = [] { return zMessage(nullptr, nullptr, "Inner", kBoxOk).isOk(); };
    note(ui::inDialog("Inner", enter, ask) ? "ok" : "not");
  });
  answer(kBoxOkCancel, [&] { frame.reset(); });
  answer(kBoxOkCancel, [&] { main.reset(); });
  EXPECT_EQ(noted(), "ok 0 0 0 ");
  EXPECT_EQ(zMessage(nullptr, "Text", kBoxTitle, kBoxOk).result, kAnswerNone) << "no main window";
}

}  // namespace
