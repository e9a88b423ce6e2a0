// What the main window's commands do. Each gives the focus back to the command line.

#include <algorithm>
#include <cstdlib>

#include "app/wmain.h"
#include "buttons/group_pane.h"
#include "dialogs/dabout.h"
#include "dialogs/file_form.h"
#include "framework/core/question.h"
#include "framework/layout/grav_sizer.h"
#include "framework/menus/menu.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/typed_senders.h"
#include "resources/command_ids.h"
#include "textarea/ret_edit_line.h"
#include "textarea/text_pane.h"

RWCString copyBuffer;

namespace {

struct HelpTopic {
  int command;
  const char* key;
};

constexpr HelpTopic kHelpTopics[] = {
    {kCommandHelpTessil, "tessil-generator"},
    {kCommandHelpUi, "tessil-testerui"},
    {kCommandHelpKorvane, "tessil-tester"},
    {kCommandHelpCommands, "tessil-tester-commands"},
};

/// What the commands of the menu Buttons do with the button set.
struct ButtonSetCommand {
  int command;
  void (*run)(GroupPane& set);
};

constexpr ButtonSetCommand kButtonSetCommands[] = {
    {kCommandLoadButtons, [](GroupPane& set) { set.loadButtons(0); }},
    {kCommandAppendButtons, [](GroupPane& set) { set.loadButtons(1); }},
    {kCommandSaveButtons, [](GroupPane& set) { set.save(); }},
    {kCommandSaveButtonsAs, [](GroupPane& set) { set.saveButtonsAs(); }},
    {kCommandExpandGroups, [](GroupPane& set) { set.expandAll(); }},
    {kCommandCollapseGroups, [](GroupPane& set) { set.collapseAll(); }},
    {kCommandAddGroup, [](GroupPane& set) { set.addGroup(); }},
};

}  // namespace

constexpr WMain::CommandRow WMain::kCommands[] = {
    {kCommandOpen, &WMain::onOpen},
    {kCommandSetDirectory, &WMain::onSetDirectory},
    {kCommandExit, &WMain::onExit},
    {kCommandFind, &WMain::onFind},
    {kCommandFindNext, &WMain::onFindNext},
    {kCommandFindSelection, &WMain::onFindSelection},
    {kCommandCopy, &WMain::onCopy},
    {kCommandPaste, &WMain::onPaste},
    {kCommandLineNumbering, &WMain::onLineNumbering},
    {kCommandClearText, &WMain::onClearText},
    {kCommandLoadButtons, &WMain::onButtonSet},
    {kCommandAppendButtons, &WMain::onButtonSet},
    {kCommandSaveButtons, &WMain::onButtonSet},
    {kCommandSaveButtonsAs, &WMain::onButtonSet},
    {kCommandExpandGroups, &WMain::onButtonSet},
    {kCommandCollapseGroups, &WMain::onButtonSet},
    {kCommandAddGroup, &WMain::onButtonSet},
    {kCommandHelpTessil, &WMain::onHelp},
    {kCommandHelpUi, &WMain::onHelp},
    {kCommandHelpKorvane, &WMain::onHelp},
    {kCommandHelpCommands, &WMain::onHelp},
    {kCommandAbout, &WMain::onAbout},
    {kCommandToggleToolBar, &WMain::onToggleToolBar},
    {kCommandToggleStatusLine, &WMain::onToggleStatusLine},
    {kCommandOrganizer, &WMain::onOrganizer},
    {kCommandZoomIn, &WMain::onZoomIn},
    {kCommandZoomOut, &WMain::onZoomOut},
};

void WMain::bindCommands() {
  for (const CommandRow& row : kCommands) {
    menuBar->setCommand(this, toHandler(&WMain::onCommand), row.id);
  }
}

int WMain::onCommand(zEvent* event) {
  const auto* row = std::ranges::find(kCommands, event->wparam, &CommandRow::id);
  const int result = (this->*row->run)(event);
  // Whatever had the keyboard, the user goes on at the command line.
  theCommandLine->startFocusTimer();
  return result;
}

// The symbol file is the tester's to read; it answers with the directory of the system.
int WMain::onOpen(zEvent* /*event*/) {
  constexpr const char* kFilter[] = {
      "Symbol Files (*.sym)", "*.sym", "All Files (*.*)", "*.*", nullptr, nullptr};
  const zFileOpenForm form(this, "Open Symbol File", nullptr, kFilter);
  if (form.accepted() != 0) {
    ::sendCommand(("system " + form.path()).c_str());
  }
  return 0;
}

