// The harness itself, on a bare Motif window.

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "tests/support/temporary_folder.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>
#include <Xm/XmAll.h>

namespace {

struct WidgetDeleter {
  void operator()(Widget widget) const { XtDestroyWidget(widget); }
};
using Shell = std::unique_ptr<std::remove_pointer_t<Widget>, WidgetDeleter>;

void count(Widget /*widget*/, XtPointer counter, XtPointer /*data*/) {
  ++*static_cast<int*>(counter);
}

void rememberInput(Widget /*widget*/, XtPointer last, XEvent* event, Boolean* /*goOn*/) {
  *static_cast<XEvent*>(last) = *event;
}

/// A shell with a text above a button.
class Harness : public testing::Test {
 protected:
  Harness() {
    shell.reset(XtVaAppCreateShell("harness", "Harness", applicationShellWidgetClass, ui::display(),
                                   XmNtitle, "Harness window", nullptr));
    Widget column = XtVaCreateManagedWidget("column", xmRowColumnWidgetClass, shell.get(), nullptr);
    text = XtVaCreateManagedWidget("text", xmTextWidgetClass, column, nullptr);
    button = XtVaCreateManagedWidget("button", xmPushButtonWidgetClass, column, nullptr);
    XtAddCallback(button, XmNactivateCallback, count, &activations);
    XtRealizeWidget(shell.get());
    ui::waitForDialog("Harness window");
    XmProcessTraversal(text, XmTRAVERSE_CURRENT);
    ui::waitForFocus(text);
  }

  std::string typed() const {
    char* const value = XmTextGetString(text);
    std::string result = value;
    XtFree(value);
    return result;
  }

  Shell shell;
  Widget text = nullptr;
  Widget button = nullptr;
  int activations = 0;
};

TEST_F(Harness, TypesWhateverLatin1TextIsGiven) {
  ui::typeText("aZ 09:;\"{~\xe4");
  EXPECT_EQ(typed(), "aZ 09:;\"{~\xe4");
  ui::pressKey(XK_BackSpace);
  EXPECT_EQ(typed(), "aZ 09:;\"{~");
}

TEST_F(Harness, HoldsModifiersRoundAKey) {
  XEvent last = {};
  XtAddEventHandler(text, KeyPressMask, False, rememberInput, &last);
  ui::pressKey('o', ui::kControl | ui::kAlt);
  EXPECT_EQ(last.xkey.state & (ControlMask | Mod1Mask), unsigned{ControlMask | Mod1Mask});
}

TEST_F(Harness, ClicksAndTurnsTheWheelWhereItIsTold) {
  ui::click(button);
  EXPECT_EQ(activations, 1);

  XEvent last = {};
  XtAddEventHandler(button, ButtonPressMask, False, rememberInput, &last);
  ui::wheel(button, 3, 4, -1);
  EXPECT_EQ(last.xbutton.button, 5U);
  EXPECT_EQ(last.xbutton.x, 3);
  EXPECT_EQ(last.xbutton.y, 4);
}

TEST_F(Harness, KnowsWhereTheFocusIs) {
  EXPECT_TRUE(ui::focusIs(text));
  EXPECT_FALSE(ui::focusIs(button));
  ui::pressKey(XK_Tab, ui::kControl);
  ui::waitForFocus(button);
  EXPECT_FALSE(ui::focusIs(text));
}

TEST_F(Harness, ScriptActsInAModalLoopAndInTheOneItOpens) {
  std::string order;
  const auto box = [&](const char* title, const std::function<void()>& onOk) {
    Widget dialog = XmCreateInformationDialog(shell.get(), const_cast<char*>("box"), nullptr, 0);
    XtVaSetValues(XtParent(dialog), XmNtitle, title, nullptr);
    int closed = 0;
    XtAddCallback(dialog, XmNokCallback, count, &closed);
    XtManageChild(dialog);
    while (closed == 0) {
      XtAppProcessEvent(ui::context(), XtIMAll);
    }
    onOk();
    XtDestroyWidget(XtParent(dialog));
  };
  ui::ModalScript script;
  script
      .onDialog("Outer",
                [&] {
                  box("Inner", [&] { order += "inner,"; });
                  ui::waitForDialog("Outer");
                  ui::pressKey(XK_Return);
                })
      .onDialog("Inner", XK_Return);
  script.run([&] { box("Outer", [&] { order += "outer"; }); });
  EXPECT_EQ(order, "inner,outer");
}

TEST_F(Harness, NamesWhatAScriptAwaitedInVain) {
  ui::ModalScript script;
  script.onDialog("No such window", XK_Return);
  EXPECT_NONFATAL_FAILURE(script.run([] {}), "a window \"No such window\" with the focus");
}

TEST_F(Harness, TakesAPictureOfTheScreen) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder / "screen.ppm";
  ASSERT_TRUE(ui::writeScreenshot(file));
  const std::string picture = readFile(file);
  constexpr std::size_t kWidth = 1280;
  constexpr std::size_t kHeight = 1024;
  constexpr std::size_t kPixelBytes = 3;
  const std::string head = "P6\n1280 1024\n255\n";
  ASSERT_EQ(picture.substr(0, head.size()), head);
  ASSERT_EQ(picture.size(), head.size() + kWidth * kHeight * kPixelBytes);
  const ui::ScreenArea area = ui::areaOf(button);
  const auto pixel = [&](int x, int y) {
    const std::size_t index = static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x);
    return picture.substr(head.size() + index * kPixelBytes, kPixelBytes);
  };
  EXPECT_NE(pixel(area.x + 3, area.y + 3), pixel(kWidth - 1, kHeight - 1));
}

}  // namespace
