// Frames on the screen: geometry, activation, and what desktops are told of them.

#include "framework/core/frame.h"

#include "framework/core/desktop_properties.h"
#include "framework/draw/screen.h"
#include "tests/ui/core/core_test.h"

#include <X11/Intrinsic.h>

namespace {

TEST(Frame, StartsWhereAndAsLargeAsItIsToldOrAsTheScreenAndTheSettingSuggest) {
  const std::string key = zApp::instance()->name() + ".startSize";
  ziScreen& screen = theScreen();
  const std::tuple<const char*, int, zSizer*, zDimension> rows[] = {
      {"", 96, new zSizer(nullptr), {640, 341}},
      {"500x300", 192, new zSizer(nullptr), {1000, 600}},
      {"5000x5000", 96, new zSizer(nullptr), {1264, 984}},
      {"2147483647x3000000", 960, new zSizer(nullptr), {1264, 984}},
      {"500x300", 96, new zSizer(70, 60, 90, 80), {90, 80}},
  };
  for (const auto& [setting, density, sizer, size] : rows) {
    XrmDatabase database = XtDatabase(ui::display());
    XrmPutStringResource(&database, key.c_str(), setting);
    screen.dotsPerInchX = screen.dotsPerInchY = density;
    const TestFrame frame(sizer);
    const zPoint at = sizer->pos();
    const auto has = [&](const char* name) { return ui::resource(frame.shell(), name); };
    EXPECT_EQ(asText({{has("x"), has("y")}, {has("width"), has("height")}}), asText({at, size}));
    EXPECT_EQ(sizer->size(), size);
    EXPECT_TRUE(at.x >= 0 && at.x <= std::min(640, 1264 - size.width)) << at.x;
    EXPECT_TRUE(at.y >= 0 && at.y <= std::min(512, 984 - size.height)) << at.y;
  }
  screen.dotsPerInchX = screen.dotsPerInchY = 96;
}

TEST(Frame, TheOuterRectangleHasTheDecorationAndIsWhatMovingTakes) {
  TestFrame frame;
  frame.moveResize(320, 240, 450, 350);
  frame.bringUp();
  EXPECT_EQ(ui::areaOf(frame.shell()).width, 450) << "asked for before there was a decoration";
  EXPECT_EQ(frame.exterior().pos(), (zPoint{320, 240}));
  frame.moveResize(200, 150, 500, 400);
  ui::waitFor([&] { return asText(frame.exterior()) == "200,150 500x400"; }, "the place");
  const ui::ScreenArea client = ui::areaOf(frame.shell());
  EXPECT_TRUE(client.x > 200 && client.y > 160 && client.width < 500 && client.height < 390);
}

TEST(Frame, TellsWhenTheWindowManagerActivatesItAndAsksToCloseIt) {
  const auto waitForNotes = [](const std::string& notes) {
    ui::waitFor([&] { return journal == notes; }, notes);
  };
  noted();
  Recorder recorder("r");
  TestFrame first;
  first.addHandler(&recorder, kFirst, kMsgActivate);
  first.bringUp();
  waitForNotes("r1:6:1 ");
  TestFrame second;
  second.bringUp();
  waitForNotes("r1:6:1 r1:6:0 ");
  ui::closeByWindowManager(ui::windowOf(first.shell()));
  waitForNotes("r1:6:1 r1:6:0 handler1:16:0 close:16:0 ");
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

}  // namespace
