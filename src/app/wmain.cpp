// The main window: construction and destruction, what the button set asks of it, and the roads out
// of the program, which all meet in canExit, close, ToolExit and zApp::quit. The commands are in
// wmain_commands.cpp.

#include "app/wmain.h"

#include "app/message_handler.h"
#include "buttons/control_pane.h"
#include "buttons/group_pane.h"
#include "framework/core/application.h"
#include "framework/core/modal_shell.h"
#include "framework/draw/measure.h"
#include "framework/draw/pictures.h"
#include "framework/draw/res_id.h"
#include "framework/layout/sizers.h"
#include "framework/menus/menu.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "resources/resource_ids.h"
#include "textarea/command_queue.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

WMain* g_MainWindow = nullptr;
int g_MainIconId = 0;

namespace {

constexpr std::uint32_t kMainWindowStyle = kStyleMainWindow;
constexpr std::uint32_t kStatusLineStyle =
    zStatusLineEZ::kClock | zStatusLineEZ::kNumLock | zStatusLineEZ::kCapsLock;
// Dialog units.
constexpr int kMarginUnits = 2;
constexpr int kButtonAreaUnits = 160;
// Below this the log and the command line beside the button area could not be used.
constexpr zDimension kLeastUnits = {260, 90};

}  // namespace

WMain::WMain(zWindow* parent, const char* title, Session& ownSession)
    : zAppFrame(parent, new zSizer(nullptr), kMainWindowStyle, title), session(ownSession) {
  g_MainWindow = this;
  createMenu();
  zApp::instance()->loadAccelerators(kAcceleratorsMain);
  g_MainIconId = kIconMain;
  setIcon(zResId(kIconMain));
  createToolBar();
  createStatusLine();
  createMargins();
  createPanes();
  setCaption(session.appTitle.data());
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

int WMain::canExit() {
  if (session.isAskingToExit()) {
    // The question is on the screen already; its answer decides for the first who asked.
    ziModalShell::raiseNewest();
  }
  const ziAlive alive(this);
  return session.confirmExit([] { return theGroupPane->queryExit(); },
                             [&alive] { return alive && zApp::instance()->isRunning(); });
}

// Asked before the link is left, which may end the process. Where the question is up already, the
// end follows its answer.
void WMain::endWithoutLink() {
  session.isLinkLost = true;
  exit();
}

int WMain::close(zEvent* /*event*/) {
  if (canExit() == 0) {
    return 1;
  }
  ToolSend(NELKV, MSG_UI_EXIT, nullptr, 0);
  ToolExit(NELKVUI);
  theCommandLine->startFocusTimer();
  return 0;
}

// The link is left first, so that close, which quit asks, has nobody left to tell: no 1007 is sent.
void WMain::exit() {
  if (canExit() != 0) {
    ToolExit(NELKVUI);
    zApp::instance()->quit();
  }
}

void WMain::executeCommandLine(const RWCString& line) {
  ::executeCommandLine(line.view());
}

RWCString WMain::applicationTitle() {
  return session.appTitle.data();
}

// The global keeps its value while the bar is hidden.
int WMain::toolBarHeight() {
  return toolBarStrip.isVisible ? g_ToolBarHeight : g_ToolBarHeight - toolBarStrip.size.height;
}

void WMain::showStatus(const RWCString& shown) {
  statusLine->setText(0, shown);
}

void WMain::setMenuHelp(std::span<const zHelpText> rows) {
  helpTexts = mainCommandHelp();
  helpTexts.insert(helpTexts.end(), rows.begin(), rows.end());
  helpTexts.push_back({0, nullptr});
  statusLine->setHelpTable(kHelpItemId, helpTexts.data());
}
