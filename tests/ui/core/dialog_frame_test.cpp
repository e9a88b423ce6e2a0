#include "framework/core/dialog_frame.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "framework/controls/button.h"
#include "framework/controls/control.h"
#include "framework/controls/edit.h"
#include "framework/core/desktop_properties.h"
#include "framework/core/x_settings.h"
#include "framework/draw/screen.h"
#include "resources/dialogs.h"
#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

constexpr const char* kTitle = "Dialog";

class AskingDialog : public zFormDialog {
 public:
  using zFormDialog::zFormDialog;
  int close(zEvent* /*event*/) override { return refusals-- > 0 ? 1 : 0; }

  int refusals = 0;
};

/// Writes down which buttons are pressed.
struct KeyDialog : zDialogFrame {
  using zDialogFrame::zDialogFrame;
  int command(zEvent* event) override {
    if (event->lparam == kNotifyClicked) {
      pressed.push_back(static_cast<int>(event->wparam));
    }
    return 1;
  }

  std::vector<int> pressed;
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
    dialog = std::make_unique<AskingDialog>(frame.get(), id, kStyleDialog);
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

  void runs(int result, std::function<void()> action) {
    ui::ModalScript script;
    script.onDialog(kTitle, std::move(action));
    EXPECT_EQ(run(script), result);
  }

  zControl& control(int id) { return *windowCast<zControl>(dialog->childById(id)); }

  std::unique_ptr<zAppFrame> frame = std::make_unique<zAppFrame>(
      nullptr, new zSizer(200, 150, 400, 300), kStyleMainWindow, "Parent");
  std::unique_ptr<AskingDialog> dialog;
};

TEST_F(Dialogs, StoreWhatWasTypedAndWalkByTabInTheOrderOfCreation) {
  make(kDialogAddButton);
  RWCString label = "old";
  RWCString definition;
  windowCast<zEditBase>(dialog->childById(kDialogFirstEdit))->setBoundString(&label);
  windowCast<zEditBase>(dialog->childById(kDialogSecondEdit))->setBoundString(&definition);
  runs(1, [&] {
    ui::typeText("Go\tnext 1");
    for (const int id : {kDialogOk, kDialogApply, kDialogCancel, kDialogFirstEdit}) {
      ui::pressKey(XK_Tab);
      EXPECT_TRUE(ui::focusIs(control(id).widget())) << id;
    }
    ui::pressKey(XK_Return);
  });
  EXPECT_EQ(label, "Go");
  EXPECT_EQ(definition, "next 1");
}

TEST_F(Dialogs, TypingAtOnceGoesToTheControlThatIsToHaveTheFocusFirst) {
  make(kDialogAddButton).setFirstFocus(control(kDialogSecondEdit));
  runs(1, [&] { ui::typeText("now\n"); });
  EXPECT_EQ(control(kDialogSecondEdit).text(), "now");
}

