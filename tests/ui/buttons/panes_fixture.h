#pragma once

#include "buttons/button_host.h"
#include "buttons/button_pane.h"
#include "buttons/control_pane.h"
#include "buttons/group_pane.h"
#include "framework/controls/control.h"
#include "framework/controls/scroll_bar.h"
#include "framework/draw/measure.h"
#include "framework/layout/sizers.h"
#include "framework/menus/menu.h"
#include "resources/resource_ids.h"
#include "tests/ui/support/ui_test.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

/// A main window that notes what the button set asks of it. Its bar has three pull-downs; the log
/// and the command line are right of the buttons.
class PanesFrame : public zAppFrame, public ziButtonHost {
 public:
  static constexpr const char* kTitle = "Panes";

  PanesFrame() : zAppFrame(nullptr, new zSizer(100, 60, 700, 500), 0xCF0000, kTitle) {
    auto owned = std::make_unique<zMenu>(this);
    bar = owned.get();
    setMenu(std::move(owned));
    for (int i = 0; i < 3; ++i) {
      bar->addSubMenu(&pulldowns[i], "Menu", i);
    }
    pulldowns[2].appendItem(kCommandSaveButtons, "&Save", 0);
    bar->create();
    area = std::make_unique<zGravSizer>(kGravityLeft, zDialogUnit(160, 0).width(), sizer());
    pane = new ControlPane(this, new zGravSizer(kGravityFill, 0, area.get()), *this);
    pane->show();
    textArea = std::make_unique<MyPane>(this, new zGravSizer(kGravityFill, zDimension{}, sizer()));
  }
  ~PanesFrame() override { delete pane; }

  zWindow& window() override { return *this; }
  zMenu& mainMenu() override { return *bar; }
  RWCString applicationTitle() override { return "App"; }
  int toolBarHeight() override { return 7; }
  void executeCommandLine(const RWCString& line) override { journal += line.str() + ";"; }
  void showStatus(const RWCString& shown) override { journal += "status " + shown.str() + ";"; }
  void setMenuHelp(std::span<const zHelpText> rows) override {
    help.clear();
    for (const zHelpText& row : rows) {
      help += std::to_string(row.id) + " " + row.text + "|";
    }
  }
  zMenu pulldowns[3];
  zMenu* bar = nullptr;
  std::unique_ptr<zGravSizer> area;
  ControlPane* pane = nullptr;
  std::unique_ptr<MyPane> textArea;
  std::string journal;  ///< commands, texts of the status line
  std::string help;
};

class ButtonPanes : public testing::Test {
 protected:
  ButtonPanes() {
    registerRecordControls();
    ui::bringUp(*frame);
  }

  static GroupPane& set() { return *theGroupPane; }
  static ButtonSetDocument& document() { return set().document(); }
  static ButtonPane& pane(std::size_t index) { return *set().groups().at(index); }
  static const ButtonGroup& group(std::size_t index) { return pane(index).group(); }
  static DynButton& button(std::size_t ofGroup, std::size_t index) {
    return *pane(ofGroup).commands().at(index).window;
  }

  /// A group on the screen, its buttons named "B1", "B2", ... and defined as "b1", ...
  static ButtonPane& addGroup(const std::string& name, int buttons, bool expanded = true) {
    ButtonGroup added{name, expanded, {}};
    for (int i = 1; i <= buttons; ++i) {
      added.buttons.push_back({"B" + std::to_string(i), "b" + std::to_string(i)});
    }
    document().append({{added}, {}});
    ui::drain();
    return *set().groups().back();
  }

  /// 0 the vertical, 1 the horizontal one.
  zScrollBarCtrl& bar(int number) const {
    return *ui::childOf<zScrollBarCtrl>(*frame->pane, number);
  }

  void scroll(int number, int position) const {
    bar(number).scrollPos()->setPosition(position);
    set().scrolled(bar(number));
    ui::drain();
  }

  static void awaitCommandLine() { ui::waitForFocus(theCommandLine->innerWidget()); }
  void awaitJournal(const std::string& wanted) {
    ui::waitFor([&] { return frame->journal == wanted; }, wanted);
    frame->journal.clear();
  }

  std::unique_ptr<PanesFrame> frame = std::make_unique<PanesFrame>();
};
