#pragma once

#include <sys/socket.h>

#include "app/message_handler.h"
#include "app/wmain.h"
#include "buttons/group_pane.h"
#include "framework/controls/control.h"
#include "framework/core/x_settings.h"
#include "framework/menus/menu.h"
#include "link/tool_interface.h"
#include "tests/support/connection.h"
#include "tests/support/message.h"
#include "tests/ui/support/ui_test.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

inline constexpr const char* kPrompt = "Korvane Select";

/// The main window on a link whose other end is the test's.
class MainWindow : public testing::Test {
 protected:
  MainWindow() {
    registerRecordControls();
    theSession = Session();
    int ends[2];
    socketpair(AF_UNIX, SOCK_STREAM, 0, ends);
    g_SocketClient = std::make_unique<SocketControlClient>(ends[0]);
    g_ToolSocket = ends[0];
    g_ToolState = LINK_CONNECTED;
    own = UniqueDescriptor(ends[0]);
    peer = Connection(UniqueDescriptor(ends[1]));
    window = std::make_unique<WMain>(nullptr, "", theSession);
    ui::waitForDialog(g_AppTitle);
    serveMessages(theSession);
    g_XSettings.promptKeyDelay = 0;
  }
  ~MainWindow() override {
    window.reset();
    g_ToolState = LINK_IDLE;
    g_SocketClient.reset();
  }

  static void receive(int tag, const std::vector<Parameter>& parameters) {
    std::string payload;
    for (const Parameter& parameter : parameters) {
      payload += parameter.payload();
    }
    MessageHandler(NELKV, tag, static_cast<int>(payload.size()), payload.c_str());
  }
  /// What has been sent since the last call, a line each.
  std::string sent() {
    std::string lines;
    peer.read();
    while (const auto frame = peer.take()) {
      lines += describe(fromWire(*frame)) + "\n";
    }
    return lines;
  }
  /// What is seen of the box that `call` brings up over the main window; Return ends it. The focus
  /// is back in the main window then.
  static std::string boxOf(const std::string& title, const std::function<void()>& call) {
    const Window main = ui::windowWithTitle(g_AppTitle);
    const auto isUp = [&] {
      const Window box = ui::windowWithTitle(title);
      return box != main && ui::hasInputFocus(box);
    };
    std::string look;
    ui::ModalScript script;
    script.when(isUp, title, [&] {
      ui::drain();
      look = ui::look(title);
      ui::pressKey(XK_Return);
    });
    script.run(call);
    ui::waitFor([&] { return ui::hasInputFocus(main); }, "the focus back in the main window");
    return look;
  }
  /// Null when there is none.
  template <class T>
  T* part() const {
    return ui::childOf<T>(*window);
  }
  static void choose(int command) {
    zEvent event = zEvent::of(kMsgCommand, command);
    theGroupPane->mainWindow().mainMenu().dispatch(&event);
  }

  UniqueDescriptor own;
  Connection peer;
  std::unique_ptr<WMain> window;
};
