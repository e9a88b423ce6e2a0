#include "framework/core/message_box.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>

namespace {

constexpr const char* kTitle = "Korvane - Page file";

/// The button of a message box with this label.
Widget button(const std::string& label) {
  const std::vector<Widget> parts = ui::partsOf(ui::part(kTitle, "MessageBox"));
  return *std::find_if(parts.begin(), parts.end(),
                       [&](Widget part) { return ui::textOf(part) == label; });
}

class MessageBox : public testing::Test {
 protected:
  MessageBox() {
    frame->sizer()->setSize({300, 200});
    frame->show();
    ui::waitForDialog("Parent");
  }
  ~MessageBox() override {
    frame.reset();
    ui::waitForNoDialog("Parent");
  }

  /// The answer of a box that is answered by `action`.
  int answer(int style, const std::function<void()>& action, const std::string& text = "Text") {
    ui::ModalScript script;
    script.onDialog(kTitle, action);
    const int result =
        script.run([&] { return zMessage(frame.get(), text.c_str(), kTitle, style).result; });
    ui::waitForNoDialog(kTitle);
    return result;
  }

  std::unique_ptr<TestFrame> frame = std::make_unique<TestFrame>(new zSizer(nullptr), "Parent");
};

// Its look, its modality, then the answers: to Return, to each button, to Escape, to a close.
TEST_F(MessageBox, ShowsItsStyleAndAnswersByMouseKeyboardAndTheWindowManagersClose) {
  for (const auto& [style, expected] : {
           std::pair(kBoxOk + 0, "{} Text --- [OK] default focus 1: 1 1 00"),
           {kBoxStop | kBoxOkCancel | kBoxFullModal,
            "{error} Text --- [OK] default focus [Cancel] 2: 1 12 22"},
           {kBoxQuestion | kBoxAbortRetryIgnore,
            "{question} Text --- [Abort] default focus [Retry] [Ignore] 1: 3 345 44"},
           {kBoxWarning | kBoxYesNoCancel,
            "{warning} Text --- [Yes] default focus [No] [Cancel] 1: 6 672 22"},
           {kBoxInformation | kBoxYesNo,
            "{information} Text --- [Yes] default focus [No] 1: 6 67 77"},
           {0x50 | kBoxRetryCancel, "{} Text --- [Retry] default focus [Cancel] 1: 4 42 22"},
           {6 | kBoxSystemModal, "{} Text --- [OK] default focus [Cancel] 3: 1 12 22"},
       }) {
    std::string seen;
    const auto add = [&, kind = style](const std::function<void()>& action) {
      seen += std::to_string(answer(kind, action));
    };
    std::string look;
    add([&] {
      const auto hasFocus = [&] { return (look = ui::look(kTitle)).find("focus") != look.npos; };
      ui::waitFor(hasFocus, "the focus on a button");
      seen =
          look + std::to_string(ui::resource(ui::part(kTitle, "MessageBox"), "dialogStyle")) + ": ";
      ui::pressKey(XK_Return);
    });
    seen += " ";
    for (std::size_t at = 0; (at = look.find('[', at)) != look.npos; ++at) {
      add([&] { ui::click(button(look.substr(at + 1, look.find(']', at) - at - 1))); });
    }
    seen += " ";
    add([] { ui::pressKey(XK_Escape); });
    add([] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); });
    std::replace(seen.begin(), seen.end(), '\n', ' ');
    EXPECT_EQ(seen, expected);
  }
}

TEST_F(MessageBox, ShowsAnyTextWholeWithItsButtonsOnTheScreen) {
  std::string manyLines = "line";
  for (int line = 0; line < 40; ++line) {
    manyLines += "\nline " + std::to_string(line);
  }
  const std::string wide(20000, 'w');
  for (const auto& [text, look] : {std::pair<std::string, std::string>("", ""),
                                   {"\n\nlines", "\n\nlines\n"},
                                   {"byte \xe4\xff here", "byte \xe4\xff here\n"},
                                   {wide, "<" + wide + ">\nbar 0 of 0 to 200 by 30\n"},
                                   {manyLines, "<" + manyLines + ">\nbar 0 of 0 to 41 by 30\n"}}) {
    const auto action = [&, shown = "{warning}\n" + look + "---\n[OK] default focus\n"] {
      ui::waitForFocus(button("OK"));
      EXPECT_TRUE(ui::look(kTitle) == shown) << shown.substr(0, 40);
      EXPECT_TRUE(ui::isOnTheScreen(ui::windowWithTitle(kTitle)));
      ui::pressKey(XK_F1);  // stands for a button that is not there
      ui::pressKey(XK_Return);
    };
    EXPECT_EQ(answer(kBoxWarning, action, text), kAnswerOk);
  }
}

// The boxes share the flag that ends their wait; other code relies on the outer box going too.
TEST_F(MessageBox, EndsTheWaitOfABoxUnderItWithoutAnAnswer) {
  int inner = -1;
  // A box of any modality leaves the keyboard to the one over it.
  const int outer = answer(kBoxSystemModal | kBoxOkCancel, [&] {
    ui::ModalScript script;
    script.onDialog("Inner", XK_Return);
    inner = script.run([&] { return zMessage(frame.get(), "Text", "Inner", kBoxOkCancel).result; });
  });
  EXPECT_EQ(inner, kAnswerOk);
  EXPECT_EQ(outer, kAnswerNone);
}

TEST_F(MessageBox, EndsWithItsParentOrTheMainWindowWhenItHasNone) {
  ui::ModalScript script;
  script.onDialog(kTitle, XK_Return);
  EXPECT_TRUE(script.run([] { return zMessage(nullptr, nullptr, kTitle, kBoxOk).isOk(); }));
  EXPECT_EQ(answer(kBoxOkCancel, [&] { frame.reset(); }), kAnswerNone);
  EXPECT_EQ(zMessage(nullptr, "Text", kTitle, kBoxOk).result, kAnswerNone);
}

TEST(MessageBoxDeathTest, EndsWhenTheApplicationStopsAndWaitsForItsAnswerAfterThat) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        TestFrame frame;
        frame.show();
        for (const auto& action : {std::function<void()>([] { zApp::instance()->stop(); }),
                                   std::function<void()>([] { ui::pressKey(XK_Return); })}) {
          ui::ModalScript script;
          script.onDialog(kTitle, action);
          std::cerr << script.run(
              [&] { return zMessage(&frame, "Text", kTitle, kBoxOkCancel).result; });
          ui::waitForNoDialog(kTitle);
        }
        std::_Exit(EXIT_SUCCESS);
      },
      testing::ExitedWithCode(EXIT_SUCCESS), "^01$");
}

}  // namespace
