#pragma once

#include "framework/core/application.h"
#include "framework/core/pane.h"
#include "framework/layout/sizers.h"
#include "framework/menus/menu.h"
#include "tests/ui/support/ui_test.h"

/// Ids of the menus under test.
enum TestItem : int { kOpen = 1001, kExit = 1003, kCopy = 1104, kNumbers = 1106, kRun = 1200 };

/// A frame on the screen with a pane in it, and a bar of two menus: File (Open, a separator, Exit)
/// and View (Copy, greyed, and Line numbering). All handlers write into one journal: who they are,
/// and "shown", "select ID/FLAGS", "closed" or the ID of a command.
class MenuTest : public zEvH, public testing::Test {
 protected:
  MenuTest() {
    frame->addHandler(this, handler<'o'>(), kMsgCommand);
    pane =
        new zPane(frame.get(), new zGravSizer(kGravityFill, 0, frame->sizer()), kStyleTabStop, 1);
    pane->show();
    auto owned = std::make_unique<zMenu>(frame.get());
    bar = owned.get();
    frame->setMenu(std::move(owned));
    fileMenu.appendItem(kOpen, "&Open...\tCtrl+O", 0);
    fileMenu.appendSeparator();
    fileMenu.appendItem(kExit, "E&xit\tCtrl+Q", 0);
    viewMenu.appendItem(kCopy, "&Copy", kItemGreyed);
    viewMenu.appendItem(kNumbers, "&Line numbering", 0);
    bar->addSubMenu(&fileMenu, "&File", 0);
    bar->addSubMenu(&viewMenu, "&View", 1);
  }

  /// Finishes the bar and shows the frame; the pane has the focus then.
  void show() {
    bar->create();
    ui::bringUp(*frame);
    ui::focus(*pane);
  }

  /// A handler of that name. It may act, once, and takes the event if it is `taker`.
  template <char kName>
  static zHandler handler() {
    return toHandler(&MenuTest::hear<kName>);
  }
  template <char kName>
  int hear(zEvent* event) {
    const std::string id = std::to_string(event->wparam);
    journal += std::string{kName, ' '};
    if (event->message == kMsgCommand) {
      journal += id + (event->extra == kCommandFromAccelerator ? " by its key" : "");
    } else if (event->lparam == kMenuClosed) {
      journal += "closed";
    } else {
      journal += event->message == kMsgMenuInit
                     ? "shown"
                     : "select " + id + "/" + std::to_string(event->extra);
    }
    journal += ";";
    const bool isTaken = taker == kName;
    if (action) {
      // It may destroy the menu.
      std::exchange(action, nullptr)();
    }
    return isTaken ? 1 : 0;
  }
  /// Lets "l" hear all selections, the commands of all items, and the showing of menus.
  void listenTo(zMenu& menu) {
    menu.addHandler(this, handler<'l'>(), kMsgMenuSelect);
    menu.addHandler(this, handler<'l'>(), kMsgCommand);
    menu.addMenuInitHandler(this, handler<'l'>());
  }
  std::string heard() { return std::exchange(journal, ""); }

  Widget cascade(std::size_t position) const { return ui::partsOf(bar->widget()).at(position); }
  Widget pulldown(std::size_t position) const {
    return ui::widgetResource(cascade(position), "subMenuId");
  }
  /// What the bar, or the menu of one of its entries, shows.
  std::string look() const { return ui::look(bar->widget()); }
  std::string look(std::size_t position) const { return ui::look(pulldown(position)); }

  /// Does what opens an entry of the bar, by default a click on it, and waits for its pulldown.
  void open(std::size_t position, const std::function<void()>& how = {}) {
    Widget below = pulldown(position);
    how ? how() : ui::click(cascade(position));
    ui::waitFor([&] { return ui::isViewable(below); }, "the pulldown");
  }
  /// Does what closes the open menu of an entry of the bar, which may be destroyed then, and
  /// returns what was heard of that.
  std::string close(std::size_t position, const std::function<void()>& how) {
    const Window menu = ui::windowOf(pulldown(position));
    heard();
    how();
    ui::waitFor([&] { return !ui::isViewable(menu); }, "the menu to go");
    ui::drain();
    return heard();
  }
  /// Opens an entry of the bar and clicks an item in it.
  std::string choose(std::size_t position, int id) {
    open(position);
    return close(position, [&] { ui::click(bar->itemWidget(id)); });
  }

  std::string journal;
  char taker = 0;
  std::function<void()> action;
  zMenu fileMenu;
  zMenu viewMenu;
  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, new zSizer(60, 60, 400, 300), 0xCF0000, "Menus");
  zPane* pane = nullptr;
  zMenu* bar = nullptr;
};
