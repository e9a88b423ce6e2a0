// The least that a program of this kind can cost: a main window with a menu bar, a text, a command
// line and nothing else, made by plain Motif calls. The benchmarks compare with it.
//
// With NEL_FLOOD_IN and NEL_FLOOD_OUT it appends each line from the one pipe to its text, as the
// tester's messages are, and writes a line to the other when all are in.

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <string>

#include <Xm/XmAll.h>

namespace {

constexpr int kColumns = 80;
constexpr int kRows = 40;

Widget theLog = nullptr;
XtInputId theInput = 0;

Widget makeMenu(Widget bar, const char* title, std::initializer_list<const char*> items) {
  std::string name = title;
  const Widget pulldown = XmCreatePulldownMenu(bar, name.data(), nullptr, 0);
  const Widget cascade =
      XtVaCreateManagedWidget(title, xmCascadeButtonWidgetClass, bar, XmNsubMenuId, pulldown,
                              XmNmnemonic, static_cast<KeySym>(title[0]), nullptr);
  for (const char* const item : items) {
    XtVaCreateManagedWidget(item, xmPushButtonWidgetClass, pulldown, nullptr);
  }
  return cascade;
}

Widget makeMenuBar(Widget window) {
  std::array<char, 5> name = {"menu"};
  const Widget bar = XmCreateMenuBar(window, name.data(), nullptr, 0);
  makeMenu(bar, "File", {"Open", "Save", "Exit"});
  makeMenu(bar, "Edit", {"Copy", "Paste", "Find"});
  const Widget help = makeMenu(bar, "Help", {"About"});
  XtVaSetValues(bar, XmNmenuHelpWidget, help, nullptr);
  XtManageChild(bar);
  return bar;
}

Arg setting(const char* name, XtArgVal value) {
  return {const_cast<String>(name), value};
}

Widget makeLog(Widget window) {
  std::array<char, 4> name = {"log"};
  std::array arguments = {setting(XmNeditMode, XmMULTI_LINE_EDIT), setting(XmNeditable, False),
                          setting(XmNcolumns, kColumns), setting(XmNrows, kRows)};
  const Widget log = XmCreateScrolledText(window, name.data(), arguments.data(), arguments.size());
  XtManageChild(log);
  return log;
}

void append(std::string& line) {
  const XmTextPosition end = XmTextGetLastPosition(theLog);
  XmTextInsert(theLog, end, line.data());
  XmTextShowPosition(theLog, XmTextGetLastPosition(theLog));
}

/// Takes what is in the pipe; at its end, says so.
void readInput(XtPointer /*client*/, int* source, XtInputId* /*id*/) {
  static std::string waiting;
  std::array<char, 4096> chunk;
  const ssize_t count = read(*source, chunk.data(), chunk.size());
  if (count < 0 && errno == EAGAIN) {
    return;
  }
  if (count <= 0) {
    XtRemoveInput(theInput);
    XSync(XtDisplay(theLog), False);
    std::ofstream(std::getenv("NEL_FLOOD_OUT")) << "done\n";
    return;
  }
  waiting.append(chunk.data(), static_cast<std::size_t>(count));
  for (std::size_t end = 0; (end = waiting.find('\n')) != std::string::npos;) {
    std::string line = waiting.substr(0, end + 1);
    append(line);
    waiting.erase(0, end + 1);
  }
}

}  // namespace

int main(int argc, char** argv) {
  XtAppContext context = nullptr;
  const Widget shell =
      XtVaOpenApplication(&context, "MotifFloor", nullptr, 0, &argc, argv, nullptr,
                          applicationShellWidgetClass, XmNtitle, "Motif floor", nullptr);
  const Widget window = XtVaCreateManagedWidget("window", xmMainWindowWidgetClass, shell, nullptr);
  const Widget bar = makeMenuBar(window);
  theLog = makeLog(window);
  const Widget command =
      XtVaCreateManagedWidget("command", xmTextFieldWidgetClass, window, nullptr);
  XtVaSetValues(window, XmNmenuBar, bar, XmNworkWindow, XtParent(theLog), XmNcommandWindow, command,
                XmNcommandWindowLocation, XmCOMMAND_BELOW_WORKSPACE, XmNinitialFocus, command,
                nullptr);
  XtRealizeWidget(shell);
  if (const char* const pipe = std::getenv("NEL_FLOOD_IN")) {
    theInput =
        XtAppAddInput(context, open(pipe, O_RDONLY | O_NONBLOCK),
                      std::bit_cast<XtPointer>(std::intptr_t{XtInputReadMask}), readInput, nullptr);
  }
  XtAppMainLoop(context);
}
