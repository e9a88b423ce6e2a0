#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/core/pane.h"
#include "framework/layout/sizers.h"
#include "framework/menus/menu.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

using MenuJournal = std::vector<std::string>;

/// Ids of the menus under test.
enum TestItem : int {
  kOpen = 1001,
  kExit = 1003,
  kCopy = 1104,
  kNumbers = 1106,
  kExtra = 1200,
  kAdd = 2200,
  kRename = 2203,
};

/// An event as a line: "shown", "select 1001 flags 32768", "closed", "command 1001".
inline std::string describeMenuEvent(const zEvent& event) {
  const std::string id = std::to_string(event.wparam);
  switch (event.message) {
    case kMsgCommand:
      return "command " + id;
    case kMsgMenuSelect:
      return event.lparam == kMenuClosed ? "closed"
                                         : "select " + id + " " + std::to_string(event.extra);
    default:
      return event.message == kMsgMenuInit ? "shown" : std::to_string(event.message);
  }
}

/// Something to bind to a menu: it notes what it hears and may act on it.
class MenuListener : public zEvH {
 public:
  explicit MenuListener(MenuJournal& journal, std::string name = "")
      : events(journal), ownName(std::move(name)) {}

  int hear(zEvent* event) {
    events.push_back(ownName + describeMenuEvent(*event));
    last = *event;
    const int result = answer;
    if (action) {
      // The action may destroy this listener's menu and bind or unbind it.
      std::exchange(action, nullptr)();
    }
    return result;
  }
  static zHandler handler() { return toHandler(&MenuListener::hear); }

  int answer = 0;
  std::function<void()> action;  ///< done once
  zEvent last;

 private:
  MenuJournal& events;
  std::string ownName;
};

/// The owner of the menus; it notes the commands that reach it.
class MenuFrame : public zAppFrame {
 public:
  static constexpr std::uint32_t kFrameStyle = 0xCF0000;
  static constexpr const char* kTitle = "Menus";

  explicit MenuFrame(MenuJournal& journal, zPoint at = {60, 60})
      : zAppFrame(nullptr, new zSizer(at.x, at.y, 400, 300), kFrameStyle, kTitle),
        events(journal) {}

  int command(zEvent* event) override {
    events.push_back("owner " + describeMenuEvent(*event));
    return 1;
  }

 private:
  MenuJournal& events;
};

/// A frame on the screen with a pane in it, and a bar of two menus: File (Open, a separator, Exit)
/// and View (Copy, greyed, and Line numbering).
class MenuTest : public testing::Test {
 protected:
  MenuTest() : frame(std::make_unique<MenuFrame>(journal)) {
    pane =
        new zPane(frame.get(), new zGravSizer(kGravityFill, 0, frame->sizer()), kStyleTabStop, 1);
    pane->show();
    auto ownedBar = std::make_unique<zMenu>(frame.get());
    bar = ownedBar.get();
    frame->setMenu(std::move(ownedBar));
    fileMenu.appendItem(kOpen, "&Open...\tCtrl+O", 0);
    fileMenu.appendSeparator();
    fileMenu.appendItem(kExit, "E&xit\tCtrl+Q", 0);
    viewMenu.appendItem(kCopy, "&Copy", kItemGreyed);
    viewMenu.appendItem(kNumbers, "&Line numbering", 0);
    bar->addSubMenu(&fileMenu, "&File", 0);
    bar->addSubMenu(&viewMenu, "&View", 1);
  }
  ~MenuTest() override {
    frame.reset();
    ui::waitForNoDialog(MenuFrame::kTitle);
  }

  /// Finishes the bar and shows the frame; the pane has the focus then.
  void show() {
    bar->create();
    frame->show();
    ui::waitForDialog(MenuFrame::kTitle);
    pane->startFocusTimer();
    ui::waitForFocus(pane->widget());
    ui::drain();
  }

  Widget cascade(int position) const {
    return ui::partsOf(bar->widget()).at(static_cast<std::size_t>(position));
  }
  Widget pulldown(int position) const { return ui::widgetResource(cascade(position), "subMenuId"); }
  /// What the bar, or the menu of one of its entries, shows.
  std::string look() const { return ui::look(bar->widget()); }
  std::string look(int position) const { return ui::look(pulldown(position)); }

  /// Does what opens an entry of the bar, by default a click on it, and waits for its pulldown.
  void open(int position, const std::function<void()>& how = {}) {
    Widget below = pulldown(position);
    how ? how() : ui::click(cascade(position));
    ui::waitFor([&] { return ui::isViewable(below); }, "the pulldown");
  }
  /// Does what closes the open menu of an entry of the bar; its widget may be destroyed then.
  void close(int position, const std::function<void()>& how) {
    const Window menu = ui::windowOf(pulldown(position));
    how();
    ui::waitFor([&] { return !ui::isViewable(menu); }, "the menu to go");
    ui::drain();
  }
  /// Opens an entry of the bar, clicks an item in it, and returns what was heard.
  MenuJournal choose(int position, int id) {
    open(position);
    takeJournal();
    close(position, [&] { ui::click(bar->itemWidget(id)); });
    return takeJournal();
  }

  /// Lets `listener` hear all selections, the commands of all items, and the showing of menus.
  static void listen(zMenu& menu, MenuListener& listener) {
    menu.addHandler(&listener, MenuListener::handler(), kMsgMenuSelect);
    menu.addHandler(&listener, MenuListener::handler(), kMsgCommand);
    menu.addMenuInitHandler(&listener, MenuListener::handler());
  }

  MenuJournal takeJournal() { return std::exchange(journal, {}); }

  MenuJournal journal;
  std::unique_ptr<MenuFrame> frame;
  zPane* pane = nullptr;
  zMenu* bar = nullptr;
  zMenu fileMenu;
  zMenu viewMenu;
  MenuListener listener{journal};
};
