#include "framework/core/message_box.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "tests/ui/app_object/box_view.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

using Labels = std::vector<std::string>;

constexpr const char* kTitle = "Korvane - Page file";
constexpr std::uint32_t kFrameStyle = 0xCF0000;

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

  static void pressReturn() { ui::pressKey(XK_Return); }

  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, nullptr, kFrameStyle, "Parent");
};

struct ButtonsCase {
  int style;
  Labels labels;
  std::vector<int> answers;
  int closeAnswer;
};

const ButtonsCase kButtonsCases[] = {
    {kBoxOk, {"OK"}, {1}, kAnswerNone},
    {kBoxOkCancel, {"OK", "Cancel"}, {1, 2}, 2},
    {kBoxAbortRetryIgnore, {"Abort", "Retry", "Ignore"}, {3, 4, 5}, 4},
    {kBoxYesNoCancel, {"Yes", "No", "Cancel"}, {6, 7, 2}, 2},
    {kBoxYesNo, {"Yes", "No"}, {6, 7}, 7},
    {kBoxRetryCancel, {"Retry", "Cancel"}, {4, 2}, 2},
    {6, {"OK", "Cancel"}, {1, 2}, 2},
};

TEST_F(MessageBox, HasTheButtonsOfItsStyleAndAnswersByMouseKeyboardAndTheWindowManagersClose) {
  for (const ButtonsCase& row : kButtonsCases) {
    SCOPED_TRACE(row.style);
    for (std::size_t i = 0; i < row.labels.size(); ++i) {
      const int result = answer(row.style, [&] {
        const BoxView box(kTitle);
        EXPECT_EQ(box.buttonLabels(), row.labels);
        ui::click(box.button(row.labels[i]));
      });
      EXPECT_EQ(result, row.answers[i]);
    }
    const int byReturn = answer(row.style, [&] {
      const BoxView box(kTitle);
      ui::waitFor([&] { return box.focusedButton() == box.button(row.labels.front()); },
                  "the focus on the default button");
      pressReturn();
    });
    EXPECT_EQ(byReturn, row.answers.front());
    EXPECT_EQ(answer(row.style, [] { ui::pressKey(XK_Escape); }), row.closeAnswer);
    EXPECT_EQ(answer(row.style, [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); }),
              row.closeAnswer);
  }
}

TEST_F(MessageBox, ShowsTheIconAndTheModalityOfItsStyle) {
  struct Case {
    int style;
    const char* icon;
    int modality;
  };
  constexpr int kPrimaryModal = 1;
  constexpr int kFullModal = 2;
  constexpr int kSystemModal = 3;
  for (const Case& row :
       {Case{kBoxOk, "plain", kPrimaryModal}, Case{kBoxStop, "error", kPrimaryModal},
        Case{kBoxQuestion | kBoxOkCancel, "question", kPrimaryModal},
        Case{kBoxWarning, "warning", kPrimaryModal},
        Case{kBoxInformation, "information", kPrimaryModal}, Case{0x50, "plain", kPrimaryModal},
        Case{kBoxSystemModal | kBoxOkCancel, "plain", kSystemModal},
        Case{kBoxFullModal | kBoxStop, "error", kFullModal}}) {
    SCOPED_TRACE(row.style);
    answer(row.style, [&] {
      const BoxView box(kTitle);
      EXPECT_EQ(box.icon(), row.icon);
      EXPECT_EQ(box.modality(), row.modality);
      pressReturn();
    });
  }
}

TEST_F(MessageBox, ShowsAnyTextWholeWithItsButtonsOnTheScreen) {
  std::string manyLines;
  for (int line = 0; line < 5000; ++line) {
    manyLines += "line " + std::to_string(line) + "\n";
  }
  for (const std::string& text :
       {std::string(), std::string("two\nlines"), std::string("byte \xe4\xff here"),
        std::string(20000, 'w'), manyLines, std::string("\n\n")}) {
    SCOPED_TRACE(text.substr(0, 20));
    answer(
        kBoxWarning,
        [&] {
          const BoxView box(kTitle);
          EXPECT_EQ(box.text(), text);
          EXPECT_TRUE(box.isOnTheScreen());
          pressReturn();
        },
        text);
  }
  EXPECT_EQ(answer(
                kBoxOkCancel, [] { ui::pressKey(XK_Escape); }, manyLines),
            kAnswerCancel);
}

// The boxes share the flag that ends their wait; other code relies on the outer box going too.
TEST_F(MessageBox, EndsTheWaitOfABoxUnderItWithoutAnAnswer) {
  int inner = -1;
  // A box of any modality leaves the keyboard to the one over it.
  const int outer = answer(kBoxSystemModal | kBoxOkCancel, [&] {
    ui::ModalScript script;
    script.onDialog("Inner", pressReturn);
    inner = script.run([&] { return zMessage(frame.get(), "Text", "Inner", kBoxOkCancel).result; });
  });
  EXPECT_EQ(inner, kAnswerOk);
  EXPECT_EQ(outer, kAnswerNone);
}

TEST_F(MessageBox, EndsWithItsParent) {
  EXPECT_EQ(answer(kBoxOkCancel, [&] { frame.reset(); }), kAnswerNone);
}

TEST_F(MessageBox, BelongsToTheMainWindowWhenItHasNoParent) {
  ui::ModalScript script;
  script.onDialog(kTitle, XK_Return);
  EXPECT_EQ(script.run([] { return zMessage(nullptr, nullptr, kTitle, kBoxOk).isOk(); }), true);
  frame.reset();
  EXPECT_EQ(zMessage(nullptr, "Text", kTitle, kBoxOk).result, kAnswerNone);
}

TEST(MessageBoxDeathTest, EndsWhenTheApplicationStopsAndWaitsForItsAnswerAfterThat) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        zAppFrame frame(nullptr, nullptr, kFrameStyle, "Parent");
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
