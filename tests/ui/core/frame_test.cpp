// Frames on the screen: geometry, activation, and what desktops are told of them.

#include "framework/core/desktop_properties.h"
#include "framework/core/x_settings.h"
#include "framework/draw/pictures.h"
#include "framework/draw/screen.h"
#include "resources/resource_ids.h"
#include "tests/ui/core/core_test.h"

#include <X11/Intrinsic.h>
#include <X11/Xutil.h>

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

TEST(Settings, AreReadOfTheApplicationAndThoseOfAWholeRunOnce) {
  const zXSettings usual = g_XSettings;
  g_XSettings.useChildMdi = -1;
  XrmDatabase database = XtDatabase(ui::display());
  std::string told;
  for (const char* lines : {"a.other: 1", "b.useChildMDI: 0\nb.startSize: 500x300",
                            "c.positionIsFrameWorkaround: yes\nc.incFontInDialogBy: -3",
                            "d.positionIsFrameWorkaround: 2\nd.incFontInDialogBy: True\n"
                            "d.startSize: 500x300+1+1\nd.promptKeyDelay: 20"}) {
    XrmMergeDatabases(XrmGetStringDatabase(lines), &database);
    readXSettings(ui::display(), {*lines});
    const zXSettings& read = g_XSettings;
    for (const int value : {read.useChildMdi, int{read.positionIsFrameWorkaround},
                            read.incFontInDialogBy, read.startSize.width, read.promptKeyDelay}) {
      told += std::to_string(value) + ' ';
    }
  }
  EXPECT_EQ(told, "1 0 0 0 300 1 0 0 500 300 1 0 -3 0 300 1 1 1 0 20 ");
  g_XSettings = usual;
}

/// A property of the window, as Xlib hands it out: 32 bits as a long.
std::string property(const TestFrame& frame, const char* name) {
  XTextProperty text{};
  XGetTextProperty(ui::display(), ui::windowOf(frame.shell()), &text,
                   XInternAtom(ui::display(), name, False));
  const std::unique_ptr<unsigned char, int (*)(void*)> owned(text.value, XFree);
  return {reinterpret_cast<char*>(text.value), text.nitems * (text.format == 8 ? 1 : sizeof(long))};
}

TEST(Frame, TellsTheWindowManagerAndTheDesktopWhatItIs) {
  std::string told;
  for (const std::uint32_t style : {0U, kStyleTitleBar, kStyleSystemMenu, kStyleMinimizeBox,
                                    kStyleMaximizeBox, kStyleResizeFrame, kStyleMainWindow}) {
    const zAppFrame framed(nullptr, new zSizer(0, 0, 9, 9), style, "");
    told += ui::numbers(framed.shell(), {"mwmDecorations", "mwmFunctions"});
  }
  EXPECT_EQ(told, "2 36 10 36 18 36 34 44 66 52 6 38 126 62 ");
  TestFrame frame;
  frame.setIcon(zResId(kIconMain));
  ui::bringUp(frame);
  frame.setCaption("caf\xE9");
  EXPECT_EQ(property(frame, "_NET_WM_NAME"), "caf\xC3\xA9");
  EXPECT_EQ(property(frame, "_NET_WM_ICON").size(), (2 + 32 * 32) * sizeof(long));
  frame.setIcon(nullptr);
  EXPECT_EQ(property(frame, "_NET_WM_ICON"), "");
  frame.setMinSize({90, 80});
  EXPECT_EQ(ui::numbers(frame.shell(),
                        {"iconPixmap", "minWidth", "minHeight", "baseWidth", "baseHeight"}),
            "0 90 80 0 0 ");
}

TEST(Frame, TheOuterRectangleHasTheDecorationAndIsWhatMovingTakes) {
  TestFrame frame;
  frame.moveResize(320, 240, 450, 350);
  frame.show();
  EXPECT_EQ(asText(frame.exterior()), "320,240 450x350");
  ui::bringUp(frame);
  EXPECT_EQ(ui::areaOf(frame.shell()).width, 450) << "asked for before there was a decoration";
  EXPECT_EQ(frame.exterior().pos(), (zPoint{320, 240}));
  g_XSettings.positionIsFrameWorkaround = true;  // has nothing to do where the place is right
  frame.moveResize(200, 150, 500, 400);
  g_XSettings.positionIsFrameWorkaround = false;
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
  ui::bringUp(first);
  waitForNotes("r1:6:1 ");
  TestFrame second;
  ui::bringUp(second);
  waitForNotes("r1:6:1 r1:6:0 ");
  ui::closeByWindowManager(ui::windowOf(first.shell()));
  waitForNotes("r1:6:1 r1:6:0 handler1:16:0 close:16:0 ");
}

TEST(DesktopProperties, ATitleIsLatin1UnlessItIsWellFormedUtf8) {
  const std::pair<std::string, std::string> cases[] = {
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
