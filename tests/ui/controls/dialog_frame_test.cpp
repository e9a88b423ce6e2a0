#include "framework/core/dialog_frame.h"

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/controls/button.h"
#include "framework/controls/control.h"
#include "framework/controls/edit.h"
#include "framework/core/application.h"
#include "framework/core/x_settings.h"
#include "framework/draw/screen.h"
#include "resources/dialogs.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

constexpr std::uint32_t kDialogStyle = 0x80C80080;
constexpr const char* kTitle = "Dialog";

class AskingDialog : public zFormDialog {
 public:
  using zFormDialog::zFormDialog;
  int close(zEvent* /*event*/) override { return refusals-- > 0 ? 1 : 0; }

  int refusals = 0;
};

class ReturnCounter : public zEvH {
 public:
  int count(zEvent* /*event*/) { return ++counted; }

  int counted = 0;
};

class Dialogs : public testing::Test {
 protected:
  Dialogs() {
    registerRecordControls();
    frame->show();
    ui::waitForDialog("Parent");
  }
  ~Dialogs() override {
    dialog.reset();
    frame.reset();
    ui::waitForNoDialog("Parent");
  }

  AskingDialog& make(std::uint32_t id) {
    dialog = std::make_unique<AskingDialog>(frame.get(), id, kDialogStyle);
    dialog->setCaption(kTitle);
    dialog->centre(true);
    dialog->setup(1);
    return *dialog;
  }

  int run(ui::ModalScript& script) {
    const int result = script.run([&] { return dialog->run(0); });
    ui::waitForNoDialog(kTitle);
    EXPECT_EQ(zApp::instance()->modalDepth(), 0);
    return result;
  }

  zControl& control(int id) { return *windowCast<zControl>(dialog->childById(id)); }

  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent");
  std::unique_ptr<AskingDialog> dialog;
};

TEST_F(Dialogs, AllResourcesRunAndEndByKeyboardAlone) {
  for (const int id : {503, 504, 505, 506, 507, 517, 519, 2304}) {
    SCOPED_TRACE(id);
    make(static_cast<std::uint32_t>(id));
    EXPECT_EQ(dialog->defaultButtonId(),
              static_cast<int>(id == kDialogSaveChanges ? kDialogSave : kDialogOk));
    ui::ModalScript escape;
    escape.onDialog(kTitle, XK_Escape);
    EXPECT_EQ(run(escape), 0);
    if (dialog->childById(kDialogOk) == nullptr) {
      continue;
    }
    ui::ModalScript ok;
    ok.onDialog(kTitle, XK_Return);
    EXPECT_EQ(run(ok), 1);
  }
}

TEST_F(Dialogs, StoreWhatWasTypedAndWalkByTabInTheOrderOfCreation) {
  make(kDialogAddButton);
  RWCString label = "old";
  RWCString definition;
  windowCast<zEditBase>(dialog->childById(kDialogFirstEdit))->setBoundString(&label);
  windowCast<zEditBase>(dialog->childById(kDialogSecondEdit))->setBoundString(&definition);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    ui::typeText("Go");
    ui::pressKey(XK_Tab);
    ui::typeText("next 1");
    for (const int id : {kDialogOk, kDialogApply, kDialogCancel, kDialogFirstEdit}) {
      ui::pressKey(XK_Tab);
      EXPECT_TRUE(ui::focusIs(control(id).widget())) << id;
    }
    ui::pressKey(XK_Return);
  });
  EXPECT_EQ(run(script), 1);
  EXPECT_EQ(label, "Go");
  EXPECT_EQ(definition, "next 1");
}

TEST_F(Dialogs, TypingAtOnceGoesToTheControlThatIsToHaveTheFocusFirst) {
  make(kDialogAddButton).setFirstFocus(control(kDialogSecondEdit));
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    ui::typeText("now");
    EXPECT_EQ(control(kDialogSecondEdit).text(), "now");
    ui::pressKey(XK_Return);
  });
  EXPECT_EQ(run(script), 1);
}

TEST_F(Dialogs, TheWindowManagersCloseIsCancelUnlessTheDialogRefuses) {
  make(kDialogRenameGroup).refusals = 1;
  ui::ModalScript script;
  script.onDialog(kTitle, [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); })
      .when([&] { return dialog->refusals == 0; }, "the refusal",
            [&] {
              EXPECT_TRUE(dialog->isRunning());
              ui::closeByWindowManager(ui::windowWithTitle(kTitle));
            });
  EXPECT_EQ(run(script), 0);
}

