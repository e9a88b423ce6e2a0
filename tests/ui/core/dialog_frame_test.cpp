#include "framework/core/dialog_frame.h"

#include "framework/controls/button.h"
#include "framework/controls/control.h"
#include "framework/controls/edit.h"
#include "framework/core/desktop_properties.h"
#include "framework/core/x_settings.h"
#include "resources/dialogs.h"
#include "tests/ui/core/core_test.h"

#include <X11/Xutil.h>

namespace {

constexpr const char* kTitle = "Dialog";

class Dialogs : public testing::Test {
 protected:
  Dialogs() {
    registerRecordControls();
    ui::bringUp(*frame);
    noted();
  }

  zFormDialog& make(std::uint32_t id) {
    dialog = std::make_unique<zFormDialog>(frame.get(), id, kStyleDialog);
    dialog->setCaption(kTitle);
    dialog->setup(1);
    return *dialog;
  }
  /// Runs it; expects this result.
  void runs(int result, const std::function<void()>& action) {
    const auto run = [running = dialog.get()] { return running->run(0); };
    EXPECT_EQ(ui::inDialog(kTitle, action, run), result);
    EXPECT_EQ(zApp::instance()->modalDepth(), 0);
  }
  zControl& control(int id) { return *windowCast<zControl>(dialog->childById(id)); }
  void iconify() {
    XIconifyWindow(ui::display(), ui::windowOf(frame->shell()), DefaultScreen(ui::display()));
  }
  bool isIcon() { return isIconic(frame->shell()); }

  std::unique_ptr<TestFrame> frame = std::make_unique<TestFrame>();
  std::unique_ptr<zFormDialog> dialog;
};

/// A control that is never content.
struct Picky : RecordingPane {
  using RecordingPane::RecordingPane;
  int childrenValid() override { return 0; }
};

TEST_F(Dialogs, WalkByTabInTheOrderOfCreationAndStoreWhatWasTypedWhenAllThatAreEnabledAgree) {
  make(kDialogAddButton);
  RWCString label = "old";
  RWCString definition = "old";
  windowCast<zEditBase>(&control(kDialogFirstEdit))->setBoundString(&label);
  windowCast<zEditBase>(&control(kDialogSecondEdit))->setBoundString(&definition);
  Picky picky(dialog.get(), new zSizer(0, 0, 5, 5), kStyleTabStop);
  Recorder back("back");
  const zPushButton behind(frame.get(), new zSizer(0, 0, 60, 30), kStyleControlStop, "Behind", 9);
  runs(1, [&] {
    EXPECT_EQ(zApp::instance()->modalDepth(), 1);
    EXPECT_EQ(ui::numbers(dialog->shell(), {"mwmInputMode", "mwmDecorations", "mwmFunctions"}),
              "1 26 36 ");
    ui::click(behind.widget());
    control(kDialogFirstEdit).setFocus();
    ui::typeText("Go\tnext 1");
    control(kDialogFirstEdit).addHandler(&back, kFirst, kMsgFocusIn);
    for (const int id : {kDialogOk, kDialogApply, kDialogCancel}) {
      ui::pressKey(XK_Tab);
      EXPECT_TRUE(ui::focusIs(control(id).widget())) << id;
    }
    control(kDialogSecondEdit).disable();
    ui::click(control(kDialogOk).widget());
    ui::waitForFocus(picky.widget());
    EXPECT_EQ(back.runs, 0) << "where the user came from";
    EXPECT_EQ(label, "old");
    picky.disable();
    ui::click(control(kDialogOk).widget());
  });
  EXPECT_EQ(label, "Go");
  EXPECT_EQ(definition, "old");
}

// One end ends both of two runs. While they wait for inner loops to end, the dialog serves another
// one.
TEST_F(Dialogs, MayRunWhileTheyRunWhichBringsThemBackFromTheIconAndMayRefuseToClose) {
  make(kDialogRenameGroup);
  const auto run = [&](const std::string& name) {
    const int result = dialog->run(0, [&] { note("end:" + std::to_string(dialog->status)); });
    note(name + ":" + std::to_string(result));
  };
  const auto isBack = [&] { return !isIcon() && ui::hasInputFocus(ui::windowWithTitle(kTitle)); };
  const auto close = [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); };
  Recorder refusing("r");
  refusing.action = [&] { refusing.taken = refusing.runs == 2 ? 1 : 0; };
  dialog->addHandler(&refusing, kFirst, kMsgClose);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] { iconify(); });
  script.when([&] { return isIcon(); }, "the icon", [&] { run("inner"); });
  script.when(isBack, "the dialog", [&] {
    ui::pressKey(XK_Return);
    EXPECT_FALSE(dialog->isRunning());
    run("anew");
  });
  script.onDialog(kTitle, close);
  script.when([&] { return refusing.runs == 2; }, "the refusal", close);
  script.run([&] { run("outer"); });
  EXPECT_EQ(noted(), "r1:16:0 end:1 end:1 r1:16:0 r1:16:0 end:0 anew:0 inner:1 outer:1 ");
  EXPECT_FALSE(dialog->isInUse());
}

