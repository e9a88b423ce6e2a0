// Frames on the screen: geometry, activation, and what desktops are told of them.

#include "framework/core/frame.h"

#include <unistd.h>

#include "framework/core/desktop_properties.h"
#include "framework/core/x_settings.h"
#include "framework/draw/pictures.h"
#include "framework/draw/screen.h"
#include "resources/resource_ids.h"
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
  const int usualLevel = debugLevel();
  g_XSettings.useChildMdi = -1;
  setDebugLevel(-1);
  std::string told;
  for (const char* lines :
       {"", "a.positionIsFrameWorkaround: yes\na.incFontInDialogBy: -3\na.startSize: 500x300",
        "b.useChildMDI: 0\nb.debugOn: 2\nb.positionIsFrameWorkaround: 2\n"
        "b.incFontInDialogBy: True\nb.startSize: 500x300+1+1\nb.promptKeyDelay: 20",
        "c.useChildMDI: 1\nc.debugOn: 0\nc.promptKeyDelay: true"}) {
    if (*lines == 'b') {
      g_XSettings.useChildMdi = -1;
      setDebugLevel(-1);
    }
    XrmDatabase database = XtDatabase(ui::display());
    XrmMergeDatabases(XrmGetStringDatabase(lines), &database);
    readXSettings(ui::display(), std::string(lines, *lines == '\0' ? 0 : 1));
    const zXSettings& read = g_XSettings;
    for (const int value : {read.useChildMdi, debugLevel(), int{read.positionIsFrameWorkaround},
                            read.incFontInDialogBy, read.startSize.width, read.startSize.height,
                            read.promptKeyDelay}) {
      told += std::to_string(value) + ' ';
    }
    told += '\n';
  }
  EXPECT_EQ(told, "1 0 0 0 0 0 300 \n1 0 0 -3 500 300 300 \n0 2 1 1 0 0 20 \n0 2 0 0 0 0 1 \n");
  testing::internal::CaptureStdout();
  zDebugOut("%d%%%% %s", 5, "a%%b%c%");
  setDebugLevel(0);
  zDebugOut("no more");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "5% a%b%c%\r\n");
  g_XSettings = usual;
  setDebugLevel(usualLevel);
}

/// The items of a window's property of that kind.
template <class Item>
std::vector<Item> property(const TestFrame& frame, const char* name) {
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(ui::display(), ui::windowOf(frame.shell()),
                     XInternAtom(ui::display(), name, False), 0, 9999, False, AnyPropertyType,
                     &type, &format, &count, &left, &data);
  const std::unique_ptr<unsigned char, int (*)(void*)> owned(data, XFree);
  const auto* items = reinterpret_cast<const Item*>(data);
  return {items, items + count};
}

TEST(Frame, TellsTheWindowManagerAndTheDesktopWhatItIs) {
  std::string told;
  for (const std::uint32_t style : {0U, kStyleTitleBar, kStyleSystemMenu, kStyleMinimizeBox,
                                    kStyleMaximizeBox, kStyleResizeFrame, kStyleMainWindow}) {
    const zAppFrame frame(nullptr, new zSizer(0, 0, 9, 9), style, "");
    for (const char* name : {"mwmDecorations", "mwmFunctions"}) {
      told += std::to_string(ui::resource(frame.shell(), name)) + ' ';
    }
  }
  EXPECT_EQ(told, "2 36 10 36 18 36 34 44 66 52 6 38 126 62 ");
  TestFrame frame;
  frame.setIcon(zResId(kIconMain));
  frame.bringUp();
  frame.setCaption("caf\xE9");
  const std::vector<char> title = property<char>(frame, "_NET_WM_NAME");
  EXPECT_EQ(std::string(title.begin(), title.end()), "caf\xC3\xA9");
  EXPECT_EQ(property<long>(frame, "_NET_WM_PID"), std::vector<long>{getpid()});
  EXPECT_EQ(property<long>(frame, "_NET_WM_WINDOW_TYPE").at(0),
            static_cast<long>(XInternAtom(ui::display(), "_NET_WM_WINDOW_TYPE_NORMAL", False)));
  EXPECT_EQ(property<long>(frame, "_NET_WM_ICON").size(), 2U + 32 * 32);
  EXPECT_NE(ui::resource(frame.shell(), "iconPixmap"), 0);
  frame.setIcon(nullptr);
  EXPECT_EQ(property<long>(frame, "_NET_WM_ICON").size(), 0U);
  frame.setMinSize({90, 80});
  told.clear();
  for (const char* name : {"iconPixmap", "minWidth", "minHeight", "baseWidth", "baseHeight"}) {
    told += std::to_string(ui::resource(frame.shell(), name)) + ' ';
  }
  EXPECT_EQ(told, "0 90 80 0 0 ");
}

TEST(Frame, ShowsAsAnIconOverTheWholeScreenOrNotAtAllWhenTold) {
  TestFrame frame;
  const auto isSeen = [&] { return ui::isViewable(frame.shell()) && !isIconic(frame.shell()); };
  frame.show(kShowMinimized);
  ui::waitFor([&] { return isIconic(frame.shell()); }, "the icon");
  frame.show();
  ui::waitFor(isSeen, "the frame");
  frame.show(kShowHide);
  ui::waitFor([&] { return !ui::isViewable(frame.shell()); }, "no frame");
  frame.show(kShowMinimize);
  frame.show();
  ui::waitFor([&] { return isIconic(frame.shell()); }, "the icon again");
  frame.show(kShowMaximized);
  frame.show();
  ui::waitFor(isSeen, "the frame again");
  ui::waitFor([&] { return asText(frame.exterior()) == "0,0 1280x1024"; }, "the whole screen");
}

TEST(Frame, TheOuterRectangleHasTheDecorationAndIsWhatMovingTakes) {
  TestFrame frame;
  frame.moveResize(320, 240, 450, 350);
  frame.show();
  EXPECT_EQ(asText(frame.exterior()), "320,240 450x350");
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
