#include "framework/core/message_box.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>

namespace {

constexpr const char* kTitle = "Korvane - Page file";

class MessageBox : public testing::Test {
 protected:
  MessageBox() { frame->bringUp(); }

  /// The answer of a box that is answered by `action`.
  int answer(int style, const std::function<void()>& action, const std::string& text = "Text") {
    ui::ModalScript script;
    script.onDialog(kTitle, action);
    const int result =
        script.run([&] { return zMessage(frame.get(), text.c_str(), kTitle, style).result; });
    ui::waitForNoDialog(kTitle);
    return result;
  }

  /// Of the box, once it has the keyboard.
  static std::string look() {
    std::string seen;
    const auto hasFocus = [&] { return (seen = ui::look(kTitle)).find("focus") != seen.npos; };
    ui::waitFor(hasFocus, "the focus on a button");
    return seen;
  }

  std::unique_ptr<TestFrame> frame = std::make_unique<TestFrame>();
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
    const int byReturn = answer(style, [&] {
      seen = look() + std::to_string(ui::resource(ui::part(kTitle, "MessageBox"), "dialogStyle"));
      ui::pressKey(XK_Return);
    });
    const auto buttons = std::count(seen.begin(), seen.end(), '[');
    seen += ": " + std::to_string(byReturn) + " ";
    for (auto left = buttons; left > 0; --left) {
      seen += std::to_string(answer(style, [&] {
        const std::vector<Widget> parts = ui::partsOf(ui::part(kTitle, "MessageBox"));
        ui::click(*(parts.end() - left));
      }));
    }
    seen += " " + std::to_string(answer(style, [] { ui::pressKey(XK_Escape); })) +
            std::to_string(
                answer(style, [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); }));
    std::replace(seen.begin(), seen.end(), '\n', ' ');
    EXPECT_EQ(seen, expected);
  }
}

TEST_F(MessageBox, ShowsAnyTextWholeWithItsButtonsOnTheScreen) {
  const auto lines = [](int count) {
    std::string text = "line";
    while (--count > 0) {
      text += "\nline " + std::to_string(count);
    }
    return text;
  };
  for (const auto& [text, scrolls] : {std::pair<std::string, bool>("byte \xe4\xff here", false),
                                      {lines(40), false},
                                      {lines(41), true},
                                      {std::string(140, 'w') + "\nline", false},
                                      {std::string(20000, 'w'), true},
                                      {std::string(141, 'w'), true}}) {
    const auto action = [shown =
                             "{warning}\n" + (scrolls ? "<" + text + ">\nbar" : text + "\n---\n")] {
      EXPECT_TRUE(look().starts_with(shown)) << shown;
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
        frame.bringUp();
        for (const bool stops : {true, false}) {
          ui::ModalScript script;
          script.onDialog(kTitle,
                          [&] { stops ? zApp::instance()->stop() : ui::pressKey(XK_Return); });
          std::cerr << script.run(
              [&] { return zMessage(&frame, "Text", kTitle, kBoxOkCancel).result; });
          ui::waitForNoDialog(kTitle);
        }
        std::_Exit(EXIT_SUCCESS);
      },
      testing::ExitedWithCode(EXIT_SUCCESS), "^01$");
}

}  // namespace
