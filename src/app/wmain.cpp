// The main window: construction and destruction. Commands are in wmain_commands.cpp, the roads out
// in wmain_exits.cpp.

#include "app/wmain.h"

#include "app/app_main.h"
#include "app/main_toolbar.h"
#include "app/tester_questions.h"
#include "buttons/control_pane.h"
#include "framework/core/application.h"
#include "framework/draw/icon.h"
#include "framework/draw/measure.h"
#include "framework/draw/res_id.h"
#include "framework/layout/grav_sizer.h"
#include "framework/menus/menu.h"
#include "resources/command_ids.h"
#include "resources/resource_ids.h"
#include "textarea/command_queue.h"
#include "textarea/my_pane.h"
#include "textarea/ret_edit_line.h"
#include "textarea/text_pane.h"

WMain* g_MainWindow = nullptr;
int g_MainIconId = 0;

namespace {

constexpr std::uint32_t kMainWindowStyle = 0xCF0000;
constexpr std::uint32_t kStatusLineStyle =
    zStatusLineEZ::kClock | zStatusLineEZ::kNumLock | zStatusLineEZ::kCapsLock;
// Dialog units.
constexpr int kMarginUnits = 2;
constexpr int kButtonAreaUnits = 160;
// Below this the log and the command line beside the button area could not be used.
constexpr zDimension kLeastUnits = {260, 90};

}  // namespace

WMain::WMain(zWindow* parent, const char* title)
    : zAppFrame(parent, new zSizer(nullptr), kMainWindowStyle, title) {
  g_MainWindow = this;
  createMenu();
  zApp::instance()->loadAccelerators(kAcceleratorsMain);
  g_MainIconId = kIconMain;
  setIcon(zResId(kIconMain));
  createToolBar();
  createStatusLine();
  createMargins();
  createPanes();
  setCaption(g_AppTitle);
  setMinSize(zDialogUnit(kLeastUnits.width, kLeastUnits.height).size());
  theCommandLine->startFocusTimer();
  show();
}

void WMain::createMenu() {
  auto bar = std::make_unique<zMenu>(this);
  menuBar = bar.get();
  pulldowns = buildMainMenu(*menuBar);
  bindCommands();
  pulldowns[kViewMenu]->addMenuInitHandler(this, toHandler(&WMain::onViewMenuShown));
  pulldowns[kViewMenu]->addHandler(this, toHandler(&WMain::onViewMenuSelect), kMsgMenuSelect);
  for (const int initiallyOff : {kCommandFindNext, kCommandSaveButtons}) {
    menuBar->setGrayed(initiallyOff, 1);
  }
  setMenu(std::move(bar));
  menuBar->create();
}

void WMain::createToolBar() {
  constexpr int kToolBarHeight = 30;
  toolBarStrip.sizer = new zGravSizer(kGravityTop, kToolBarHeight, sizer());
  toolBar = new ClMainToolBar(this, toolBarStrip.sizer, 0);
  toolBarStrip.window = toolBar;
  toolBarStrip.size = toolBarStrip.sizer->extent();
  toolBar->show();
}

void WMain::createStatusLine() {
  statusLineStrip.sizer = new zGravSizer(kGravityBottom, 0, sizer());
  statusLine = new zStatusLineEZ(this, statusLineStrip.sizer, kStatusLineStyle);
  statusLineStrip.window = statusLine;
  // The line has asked for the height that its font needs.
  statusLineStrip.size = statusLineStrip.sizer->extent();
  new zStatusItemText(*statusLine, new zGravSizer(kGravityCentre, 0), kHelpItemId, kStatusSunken);
  setMenuHelp({});
  statusLine->show();
}

void WMain::createMargins() {
  const zDialogUnit margin(kMarginUnits, kMarginUnits);
  topSpacer = std::make_unique<zGravSizer>(kGravityTop, margin.height(), sizer());
  bottomSpacer = std::make_unique<zGravSizer>(kGravityBottom, margin.height(), sizer());
  leftSpacer = std::make_unique<zGravSizer>(kGravityLeft, margin.width(), sizer());
  rightSpacer = std::make_unique<zGravSizer>(kGravityRight, margin.width(), sizer());
}

void WMain::createPanes() {
  const zDialogUnit buttonArea(kButtonAreaUnits, 0);
  ziButtonHost& host = *this;
  controlPane = std::make_unique<ControlPane>(
      this, new zGravSizer(kGravityLeft, buttonArea.width(), sizer()), host);
  controlPane->show();
  myPane = std::make_unique<MyPane>(this, new zGravSizer(kGravityFill, zDimension{}, sizer()));
  theTextPane->setZoomListener(
      [this](int command, bool possible) { toolBar->setPossible(command, possible); });
}

WMain::~WMain() {
  dropUnfinishedQuestions();
  findHistory.clear();
  for (auto& pulldown : pulldowns) {
    pulldown.reset();
  }
  topSpacer.reset();
  bottomSpacer.reset();
  leftSpacer.reset();
  rightSpacer.reset();
  controlPane.reset();
  myPane.reset();
  g_MainWindow = nullptr;
}

int WMain::handle(zEvent* /*event*/) {
  return 0;
}

int WMain::activate(zEvent* event) {
  if (event->wparam != 0 && theCommandLine != nullptr) {
    // What is typed before the timer has fired is a command, too, and for no button of a group.
    theCommandLine->takeFocus();
    theCommandLine->startFocusTimer();
  }
  return 0;
}

int WMain::focus(zEvent* event) {
  if (event->message == kMsgFocusIn && theCommandLine != nullptr) {
    theCommandLine->startFocusTimer();
  }
  return 0;
}
