// The main window: construction and destruction. The roads out are in wmain_exits.cpp.

#include "app/wmain.h"

#include "app/app_main.h"
#include "framework/core/application.h"
#include "framework/draw/measure.h"
#include "framework/layout/grav_sizer.h"
#include "resources/resource_ids.h"
#include "textarea/command_queue.h"
#include "textarea/my_pane.h"
#include "textarea/ret_edit_line.h"

WMain* g_MainWindow = nullptr;

namespace {

constexpr std::uint32_t kMainWindowStyle = 0xCF0000;
constexpr int kMarginUnits = 2;  // dialog units

}  // namespace

WMain::WMain(zWindow* parent, const char* title)
    : zAppFrame(parent, new zSizer(nullptr), kMainWindowStyle, title) {
  g_MainWindow = this;
  zApp::instance()->loadAccelerators(kAcceleratorsMain);
  createMargins();
  myPane = std::make_unique<MyPane>(this, new zGravSizer(kGravityFill, zDimension{}, sizer()));
  setCaption(g_AppTitle);
  theCommandLine->startFocusTimer();
  show();
}

void WMain::createMargins() {
  const zDialogUnit margin(kMarginUnits, kMarginUnits);
  topSpacer = std::make_unique<zGravSizer>(kGravityTop, margin.height(), sizer());
  bottomSpacer = std::make_unique<zGravSizer>(kGravityBottom, margin.height(), sizer());
  leftSpacer = std::make_unique<zGravSizer>(kGravityLeft, margin.width(), sizer());
  rightSpacer = std::make_unique<zGravSizer>(kGravityRight, margin.width(), sizer());
}

WMain::~WMain() {
  topSpacer.reset();
  bottomSpacer.reset();
  leftSpacer.reset();
  rightSpacer.reset();
  myPane.reset();
  g_MainWindow = nullptr;
}

void WMain::executeCommandLine(const RWCString& line) { ::executeCommandLine(line.view()); }

int WMain::handle(zEvent* /*event*/) { return 0; }

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