TEST_F(Dialogs, KeepClicksFromTheMainWindowAndTakeACloseForCancelUnlessTheyRefuse) {
  make(kDialogRenameGroup).refusals = 1;
  zPushButton behind(frame.get(), new zSizer(0, 0, 60, 30), kStyleControlStop, "Behind", 9);
  ui::ModalScript script;
  const auto close = [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); };
  script.onDialog(kTitle, [&] {
    EXPECT_EQ(zApp::instance()->modalDepth(), 1);
    ui::click(behind.widget());
    EXPECT_FALSE(ui::focusIs(behind.widget()));
    close();
  });
  script.when([&] { return dialog->refusals == 0; }, "the refusal",
              [&] {
                EXPECT_TRUE(dialog->isRunning());
                close();
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

TEST_F(Dialogs, ReturnAndEscapePressTheButtonThatIsMeantUnlessTheControlHasUseForThem) {
  KeyDialog keys(frame.get(), new zSizer(0, 0, 300, 200), kStyleDialog);
  keys.setCaption(kTitle);
  enum : int { kLine = 50, kBox, kFixedBox, kOther, kDefault };
  auto place = [row = 0]() mutable { return new zSizer(5, 22 * row++, 200, 20); };
  new zEditLine(&keys, place(), kStyleControlStop, "", kLine);
  auto* box = new zEditBox(&keys, place(), kStyleControlStop, "", kBox);
  new zEditBox(&keys, place(), kStyleControlStop | kEditReadOnly, "", kFixedBox);
  auto* other = new zPushButton(&keys, place(), kStyleControlStop, "Other", kOther);
  new zPushButton(&keys, place(), kStyleControlStop, "OK", kDialogOk);
  auto* cancel = new zPushButton(&keys, place(), kStyleControlStop, "Cancel", kDialogCancel);
  const auto pressed = [&](int focused, ui::KeySymbol key) {
    zWindow* target = keys.childById(focused);
    target->startFocusTimer();
    ui::waitForFocus(target->widget());
    ui::pressKey(key);
    return testing::PrintToString(std::exchange(keys.pressed, {}));
  };
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    std::string all;
    for (const int focused : {kLine, kFixedBox, kBox, kOther}) {
      all += pressed(focused, XK_Return);
    }
    EXPECT_EQ(all, "{ 1 }{ 1 }{}{ 53 }");
    EXPECT_EQ(box->text(), "\n");
    EXPECT_EQ(pressed(kLine, XK_Escape) + pressed(kFixedBox, XK_Escape) + pressed(kBox, XK_Escape),
              "{ 2 }{ 2 }{ 2 }");
    auto* byDefault =
        new zDefPushButton(&keys, place(), kStyleControlStop | kButtonDefault, "D", kDefault);
    EXPECT_EQ(pressed(kLine, XK_Return), "{ 54 }");
    byDefault->disable();
    EXPECT_EQ(pressed(kLine, XK_Return), "{}");
    cancel->disable();
    other->disable();
    EXPECT_EQ(pressed(kLine, XK_Escape), "{}");
    EXPECT_FALSE(keys.isRunning()) << "without a Cancel Escape ends the dialog";
  });
  EXPECT_EQ(script.run([&] { return keys.run(0); }), 0);
  ui::waitForNoDialog(kTitle);
}

class EarlyKeys : public Dialogs {
 protected:
  EarlyKeys() {
    behind->addCtrlHandler(&recorder, toHandler(&Recorder::first), kEditReturn);
    behind->setFocus();
    ui::waitForFocus(behind->widget());
    make(kDialogAddButton);
  }
  ~EarlyKeys() override { g_XSettings.promptKeyDelay = usual; }

  Journal journal;
  Recorder recorder{journal, "r"};
  std::unique_ptr<zEditLine> behind = std::make_unique<zEditLine>(
      frame.get(), new zSizer(0, 0, 200, 30), kStyleControlStop | kStyleBorder, "", 9);
  const int usual = g_XSettings.promptKeyDelay;
  const zUnaskedScope unasked;
};

TEST_F(EarlyKeys, GoToTheTextThatHadTheFocusWhenNobodyAskedForTheDialog) {
  const auto start = std::chrono::steady_clock::now();
  g_XSettings.promptKeyDelay = 1 << 30;
  zControl& field = control(kDialogFirstEdit);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    for (const ui::KeySymbol key : {XK_a, XK_Return, XK_Escape, XK_Tab, XK_b, XK_BackSpace, XK_c}) {
      ui::pressKey(key);
    }
    ui::pressKey(XK_d, ui::kControl);
    EXPECT_EQ(behind->text(), "ac");
    EXPECT_THAT(journal, ElementsAre("r.first 273")) << "what is typed ahead must not run into one";
    behind.reset();
    ui::pressKey(XK_e);
    g_XSettings.promptKeyDelay = usual;
  });
  const auto isTyped = [&] {
    ui::typeText("d");
    return field.text() == "d";
  };
  script.when(isTyped, "keys for the dialog", [] { ui::pressKey(XK_Return); });
  EXPECT_EQ(run(script), 1);
  EXPECT_GE(std::chrono::steady_clock::now() - start, Milliseconds(usual));
}

TEST_F(EarlyKeys, OfSeveralDialogsAreThoseOfTheFirst) {
  g_XSettings.promptKeyDelay = 1 << 30;
  zFormDialog over(dialog.get(), kDialogRenameGroup, kStyleDialog);
  over.setCaption("Over");
  over.setup(1);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] { over.run(0); }).onDialog("Over", [&] {
    ui::typeText("x\n");
    EXPECT_EQ(behind->text(), "x");
    over.endDialog();
    dialog->endDialog();
  });
  EXPECT_EQ(run(script), 0);
}

TEST_F(EarlyKeys, AreTheDialogsOwnWhereThereIsNoDelay) {
  g_XSettings.promptKeyDelay = 0;
  runs(1, [] { ui::typeText("x\n"); });
  EXPECT_EQ(control(kDialogFirstEdit).text(), "x");
}

