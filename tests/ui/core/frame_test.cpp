// Frames on the screen: geometry, show states, activation, and what desktops are told of them.

#include "framework/core/frame.h"

#include <unistd.h>

#include "framework/core/desktop_properties.h"
#include "framework/core/dialog_frame.h"
#include "framework/core/message_box.h"
#include "framework/core/x_settings.h"
#include "framework/draw/pictures.h"
#include "framework/draw/res_id.h"
#include "framework/draw/screen.h"
#include "resources/resource_ids.h"
#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

using testing::AllOf;
using testing::Ge;
using testing::Le;

constexpr int kRoomAcross = 16;
constexpr int kRoomDown = 40;

TEST(Frame, StartsWhereAndAsLargeAsItIsToldOrAsTheScreenAndTheSettingSuggest) {
  const std::string key = zApp::instance()->name() + ".startSize";
  ziScreen& screen = theScreen();
  const zDimension all = screen.size();
  const int plain = screen.dotsPerInchX;
  const zDimension most = {all.width - kRoomAcross, all.height - kRoomDown};
  const struct {
    const char* setting;
    int density;
    zSizer* sizer;
    zDimension size;
  } rows[] = {
      {"", 96, new zSizer(nullptr), {all.width / 2, all.height / 3}},
      {"500x300", 96, new zSizer(nullptr), {500, 300}},
      {"500x300", 75, new zSizer(nullptr), {500, 300}},
      {"500x300", 192, new zSizer(nullptr), {1000, 600}},
      {"5000x300", 96, new zSizer(nullptr), {most.width, 300}},
      {"300x5000", 96, new zSizer(nullptr), {300, most.height}},
      {"5000x5000", 96, new zSizer(nullptr), most},
      {"500x300", 96, new zSizer(zPoint{70, 60}, zDimension{90, 80}), {90, 80}},
  };
  for (const auto& row : rows) {
    setXResource(key, row.setting);
    screen.dotsPerInchX = screen.dotsPerInchY = row.density;
    const TestFrame frame(row.sizer);
    const zRect place = frame.sizer()->rect();
    SCOPED_TRACE(std::string(row.setting) + " " + std::to_string(place.left));
    EXPECT_EQ(place.size(), row.size);
    EXPECT_EQ(ui::resource(frame.shell(), "width"), row.size.width);
    EXPECT_EQ(ui::resource(frame.shell(), "height"), row.size.height);
    EXPECT_EQ(ui::resource(frame.shell(), "y"), place.top);
    EXPECT_THAT(place.left, AllOf(Ge(0), Le(std::min(all.width / 2, most.width - row.size.width))));
    EXPECT_THAT(place.top,
                AllOf(Ge(0), Le(std::min(all.height / 2, most.height - row.size.height))));
  }
  screen.dotsPerInchX = screen.dotsPerInchY = plain;
  setXResource(key, "");
}

TEST(Frame, AsksForTheDecorationsAndFunctionsOfItsStyle) {
  std::string asked;
  for (const std::uint32_t style :
       {+0U, +kStyleTitleBar, +kStyleBorder, +kStyleSystemMenu, +kStyleMinimizeBox,
        +kStyleMaximizeBox, +kStyleResizeFrame, +kStyleMainWindow}) {
    const TestFrame frame(new zSizer(nullptr), "Frame", style);
    asked += std::to_string(ui::resource(frame.shell(), "mwmDecorations")) + " " +
             std::to_string(ui::resource(frame.shell(), "mwmFunctions")) + ", ";
  }
  EXPECT_EQ(asked, "2 36, 10 36, 2 36, 18 36, 34 44, 66 52, 6 38, 126 62, ");
}

TEST(Frame, ComesUpInTheShowStateAskedFor) {
  for (const int state : {kShowMinimized, kShowMinimize, kShowMinNoActive}) {
    TestFrame frame;
    frame.show(state);
    ui::waitFor([&] { return isIconic(frame.shell()); }, "the icon");
    EXPECT_FALSE(ui::isViewable(frame.shell()));
  }
  TestFrame frame;
  frame.bringUp(kShowMaximized);
  ui::waitFor([&] { return frame.exterior() == zRect({}, theScreen().size()); },
              "the whole screen");
  EXPECT_EQ(frame.sizer()->pos(), zPoint());
  EXPECT_FALSE(isIconic(frame.shell()));
}

