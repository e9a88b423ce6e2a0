// The main window: construction and destruction. Commands are in wmain_commands.cpp, the roads out
// in wmain_exits.cpp.

#include "app/wmain.h"

#include "app/app_main.h"
#include "framework/core/application.h"
#include "framework/draw/measure.h"
#include "framework/furniture/menu.h"
#include "framework/layout/grav_sizer.h"
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
constexpr int kMarginUnits = 2;  // dialog units

}  // namespace

WMain::WMain(zWindow* parent, const char* title)
    : zAppFrame(parent, new zSizer(nullptr), kMainWindowStyle, title) {
  g_MainWindow = this;
  createMenu();
  zApp::instance()->loadAccelerators(kAcceleratorsMain);
  g_MainIconId = kIconMain;
  createStrips();
  createMargins();
  createRest();
  setCaption(g_AppTitle);
  theCommandLine->startFocusTimer();
  show();
}

void WMain::createMenu() {
  auto bar = std::make_unique<zMenu>(this);
  menuBar = bar.get();
  pulldowns = buildMainMenu(*menuBar);
  // What has no binding stays greyed.
  for (const MenuRow& row : mainMenuRows()) {
    if (row.label != nullptr) {
      menuBar->setGrayed(row.id, 1);
    }
  }
  bindCommands();
  pulldowns[kViewMenu]->addMenuInitHandler(this, toHandler(&WMain::onViewMenuShown));
  menuBar->setGrayed(kCommandFindNext, 1);
  setMenu(std::move(bar));
  menuBar->create();
}

// Nothing stands in the strips yet, so they take no room.
void WMain::createStrips() {
  toolBar.sizer = std::make_unique<zGravSizer>(kGravityTop, 0, sizer());
  toolBar.size = toolBar.sizer->extent();
  statusLine.sizer = std::make_unique<zGravSizer>(kGravityBottom, 0, sizer());
  statusLine.size = statusLine.sizer->extent();
}

void WMain::createMargins() {
  const zDialogUnit margin(kMarginUnits, kMarginUnits);
  topSpacer = std::make_unique<zGravSizer>(kGravityTop, margin.height(), sizer());
  bottomSpacer = std::make_unique<zGravSizer>(kGravityBottom, margin.height(), sizer());
  leftSpacer = std::make_unique<zGravSizer>(kGravityLeft, margin.width(), sizer());
  rightSpacer = std::make_unique<zGravSizer>(kGravityRight, margin.width(), sizer());
}

void WMain::createRest() {
  buttonArea = std::make_unique<zGravSizer>(kGravityLeft, 0, sizer());
  myPane = std::make_unique<MyPane>(this, new zGravSizer(kGravityFill, zDimension{}, sizer()));
  theTextPane->setZoomListener(
      [this](int command, bool possible) { menuBar->setGrayed(command, possible ? 0 : 1); });
}

WMain::~WMain() {
  findHistory.clear();
  for (auto& pulldown : pulldowns) {
    pulldown.reset();
  }
  topSpacer.reset();
  bottomSpacer.reset();
  leftSpacer.reset();
  rightSpacer.reset();
  myPane.reset();
  g_MainWindow = nullptr;
}

void WMain::executeCommandLine(const RWCString& line) {
  ::executeCommandLine(line.view());
}

int WMain::handle(zEvent* /*event*/) {
  return 0;
}

int WMain::activate(zEvent* event) {
  if (event->wparam != 0 && theCommandLine != nullptr) {
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
