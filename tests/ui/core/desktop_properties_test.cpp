// What desktops are told of the program's windows.

#include "framework/core/desktop_properties.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

#include "framework/core/dialog_frame.h"
#include "framework/core/message_box.h"
#include "framework/draw/pictures.h"
#include "framework/draw/res_id.h"
#include "resources/resource_ids.h"
#include "tests/ui/support/ui_test.h"

#include <X11/Intrinsic.h>
#include <X11/keysym.h>

namespace {

using Items = std::vector<unsigned long>;

unsigned long atomNamed(const char* name) {
  return XInternAtom(ui::display(), name, False);
}

// Bytes or words of a property; none if it is not there.
Items read(Window window, const char* name) {
  constexpr long kAll = 100000;
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(ui::display(), window, atomNamed(name), 0, kAll, False, AnyPropertyType, &type,
                     &format, &count, &left, &data);
  Items items(data, data + (format == 8 ? count : 0));
  for (unsigned long i = 0; format == 32 && i < count; ++i) {
    items.push_back(reinterpret_cast<unsigned long*>(data)[i] & 0xFFFFFFFF);  // Xlib extends signs
  }
  XFree(data);
  return items;
}

Items iconOf(const zFrameWin& window) {
  return read(ui::windowOf(window.shell()), "_NET_WM_ICON");
}

void expectAnnounced(Window window, const char* type, const std::string& title) {
  EXPECT_EQ(read(window, "_NET_WM_WINDOW_TYPE"), Items{atomNamed(type)});
  EXPECT_EQ(read(window, "_NET_WM_PID"), Items{static_cast<unsigned long>(getpid())});
  EXPECT_FALSE(read(window, "WM_CLIENT_MACHINE").empty()) << "alone a process number says nothing";
  const Items bytes = read(window, "_NET_WM_NAME");
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), title);
}

TEST(DesktopProperties, ATitleIsLatin1UnlessItIsWellFormedUtf8) {
  const std::pair<std::string, std::string> cases[] = {
      {"caf\xE9", "caf\xC3\xA9"},
      {"caf\xC3\xA9", "caf\xC3\xA9"},
      {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},                  // the last character
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xC2\x80\xC2\x80"},  // beyond it
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xC2\x80"},              // a surrogate
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"},                          // longer than needed
      {"\xE2\x82", "\xC3\xA2\xC2\x82"},                          // cut off
  };
  for (const auto& [title, expected] : cases) {
    EXPECT_EQ(titleInUtf8(title), expected) << title;
  }
}

TEST(DesktopProperties, TellTypeProcessPresentTitleAndIconOfEachWindow) {
  zAppFrame frame(nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent");
  frame.setIcon(zResId(kIconMain));
  frame.show();
  ui::waitForDialog("Parent");
  expectAnnounced(ui::windowOf(frame.shell()), "_NET_WM_WINDOW_TYPE_NORMAL", "Parent");
  EXPECT_EQ(iconOf(frame), zIcon(zResId(kIconMain)).windowManagerPixels());
  for (const bool wanted : {true, false}) {
    constexpr unsigned long kUrgency = 1U << 8;
    demandAttention(frame.shell(), wanted);
    EXPECT_EQ((read(ui::windowOf(frame.shell()), "WM_HINTS").at(0) & kUrgency) != 0, wanted);
  }

  zDialogFrame dialog(&frame, new zSizer(0, 0, 100, 50), 0);
  dialog.setCaption("Gr\xFC\xDF");
  expectAnnounced(ui::windowOf(dialog.shell()), "_NET_WM_WINDOW_TYPE_DIALOG", "Gr\xC3\xBC\xC3\x9F");
  dialog.setIcon(zResId(kIconText));
  EXPECT_EQ(iconOf(dialog), zIcon(zResId(kIconText)).windowManagerPixels());
  dialog.setIcon(std::unique_ptr<zIcon>());
  EXPECT_TRUE(iconOf(dialog).empty());

  ui::ModalScript script;
  script.onDialog("Box", [] {
    expectAnnounced(ui::windowWithTitle("Box"), "_NET_WM_WINDOW_TYPE_DIALOG", "Box");
    ui::pressKey(XK_Escape);
  });
  script.run([&] { return zMessage(&frame, "Text", "Box", kBoxOk).result; });
}

}  // namespace