TEST_F(Dialogs, KeepClicksFromTheMainWindow) {
  make(kDialogRenameGroup);
  zPushButton behind(frame.get(), new zSizer(0, 0, 60, 30), 0x50010000, "Behind", 9);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    EXPECT_EQ(zApp::instance()->modalDepth(), 1);
    ui::click(behind.widget());
    EXPECT_FALSE(ui::focusIs(behind.widget()));
    ui::pressKey(XK_Escape);
  });
  EXPECT_EQ(run(script), 0);
}

TEST_F(Dialogs, ARunInsideARunOfTheSameDialogEndsWithIt) {
  make(kDialogRenameGroup);
  int inner = -2;
  ui::ModalScript script;
  script.onDialog(kTitle, [&] { inner = dialog->run(0); }).onDialog(kTitle, XK_Return);
  EXPECT_EQ(run(script), 1);
  EXPECT_EQ(inner, 1);
}

// While the first run waits for an inner loop to end, the dialog serves another one.
TEST_F(Dialogs, ARunThatHasEndedKeepsItsResultWhenTheDialogRunsAgain) {
  make(kDialogRenameGroup);
  std::vector<int> ends;
  const auto note = [&] { ends.push_back(dialog->status); };
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    ui::pressKey(XK_Return);
    EXPECT_FALSE(dialog->isRunning());
    EXPECT_EQ(dialog->run(0, note), 0);
  });
  script.onDialog(kTitle, [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); });
  EXPECT_EQ(script.run([&] { return dialog->run(0, note); }), 1);
  EXPECT_THAT(ends, testing::ElementsAre(1, 0));
  EXPECT_FALSE(dialog->isInUse());
}

TEST_F(Dialogs, ThatNobodyAskedForLeaveEarlyKeysToTheTextThatHadTheFocus) {
  using std::chrono::steady_clock;
  zEditLine behind(frame.get(), new zSizer(0, 0, 200, 30), 0x50810000, "", 9);
  ReturnCounter returns;
  behind.setNotify(&returns, toHandler(&ReturnCounter::count), kEditReturn);
  behind.setFocus();
  ui::waitForFocus(behind.widget());
  make(kDialogAddButton);
  const zUnaskedScope unasked;
  const int usual = std::exchange(g_XSettings.promptKeyDelay, 1 << 30);
  const steady_clock::time_point start = steady_clock::now();
  zControl& field = control(kDialogFirstEdit);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    for (const ui::KeySymbol key : {XK_a, XK_Return, XK_Escape, XK_Tab, XK_b, XK_BackSpace, XK_c}) {
      ui::pressKey(key);
    }
    EXPECT_EQ(behind.text(), "ac");
    EXPECT_EQ(returns.counted, 1) << "what is typed ahead must not run into one";
    g_XSettings.promptKeyDelay = usual;
  });
  script.when(
      [&] {
        ui::typeText("d");
        return field.text() == "d";
      },
      "keys for the dialog",
      [&] {
        EXPECT_GE(steady_clock::now() - start, Milliseconds(usual));
        ui::pressKey(XK_Return);
      });
  EXPECT_EQ(run(script), 1);
}

TEST_F(Dialogs, SurviveTheEndOfTheirObjectWhileTheyRun) {
  AskingDialog& running = make(kDialogRenameGroup);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] { dialog.reset(); });
  const int result = script.run([&] { return running.run(0); });
  EXPECT_EQ(result, zDialogFrame::kDialogGone);
  ui::waitForNoDialog(kTitle);
}

TEST_F(Dialogs, StandOverTheMiddleOfTheParentAndOnTheScreen) {
  // The frame of a window that cannot be resized is a little narrower.
  constexpr int kNarrower = 6;
  zRect whole;
  const auto look = [&] {
    make(kDialogRenameGroup);
    ui::ModalScript script;
    script.onDialog(kTitle, [&] {
      dialog->getExterior(whole);
      ui::pressKey(XK_Escape);
    });
    run(script);
  };
  zRect parent;
  frame->getExterior(parent);
  look();
  EXPECT_NEAR(whole.left + whole.width() / 2, parent.left + parent.width() / 2, kNarrower);
  EXPECT_NEAR(whole.top + whole.height() / 2, parent.top + parent.height() / 2, kNarrower);
  frame->moveResize(1200, 950, 400, 300);
  look();
  EXPECT_LE(whole.right, theScreen().screenWidth);
  EXPECT_LE(whole.bottom, theScreen().screenHeight);
}

TEST_F(Dialogs, TellOfAMissingResourceAndStayEmpty) {
  testing::internal::CaptureStderr();
  make(9);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: Unable to find dialog resource for id=9.\n");
  EXPECT_EQ(dialog->childById(kDialogOk), nullptr);
}

}  // namespace