TEST(Frame, OnlyTheMainWindowTheFirstHasShowStates) {
  TestFrame first;
  TestFrame second;
  EXPECT_EQ(zApp::instance()->mainWindow(), &first);
  EXPECT_TRUE(first.isMainWindow());
  EXPECT_FALSE(second.isMainWindow());
  first.bringUp();
  second.bringUp();
  second.show(kShowHide);
  ui::drain();
  EXPECT_TRUE(ui::isViewable(second.shell()));
  first.show(kShowHide);
  ui::waitFor([&] { return !ui::isViewable(first.shell()); }, "the main window to go");
  first.bringUp();
  first.show(kShowMinimize);
  constexpr unsigned long kIconicState = 3;
  EXPECT_EQ(propertyOf(ui::windowOf(first.shell()), "WM_HINTS").at(2), kIconicState);
  EXPECT_TRUE(ui::isViewable(first.shell())) << "for the next time that it is mapped";
  first.show(kShowMaximized);
  ui::waitFor([&] { return first.exterior() == zRect({}, theScreen().size()); },
              "the whole screen");
}

TEST(Frame, TheOuterRectangleHasTheDecorationAndIsWhatMovingTakes) {
  const zDimension all = theScreen().size();
  const std::pair<zPoint, zPoint> rows[] = {
      {{-5, -6}, {0, 0}}, {{all.width, all.height}, {all.width - 90, all.height - 80}}};
  for (const auto& [asked, taken] : rows) {
    TestFrame unseen(new zSizer(asked, zDimension{90, 80}));
    EXPECT_EQ(unseen.exterior(), zRect(taken, zDimension{90, 80})) << "it will be on the screen";
  }
  TestFrame frame;
  frame.moveResize(320, 240, 450, 350);
  EXPECT_EQ(frame.exterior(), zRect(zPoint{320, 240}, zDimension{450, 350}));
  frame.bringUp();
  EXPECT_EQ(ui::areaOf(frame.shell()).width, 450) << "asked for before there was a decoration";
  EXPECT_EQ(ui::areaOf(frame.shell()).height, 350);
  EXPECT_EQ(frame.exterior().pos(), (zPoint{320, 240}));
  frame.moveResize(200, 150, 500, 400);
  ui::waitFor([&] { return frame.exterior().size() == zDimension{500, 400}; }, "the outer size");
  const ui::ScreenArea client = ui::areaOf(frame.shell());
  EXPECT_LT(client.width, 500);
  EXPECT_LT(client.height, 400 - 10);
  EXPECT_GT(client.x, 200);
  EXPECT_GT(client.y, 150 + 10);
  const unsigned long before = XNextRequest(ui::display());
  frame.exterior();
  EXPECT_EQ(XNextRequest(ui::display()), before) << "what is known is not asked again";
  frame.moveResize(0, 0, 1, 1);
  ui::waitFor([&] { return ui::areaOf(frame.shell()).width < 200; }, "the least size");
  frame.setMinSize({300, 200});
  EXPECT_EQ(frame.minSize(), (zDimension{300, 200}));
  const auto hints = propertyOf(ui::windowOf(frame.shell()), "WM_NORMAL_HINTS");
  EXPECT_THAT((std::vector{hints.at(5), hints.at(6), hints.at(15), hints.at(16)}),
              ElementsAre(300, 200, 0, 0))
      << "sizes that the user types count from nothing";
}

