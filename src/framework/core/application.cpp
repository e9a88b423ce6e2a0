// The application object's set-up: Xt and Motif, the display, the default font, the screen. The
// display stays open when the object goes; whoever made the object closes it.

#include "framework/core/application.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "framework/core/interfaces.h"
#include "framework/core/toolkit_xm.h"
#include "framework/core/x_settings.h"
#include "framework/draw/font_dict.h"
#include "framework/draw/pictures.h"
#include "framework/draw/res_id.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

#include <X11/XKBlib.h>
#include <Xm/XmAll.h>

namespace {

// For a server that does not tell the size of its screen.
constexpr int kUsualDotsPerInch = 96;

zApp* theApplication = nullptr;

void initializeToolkit() {
  XtInitializeWidgetClass(applicationShellWidgetClass);
  XmRepTypeInstallTearOffModelConverter();
}

bool isAltKeysym(KeySym keysym) {
  return keysym == XK_Alt_L || keysym == XK_Alt_R;
}

}  // namespace

zApp* zApp::instance() {
  return theApplication;
}

zApp::zApp(int argc, char** argv, std::string commandLine)
    : joinedArguments(std::move(commandLine)), arguments(argv, argv + argc) {
  theApplication = this;
  setDrawMessageSink([](const std::string& text) { zDebugOut("%s", text.c_str()); });
  ziDrawCache::create();
  idle = std::make_unique<zIdleList>();
  XSetErrorHandler(XErrorReporter);
  registerControlClasses();
  openDisplay();
}

zApp::~zApp() {
  theScreen().defaultFont.reset();
  joinedArguments.clear();
  ziDrawCache::destroy();
  accelerators.clear();
  setDefaultResourceFile({});
  closeResourceFile();
  theScreen().display = nullptr;
  fallbackTexts.clear();
  theApplication = nullptr;
  idle.reset();
}

void zApp::registerControlClasses() {
  for (const char* name : {"zTextPane", "zPaneControl", "zBitmapPane", "zTabCtrl",
                           "msctls_updown32", "msctls_trackbar32"}) {
    registerControlClass(name);
  }
}

void zApp::openDisplay() {
  XtToolkitInitialize();
  XtSetLanguageProc(nullptr, nullptr, nullptr);
  initializeToolkit();
  computeResourceColours();
  appContext = XtCreateApplicationContext();
  if (appContext == nullptr) {
    std::fputs("Error: unable to create application context.\n", stderr);
    std::exit(EXIT_FAILURE);
  }
  if (!fallbackResources.empty()) {
    XtAppSetFallbackResources(appContext, fallbackResources.data());
  }
  // Xt takes the options that it knows out of what it is given.
  std::vector<char*> given = arguments;
  auto count = static_cast<int>(given.size());
  given.push_back(nullptr);
  xDisplay = XtOpenDisplay(appContext, nullptr, nullptr, appName.c_str(), nullptr, 0, &count,
                           given.data());
  if (xDisplay == nullptr) {
    const char* name = displayArgument(static_cast<int>(arguments.size()), arguments.data());
    std::fprintf(stderr, "Error:  unable to open display \"%s\".\n", XDisplayName(name));
    std::exit(EXIT_FAILURE);
  }
  // One byte is one character from here on, whatever the user's locale: a text widget would drop
  // what follows an invalid sequence, and positions in the log count bytes.
  std::setlocale(LC_CTYPE, "C");
  initializeToolkit();
  theScreen().display = xDisplay;
  readScreen();
  ziDrawCache::instance().makeFonts();
  resolveFontPoints(xDisplay);
  dropOldConfigureEvents(xDisplay);
  loadDefaultFont();
}

void zApp::readScreen() {
  ziScreen& screen = theScreen();
  screen.readSize();
  if (screen.dotsPerInchX <= 0 || screen.dotsPerInchY <= 0) {
    screen.dotsPerInchX = screen.dotsPerInchY = kUsualDotsPerInch;
  }
}

void zApp::loadDefaultFont() {
  const std::string className = appName + ".XmMainWindow.FontList";
  const std::optional<std::string> asked =
      readXResource(xDisplay, "?.MainWindow.fontList", className.c_str());
  theScreen().loadDefaultFont(asked.value_or(ziScreen::kDefaultFontName));
}

void zApp::takeDisplay(Widget widget) {
  if (isDisplaySet) {
    return;
  }
  isDisplaySet = true;
  xDisplay = XtDisplay(widget);
  theScreen().display = xDisplay;
  readScreen();
  readAltMask();
}

void zApp::readAltMask() {
  XModifierKeymap* map = XGetModifierMapping(xDisplay);
  if (map == nullptr) {
    return;
  }
  const int total = (Mod5MapIndex + 1) * map->max_keypermod;
  for (int i = 0; i < total; ++i) {
    const KeyCode code = map->modifiermap[i];
    // The last key found counts.
    if (code != 0 && isAltKeysym(XkbKeycodeToKeysym(xDisplay, code, 0, 0))) {
      altModifiers = 1U << static_cast<unsigned>(i / map->max_keypermod);
    }
  }
  XFreeModifiermap(map);
}