TEST_F(Dialogs, SurviveTheEndOfTheirObjectWhileTheyRun) {
  AskingDialog& running = make(kDialogRenameGroup);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] { dialog.reset(); });
  EXPECT_EQ(script.run([&] { return running.run(0); }), zDialogFrame::kDialogGone);
  ui::waitForNoDialog(kTitle);
}

TEST_F(Dialogs, ThatNobodyAskedForBringTheirWindowBackFromAnIconAndThenStopCallingTheUser) {
  XIconifyWindow(ui::display(), ui::windowOf(frame->shell()), DefaultScreen(ui::display()));
  ui::waitFor([&] { return isIconic(frame->shell()); }, "the icon");
  const zUnaskedScope unasked;
  make(kDialogRenameGroup);
  runs(0, [&] {
    constexpr unsigned long kUrgency = 1U << 8;
    const Window window = ui::windowOf(frame->shell());
    EXPECT_FALSE(isIconic(frame->shell()));
    ui::waitFor([&] { return (propertyOf(window, "WM_HINTS").at(0) & kUrgency) == 0; },
                "the call for the user, who is there, to end");
    dialog->endDialog();
  });
}

TEST_F(Dialogs, StandInTheMiddleOfTheParentOrOfTheScreenAndAllOnIt) {
  const zRect screen({}, theScreen().size());
  for (const auto& [parentAt, overParent] :
       {std::pair(zPoint{200, 150}, true), {{1200, 950}, true}, {{1200, 950}, false}}) {
    frame->moveResize(parentAt.x, parentAt.y, 400, 300);
    const zRect parent(parentAt, zDimension{400, 300});
    zRect outer;
    const auto isThere = [&] {
      frame->getExterior(outer);
      return outer == parent;
    };
    ui::waitFor(isThere, "the parent's new place and size");
    zRect whole;
    make(kDialogRenameGroup).centre(overParent);
    runs(0, [&] {
      dialog->getExterior(whole);
      ui::pressKey(XK_Escape);
    });
    outer = overParent ? outer : screen;
    const zPoint middle = {outer.left + (outer.width() - whole.width()) / 2,
                           outer.top + (outer.height() - whole.height()) / 2};
    const zPoint expected = keptInside(middle, whole.size(), screen.size());
    // The frame of a window that cannot be resized is a little narrower.
    constexpr int kNarrower = 6;
    EXPECT_NEAR(whole.left, expected.x, kNarrower) << parentAt.x << " " << overParent;
    EXPECT_NEAR(whole.top, expected.y, kNarrower) << parentAt.y << " " << overParent;
  }
}

TEST_F(Dialogs, AreAsLargeAsTheirResourceSaysInTheUnitsOfTheirFont) {
  const DialogResource* resource = findDialogResource(kDialogRenameGroup);
  const auto widthWith = [&](int morePoints) {
    g_XSettings.incFontInDialogBy = morePoints;
    make(kDialogRenameGroup);
    g_XSettings.incFontInDialogBy = 0;
    const auto number = [](std::uint32_t units) { return static_cast<int>(units); };
    const zRect whole = dialog->inPixels({0, 0, number(resource->cx), number(resource->cy)});
    EXPECT_EQ(dialog->sizer()->size(), whole.size());
    EXPECT_EQ(ui::resource(dialog->shell(), "width"), whole.width());
    for (std::size_t i = 0; i < resource->itemCount; ++i) {
      const ControlRecord& item = resource->items[i];
      const zWindow* child = dialog->childById(number(item.id));
      EXPECT_EQ(child->sizer()->rect(), dialog->inPixels({number(item.x), number(item.y),
                                                          number(item.cx), number(item.cy)}));
    }
    return whole.width();
  };
  EXPECT_GT(widthWith(6), widthWith(0));
  dialog->moveResize(30, 40, 0, -5);
  EXPECT_EQ(ui::resource(dialog->shell(), "width"), 1);
  EXPECT_EQ(ui::resource(dialog->shell(), "y"), 40);
}

TEST_F(Dialogs, TellOfAMissingResourceAndStayEmpty) {
  testing::internal::CaptureStderr();
  make(9);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: Unable to find dialog resource for id=9.\n");
  EXPECT_EQ(dialog->childById(kDialogOk), nullptr);
}

}  // namespace