TEST(Frame, TellsWhenTheWindowManagerActivatesItAndAsksToCloseIt) {
  TestFrame first;
  first.bringUp();
  ui::waitFor([&] { return !first.seen.empty(); }, "activation");
  XGrabKeyboard(ui::display(), ui::windowOf(first.shell()), False, GrabModeAsync, GrabModeAsync,
                CurrentTime);
  ui::drain();
  XUngrabKeyboard(ui::display(), CurrentTime);
  ui::drain();
  TestFrame second;
  second.bringUp();
  ui::waitFor([&] { return first.seen.size() >= 2; }, "deactivation");
  ui::closeByWindowManager(ui::windowOf(first.shell()));
  ui::waitFor([&] { return first.seen.size() >= 4; }, "the question");
  EXPECT_THAT(first.seen, ElementsAre("in", "out", "handler 16", "close 16"));
}

TEST(DesktopProperties, ATitleIsLatin1UnlessItIsWellFormedUtf8) {
  const std::pair<std::string, std::string> cases[] = {
      {"caf\xE9", "caf\xC3\xA9"},
      {"caf\xC3\xA9", "caf\xC3\xA9"},
      {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},                  // the last character
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xC2\x80\xC2\x80"},  // beyond it
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xC2\x80"},              // a surrogate
      {"\xED\x9F\xBF\xEE\x80\x80", "\xED\x9F\xBF\xEE\x80\x80"},  // round the surrogates
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"},                          // longer than needed
      {"\xC2\x80\xE0\xA0\x80", "\xC2\x80\xE0\xA0\x80"},          // as long as needed
      {"\xE2\x82", "\xC3\xA2\xC2\x82"},                          // cut off
  };
  for (const auto& [title, expected] : cases) {
    EXPECT_EQ(titleInUtf8(title), expected) << title;
  }
}

void expectAnnounced(Window window, const char* type, const std::string& title) {
  using Items = std::vector<unsigned long>;
  EXPECT_EQ(propertyOf(window, "_NET_WM_WINDOW_TYPE"), Items{atomNamed(type)});
  EXPECT_EQ(propertyOf(window, "_NET_WM_PID"), Items{static_cast<unsigned long>(getpid())});
  EXPECT_FALSE(propertyOf(window, "WM_CLIENT_MACHINE").empty())
      << "alone a process number says nothing";
  const Items bytes = propertyOf(window, "_NET_WM_NAME");
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), title);
}

TEST(DesktopProperties, TellTypeProcessPresentTitleAndIconOfEachWindow) {
  const auto iconOf = [](const zFrameWin& window) {
    return propertyOf(ui::windowOf(window.shell()), "_NET_WM_ICON");
  };
  TestFrame frame(new zSizer(200, 150, 400, 300), "Parent");
  frame.setIcon(zResId(kIconMain));
  frame.show();
  Window window = ui::waitForDialog("Parent");
  expectAnnounced(window, "_NET_WM_WINDOW_TYPE_NORMAL", "Parent");
  EXPECT_EQ(iconOf(frame), zIcon(zResId(kIconMain)).windowManagerPixels());
  for (const bool wanted : {true, false}) {
    constexpr unsigned long kUrgency = 1U << 8;
    demandAttention(frame.shell(), wanted);
    EXPECT_EQ((propertyOf(window, "WM_HINTS").at(0) & kUrgency) != 0, wanted);
  }
  zDialogFrame dialog(&frame, new zSizer(0, 0, 100, 50), 0);
  dialog.setCaption("Gr\xFC\xDF");
  expectAnnounced(ui::windowOf(dialog.shell()), "_NET_WM_WINDOW_TYPE_DIALOG", "Gr\xC3\xBC\xC3\x9F");
  dialog.setIcon(zResId(kIconText));
  EXPECT_EQ(iconOf(dialog), zIcon(zResId(kIconText)).windowManagerPixels());
  dialog.setIcon(std::unique_ptr<zIcon>());
  EXPECT_THAT(iconOf(dialog), IsEmpty());
  ui::ModalScript script;
  script.onDialog("Box", [] {
    expectAnnounced(ui::windowWithTitle("Box"), "_NET_WM_WINDOW_TYPE_DIALOG", "Box");
    ui::pressKey(XK_Escape);
  });
  script.run([&] { return zMessage(&frame, "Text", "Box", kBoxOk).result; });
}

}  // namespace