TEST_F(Dialogs, ReturnAndEscapePressTheButtonThatIsMeantUnlessTheControlHasUseForThem) {
  struct : zDialogFrame {
    using zDialogFrame::zDialogFrame;
    int command(zEvent* event) override {
      if (event->lparam == kNotifyClicked) {
        note(std::to_string(event->wparam));
      }
      return 1;
    }
  } keys(frame.get(), new zSizer(0, 0, 300, 200), kStyleDialog);
  keys.setCaption(kTitle);
  enum : int { kLine = 50, kBox, kFixedBox, kOther, kDefault };
  auto place = [row = 0]() mutable { return new zSizer(5, 22 * row++, 200, 20); };
  new zEditLine(&keys, place(), kStyleControlStop, "", kLine);
  new zEditBox(&keys, place(), kStyleControlStop, "", kBox);
  new zEditBox(&keys, place(), kStyleControlStop | kEditReadOnly, "", kFixedBox);
  zPushButton other(&keys, place(), kStyleControlStop, "Other", kOther);
  new zPushButton(&keys, place(), kStyleControlStop, "OK", kDialogOk);
  zPushButton cancel(&keys, place(), kStyleControlStop, "Cancel", kDialogCancel);
  keys.setFirstFocus(other);
  const auto pressed = [&](std::initializer_list<int> controls, ui::KeySymbol key) {
    for (const int focused : controls) {
      ui::focus(*keys.childById(focused));
      ui::pressKey(key);
      note("/");
    }
    return noted();
  };
  const auto act = [&] {
    keys.childById(kLine)->takeFocus();
    ui::waitForFocus(other.widget());  // for the time that the window manager takes
    ui::pressKey(XK_Return);
    EXPECT_EQ(noted(), "53 ") << "the first focus";
    EXPECT_EQ(pressed({kLine, kFixedBox, kBox, kOther}, XK_Return), "1 / 1 / / 53 / ");
    EXPECT_EQ(pressed({kLine, kFixedBox, kBox}, XK_Escape), "2 / 2 / 2 / ");
    zDefPushButton byDefault(&keys, place(), kStyleControlStop | kButtonDefault, "D", kDefault);
    EXPECT_EQ(pressed({kLine}, XK_Return), "54 / ");
    byDefault.disable();
    cancel.disable();
    EXPECT_EQ(pressed({kLine}, XK_Return), "/ ");
    EXPECT_EQ(pressed({kLine}, XK_Escape), "/ ");
    EXPECT_FALSE(keys.isRunning()) << "without a Cancel Escape ends the dialog";
  };
  EXPECT_EQ(ui::inDialog(kTitle, act, [&] { return keys.run(0); }), 0);
}

TEST_F(Dialogs, ThatNobodyAskedForLeaveKeysToTheTextThatTheUserIsIn) {
  auto behind = std::make_unique<zEditLine>(frame.get(), new zSizer(0, 0, 200, 30),
                                            kStyleControlStop | kStyleBorder, "", 9);
  Recorder recorder("return");
  behind->addCtrlHandler(&recorder, kFirst, kEditReturn);
  ui::focus(*behind);
  const int usual = std::exchange(g_XSettings.promptKeyDelay, 1 << 30);
  const zUnaskedScope unasked;
  make(kDialogAddButton);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    for (const ui::KeySymbol key : {XK_a, XK_Return, XK_Escape, XK_Tab, XK_b, XK_BackSpace, XK_c}) {
      ui::pressKey(key);
    }
    ui::pressKey(XK_d, ui::kControl);
    EXPECT_EQ(behind->text(), "ac");
    EXPECT_EQ(noted(), "return1:273:9 ") << "what is typed ahead must not run into one";
    behind.reset();
    ui::pressKey(XK_e);
    g_XSettings.promptKeyDelay = usual;
  });
  const auto isTyped = [&] {
    ui::typeText("d");
    return control(kDialogFirstEdit).text() == "d";
  };
  script.when(isTyped, "keys for the dialog", [] { ui::pressKey(XK_Return); });
  EXPECT_EQ(script.run([&] { return dialog->run(0); }), 1);
}

TEST_F(Dialogs, ThatNobodyAskedForBringTheirWindowBackFromAnIconAndThenStopCallingTheUser) {
  iconify();
  ui::waitFor([&] { return isIcon(); }, "the icon");
  const auto isCalling = [window = ui::windowOf(frame->shell())] {
    const std::unique_ptr<XWMHints, int (*)(void*)> hints(XGetWMHints(ui::display(), window),
                                                          XFree);
    return (hints->flags & XUrgencyHint) != 0;
  };
  demandAttention(frame->shell(), true);
  EXPECT_TRUE(isCalling());
  const zUnaskedScope unasked;
  make(kDialogRenameGroup);
  runs(zDialogFrame::kDialogGone, [&] {
    EXPECT_FALSE(isIcon());
    ui::waitFor([&] { return !isCalling(); }, "the call for the user, who is there, to end");
    dialog.reset();
  });
}

TEST_F(Dialogs, StandInTheMiddleOfTheParentAndAllOnTheScreen) {
  for (const auto& [parentAt, middle] :
       {std::pair(zPoint{200, 150}, zPoint{400, 300}), {{1200, 950}, {1400, 1100}}}) {
    const zRect place(parentAt, zDimension{400, 300});
    frame->moveResize(place.left, place.top, 400, 300);
    ui::waitFor([&] { return frame->exterior() == place; }, "the parent's new place");
    make(kDialogRenameGroup).centre(true);
    zRect whole;
    runs(0, [&] {
      dialog->getExterior(whole);
      ui::pressKey(XK_Escape);
    });
    // The frame of a window that cannot be resized is a little narrower.
    constexpr int kNarrower = 6;
    const int left = std::min(middle.x - whole.width() / 2, 1280 - whole.width());
    const int top = std::min(middle.y - whole.height() / 2, 1024 - whole.height());
    EXPECT_NEAR(whole.left, left, kNarrower);
    EXPECT_NEAR(whole.top, top, kNarrower);
  }
}

}  // namespace
