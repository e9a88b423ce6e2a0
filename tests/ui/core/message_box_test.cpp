#include "framework/core/message_box.h"

#include <cstdlib>
#include <iostream>
#include <memory>

#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>

namespace {

constexpr const char* kTitle = "Korvane - Page file";

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

  static Widget box() { return ui::part(kTitle, "MessageBox"); }
  static void pressReturn() { ui::pressKey(XK_Return); }

  std::unique_ptr<TestFrame> frame = std::make_unique<TestFrame>(new zSizer(nullptr), "Parent");
};

constexpr int kPrimaryModal = 1;
constexpr int kFullModal = 2;
constexpr int kSystemModal = 3;

struct BoxCase {
  int style;
  const char* icon;
  int modality;
  std::vector<std::pair<const char*, int>> answers;  ///< of its buttons, from left to right
  int closeAnswer;

  std::string look() const {
    std::string text = "{" + std::string(icon) + "}\nText\n---\n";
    for (const auto& [label, answer] : answers) {
      text += "[" + std::string(label) + "]";
      text += label == answers.front().first ? " default focus\n" : "\n";
    }
    return text;
  }
};

const BoxCase kBoxes[] = {
    {kBoxOk, "", kPrimaryModal, {{"OK", 1}}, 0},
    {kBoxStop | kBoxOkCancel | kBoxFullModal, "error", kFullModal, {{"OK", 1}, {"Cancel", 2}}, 2},
    {kBoxQuestion | kBoxAbortRetryIgnore,
     "question",
     kPrimaryModal,
     {{"Abort", 3}, {"Retry", 4}, {"Ignore", 5}},
     4},
    {kBoxWarning | kBoxYesNoCancel,
     "warning",
     kPrimaryModal,
     {{"Yes", 6}, {"No", 7}, {"Cancel", 2}},
     2},
    {kBoxInformation | kBoxYesNo, "information", kPrimaryModal, {{"Yes", 6}, {"No", 7}}, 7},
    {0x50 | kBoxRetryCancel, "", kPrimaryModal, {{"Retry", 4}, {"Cancel", 2}}, 2},
    {6 | kBoxSystemModal, "", kSystemModal, {{"OK", 1}, {"Cancel", 2}}, 2},
};

TEST_F(MessageBox, ShowsItsStyleAndAnswersByMouseKeyboardAndTheWindowManagersClose) {
  for (const BoxCase& row : kBoxes) {
    SCOPED_TRACE(row.style);
    for (const auto& [label, result] : row.answers) {
      EXPECT_EQ(answer(row.style, [&, name = label] { ui::click(boxPart(box(), name)); }), result);
    }
    const int byReturn = answer(row.style, [&] {
      ui::waitFor([&] { return ui::focusIs(boxPart(box(), row.answers.front().first)); },
                  "the focus on the default button");
      EXPECT_EQ(ui::look(kTitle), row.look());
      EXPECT_EQ(ui::resource(box(), "dialogStyle"), row.modality);
      pressReturn();
    });
    EXPECT_EQ(byReturn, row.answers.front().second);
    EXPECT_EQ(answer(row.style, [] { ui::pressKey(XK_Escape); }), row.closeAnswer);
    EXPECT_EQ(answer(row.style, [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); }),
              row.closeAnswer);
  }
}

TEST_F(MessageBox, KeepsAKeyThatStandsForAButtonThatIsNotThere) {
  EXPECT_EQ(answer(kBoxOkCancel,
                   [] {
                     ui::pressKey(XK_F1);
                     ui::pressKey(XK_Escape);
                   }),
            kAnswerCancel);
}

TEST_F(MessageBox, ShowsAnyTextWholeWithItsButtonsOnTheScreen) {
  std::string manyLines;
  for (int line = 0; line < 41; ++line) {
    manyLines += "line " + std::to_string(line) + "\n";
  }
  for (const std::string& text :
       {std::string(), std::string("two\nlines"), std::string("byte \xe4\xff here"),
        std::string(20000, 'w'), manyLines, std::string("\n\n")}) {
    SCOPED_TRACE(text.substr(0, 20));
    answer(
        kBoxWarning,
        [&] {
          EXPECT_EQ(ui::textOf(boxPart(box(), "")), text);
          EXPECT_TRUE(ui::isOnTheScreen(ui::windowWithTitle(kTitle)));
          pressReturn();
        },
        text);
  }
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