int WMain::onSetDirectory(zEvent* /*event*/) {
  ::sendCommand("Change-Directory");
  return 0;
}

// The tester answers with what there is to find, and that opens the dialog.
int WMain::onFind(zEvent* /*event*/) {
  ToolSend(NELKV, MSG_UI_FIND, nullptr, 0);
  return 1;
}

int WMain::onFindNext(zEvent* /*event*/) {
  if (!findHistory.empty()) {
    // A copy: the history may grow while a box is up.
    const RWCString wanted = findHistory.back();
    theTextPane->findText(wanted, true, findMatchCase, findRegexp);
  }
  return 0;
}

// What is selected now counts, here and for Copy; the menu may have been greyed long ago.
int WMain::onFindSelection(zEvent* /*event*/) {
  const RWCString selected = theTextPane->selection();
  if (!selected.isEmpty()) {
    findFirst(selected, true, false);
  }
  return 0;
}

void WMain::findFirst(const RWCString& wanted, bool matchCase, bool regexp) {
  findHistory.push_back(wanted);
  findMatchCase = matchCase;
  findRegexp = regexp;
  theTextPane->findText(wanted, false, findMatchCase, findRegexp);
  menuBar->enableItem(kCommandFindNext, 1);
}

FindSettings WMain::findSettings() const {
  return {.history = {findHistory.rbegin(), findHistory.rend()},
          .offersRegexp = std::getenv("KV_REGEXP") != nullptr,
          .useRegexp = findRegexp,
          .matchCase = findMatchCase};
}

int WMain::onCopy(zEvent* /*event*/) {
  const RWCString selected = theTextPane->selection();
  if (!selected.isEmpty()) {
    copyBuffer = selected;
  }
  return 0;
}

int WMain::onPaste(zEvent* /*event*/) {
  if (!copyBuffer.isEmpty() || theCommandLine->count() > 0) {
    theCommandLine->addToHistory(copyBuffer);
  }
  theCommandLine->setCurSel(0);
  return 0;
}

int WMain::onLineNumbering(zEvent* /*event*/) {
  const bool wasOn = theTextPane->numbering();
  menuBar->checkItem(kCommandLineNumbering, wasOn ? 0 : 1);
  if (wasOn) {
    theTextPane->unnumberLines();
  } else {
    theTextPane->numberLines();
  }
  theTextPane->setNumbering(!wasOn);
  return 0;
}

int WMain::onClearText(zEvent* /*event*/) {
  theTextPane->clear();
  return 0;
}

int WMain::onButtonSet(zEvent* event) {
  for (const ButtonSetCommand& row : kButtonSetCommands) {
    if (row.command == event->wparam) {
      row.run(*theGroupPane);
    }
  }
  return 0;
}

int WMain::onHelp(zEvent* event) {
  for (const HelpTopic& topic : kHelpTopics) {
    if (topic.command == event->wparam) {
      sendHelpRequest(topic.key);
    }
  }
  return 0;
}

int WMain::onAbout(zEvent* /*event*/) {
  zQuestion(new DAbout(this)).run();
  return 0;
}

int WMain::onToggleToolBar(zEvent* /*event*/) {
  toggleStrip(toolBarStrip);
  return 0;
}

int WMain::onToggleStatusLine(zEvent* /*event*/) {
  toggleStrip(statusLineStrip);
  return 0;
}

void WMain::toggleStrip(Strip& strip) {
  strip.isVisible = !strip.isVisible;
  strip.window->show(strip.isVisible ? kShowNormal : kShowHide);
  strip.sizer->setExtent(strip.isVisible ? strip.size : zDimension{});
  strip.sizer->parent()->update(nullptr);
}

int WMain::onOrganizer(zEvent* /*event*/) {
  ToolSend(NELLINK, MSG_SHOW_ORGANIZER, nullptr, 0);
  return 0;
}

int WMain::onZoomIn(zEvent* /*event*/) {
  theTextPane->zoomIn();
  return 0;
}

int WMain::onZoomOut(zEvent* /*event*/) {
  theTextPane->zoomOut();
  return 0;
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
