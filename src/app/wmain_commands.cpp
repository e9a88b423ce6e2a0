// What the main window's commands do. Each gives the focus back to the command line.

#include <algorithm>

#include "app/wmain.h"
#include "buttons/group_pane.h"
#include "dialogs/dabout.h"
#include "dialogs/file_form.h"
#include "framework/core/question.h"
#include "framework/layout/sizers.h"
#include "framework/menus/menu.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "resources/resource_ids.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

constexpr WMain::Command WMain::kCommands[] = {
    {kCommandOpen, [](WMain& window) { window.openSymbolFile(); }},
    {kCommandSetDirectory, [](WMain&) { ::sendCommand("Change-Directory"); }},
    {kCommandExit, [](WMain& window) { window.exit(); }},

    // The tester answers with what there is to find, and that opens the dialog.
    {kCommandFind, [](WMain&) { ToolSend(NELKV, MSG_UI_FIND, nullptr, 0); }},
    {kCommandFindNext, [](WMain& window) { window.findNext(); }},
    {kCommandFindSelection, [](WMain& window) { window.findSelection(); }},
    {kCommandCopy, [](WMain& window) { window.copy(); }},
    {kCommandPaste, [](WMain& window) { window.paste(); }},
    {kCommandLineNumbering, [](WMain& window) { window.toggleLineNumbering(); }},
    {kCommandClearText, [](WMain&) { theTextPane->clear(); }},

    {kCommandLoadButtons, [](WMain&) { theGroupPane->loadButtons(0); }},
    {kCommandAppendButtons, [](WMain&) { theGroupPane->loadButtons(1); }},
    {kCommandSaveButtons, [](WMain&) { theGroupPane->save(); }},
    {kCommandSaveButtonsAs, [](WMain&) { theGroupPane->saveButtonsAs(); }},
    {kCommandExpandGroups, [](WMain&) { theGroupPane->expandAll(); }},
    {kCommandCollapseGroups, [](WMain&) { theGroupPane->collapseAll(); }},
    {kCommandAddGroup, [](WMain&) { theGroupPane->addGroup(); }},

    {kCommandHelpTessil, [](WMain&) { sendHelpRequest("tessil-generator"); }},
    {kCommandHelpUi, [](WMain&) { sendHelpRequest("tessil-testerui"); }},
    {kCommandHelpKorvane, [](WMain&) { sendHelpRequest("tessil-tester"); }},
    {kCommandHelpCommands, [](WMain&) { sendHelpRequest("tessil-tester-commands"); }},
    {kCommandAbout, [](WMain& window) { zQuestion(new DAbout(&window)).run(); }},

    {kCommandToggleToolBar, [](WMain& window) { window.toggleStrip(window.toolBarStrip); }},
    {kCommandToggleStatusLine, [](WMain& window) { window.toggleStrip(window.statusLineStrip); }},
    {kCommandOrganizer, [](WMain&) { ToolSend(NELLINK, MSG_SHOW_ORGANIZER, nullptr, 0); }},
    {kCommandZoomIn, [](WMain&) { theTextPane->zoomIn(); }},
    {kCommandZoomOut, [](WMain&) { theTextPane->zoomOut(); }},
};

void WMain::bindCommands() {
  for (const Command& command : kCommands) {
    menuBar->setCommand(this, toHandler(&WMain::onCommand), command.id);
  }
}

int WMain::onCommand(zEvent* event) {
  const int id = event->wparam;
  std::ranges::find(kCommands, id, &Command::id)->run(*this);
  // Whatever had the keyboard, the user goes on at the command line.
  theCommandLine->startFocusTimer();
  return id == kCommandFind ? 1 : 0;
}

// The symbol file is the tester's to read; it answers with the directory of the system.
void WMain::openSymbolFile() {
  constexpr const char* kFilter[] = {
      "Symbol Files (*.sym)", "*.sym", "All Files (*.*)", "*.*", nullptr, nullptr};
  const zFileOpenForm form(this, "Open Symbol File", nullptr, kFilter);
  if (form.accepted() != 0) {
    ::sendCommand(("system " + form.path()).c_str());
  }
}

void WMain::findFirst(const Search& search) {
  session.rememberSearch(search);
  theTextPane->findText(search.text, false, search.matchCase, search.useRegexp);
  menuBar->enableItem(kCommandFindNext, 1);
}

void WMain::findNext() {
  if (const auto search = session.newestSearch()) {
    theTextPane->findText(search->text, true, search->matchCase, search->useRegexp);
  }
}

// What is selected now counts, here and for Copy; the menu may have been greyed long ago.
void WMain::findSelection() {
  const RWCString selected = theTextPane->selection();
  if (!selected.isEmpty()) {
    findFirst({selected, true, false});
  }
}

void WMain::copy() {
  const RWCString selected = theTextPane->selection();
  if (!selected.isEmpty()) {
    session.copyBuffer = selected;
  }
}

void WMain::paste() {
  if (!session.copyBuffer.isEmpty() || theCommandLine->count() > 0) {
    theCommandLine->addToHistory(session.copyBuffer);
  }
  theCommandLine->setCurSel(0);
}

void WMain::toggleLineNumbering() {
  const bool wasOn = theTextPane->numbering();
  menuBar->checkItem(kCommandLineNumbering, wasOn ? 0 : 1);
  if (wasOn) {
    theTextPane->unnumberLines();
  } else {
    theTextPane->numberLines();
  }
  theTextPane->setNumbering(!wasOn);
}

void WMain::toggleStrip(Strip& strip) {
  strip.isVisible = !strip.isVisible;
  strip.window->show(strip.isVisible ? kShowNormal : kShowHide);
  strip.sizer->setExtent(strip.isVisible ? strip.size : zDimension{});
  strip.sizer->parent()->update(nullptr);
}

int WMain::onViewMenuShown(zEvent* /*event*/) {
  enableSelectionItems(!theTextPane->selection().isEmpty());
  return 0;
}

// Off the screen the items are never greyed: their keys ask for the selection themselves.
int WMain::onViewMenuSelect(zEvent* event) {
  if (event->lparam == kMenuClosed) {
    enableSelectionItems(true);
  }
  return 0;
}

void WMain::enableSelectionItems(bool on) {
  menuBar->enableItem(kCommandCopy, on ? 1 : 0);
  menuBar->enableItem(kCommandFindSelection, on ? 1 : 0);
}
