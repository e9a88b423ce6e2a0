#pragma once

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "buttons/button_host.h"
#include "buttons/button_pane.h"
#include "buttons/control_pane.h"
#include "buttons/group_pane.h"
#include "framework/controls/control.h"
#include "framework/controls/scroll_bar.h"
#include "framework/core/frame.h"
#include "framework/draw/measure.h"
#include "framework/layout/sizers.h"
#include "framework/menus/menu.h"
#include "resources/resource_ids.h"
#include "tests/support/basics.h"
#include "tests/ui/support/ui_test.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

#include <X11/keysym.h>

/// Types; some control characters stand for keys: Escape, \v Down, \a Shift and Down, \x05 End.
inline void typeKeys(const std::string& keys) {
  const std::map<char, ui::KeySymbol> others = {
      {'\x1b', XK_Escape}, {'\v', XK_Down}, {'\a', XK_Down}, {'\x05', XK_End}};
  for (const char key : keys) {
    if (const auto found = others.find(key); found != others.end()) {
      ui::pressKey(found->second, key == '\a' ? ui::kShift : ui::kNoModifier);
    } else {
      ui::typeText({&key, 1});
    }
  }
}

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
    bar->addHandler(this, toHandler(&PanesFrame::onMenuSelect), kMsgMenuSelect);
    area = std::make_unique<zGravSizer>(kGravityLeft, zDialogUnit(160, 0).width(), sizer());
    pane = new ControlPane(this, new zGravSizer(kGravityFill, 0, area.get()), *this);
    pane->show();
    textArea = std::make_unique<MyPane>(this, new zGravSizer(kGravityFill, zDimension{}, sizer()));
  }
  ~PanesFrame() override { delete pane; }

  zWindow& window() override { return *this; }
  zMenu& mainMenu() override { return *bar; }
  RWCString applicationTitle() override { return "App"; }
  int toolBarHeight() override { return barHeight; }
  void executeCommandLine(const RWCString& line) override { executed.push_back(line.str()); }
  void showStatus(const RWCString& shown) override { status += shown.str() + "|"; }
  void setMenuHelp(std::span<const zHelpText> rows) override {
    help.clear();
    for (const zHelpText& row : rows) {
      help += std::to_string(row.id) + " " + row.text + "|";
    }
  }
  int onMenuSelect(zEvent* event) {
    explained.push_back(event->lparam == kMenuClosed ? 0 : static_cast<int>(event->wparam));
    return 0;
  }

  zMenu pulldowns[3];
  zMenu* bar = nullptr;
  std::unique_ptr<zGravSizer> area;
  ControlPane* pane = nullptr;
  std::unique_ptr<MyPane> textArea;
  std::vector<std::string> executed;
  std::string status;
  std::string help;
  int barHeight = 7;
  std::vector<int> explained;  ///< entries of menus, 0 when one closed
};

class ButtonPanes : public testing::Test {
 protected:
  ButtonPanes() {
    registerRecordControls();
    frame->show();
    ui::waitForDialog(PanesFrame::kTitle);
    ui::waitFor([&] { return ui::isViewable(set().widget()); }, "the canvas");
    ui::drain();
  }
  ~ButtonPanes() override {
    frame.reset();
    ui::waitForNoDialog(PanesFrame::kTitle);
  }

  static GroupPane& set() { return *theGroupPane; }
  static ButtonSetDocument& document() { return set().document(); }
  static ButtonPane& pane(std::size_t index) { return *set().groups().at(index); }
  static const ButtonGroup& group(std::size_t index) { return pane(index).group(); }
  static Widget button(std::size_t ofGroup, std::size_t index) {
    return pane(ofGroup).commands().at(index).window->widget();
  }
  static std::string log() { return theTextPane->text().str(); }

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

  template <class Control>
  static Control* childOf(zWindow& window, int number = 0) {
    zWindowDlist::Iter walk(window.children());
    while (zWindow* child = walk.next()) {
      auto* found = windowCast<Control>(child);
      if (found != nullptr && number-- == 0) {
        return found;
      }
    }
    return nullptr;
  }
  static Widget checkBox(std::size_t ofGroup) {
    return childOf<zCheckBox>(pane(ofGroup))->widget();
  }

  /// What stands on the canvas, of whose groups and buttons the places are checked.
  static std::string seen() {
    ui::drain();
    int y = 1;
    int width = set().metrics().minGroupWidth;
    for (const ButtonPane* shown : set().groups()) {
      width = std::max(width, shown->width());
    }
    for (ButtonPane* shown : set().groups()) {
      EXPECT_EQ(shown->sizer()->rect(), zRect(zPoint{1, y}, zDimension{width, shown->height()}));
      y += shown->height() + 2;
      int widest = 0;
      for (const ziCommand& command : shown->commands()) {
        widest = std::max(widest, set().buttonWidth(command.shown->label));
      }
      int number = 0;
      for (const ziCommand& command : shown->commands()) {
        if (command.window != nullptr) {
          EXPECT_EQ(command.window->sizer()->rect(), buttonPlace(set().metrics(), widest, number));
        }
        ++number;
      }
    }
    std::string shown = ui::look(set().widget());
    std::replace(shown.begin(), shown.end(), '\n', ' ');
    return shown.substr(0, shown.find_last_not_of(' ') + 1);
  }

  /// Lets the events come that the window manager holds back.
  void awaitExecuted(const std::vector<std::string>& wanted) const {
    ui::waitFor([&] { return frame->executed == wanted; }, "the command");
  }
  static void awaitCommandLine() { ui::waitForFocus(theCommandLine->innerWidget()); }

  /// 0 the vertical, 1 the horizontal one.
  zScrollBarCtrl& bar(int number) const { return *childOf<zScrollBarCtrl>(*frame->pane, number); }

  std::unique_ptr<PanesFrame> frame = std::make_unique<PanesFrame>();
};
