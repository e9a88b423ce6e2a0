#include "buttons/dyn_menu.h"

#include "button_file/button_set.h"
#include "link/tool_interface.h"
#include "support/text.h"
#include "textarea/my_pane.h"

int menuIdCounter = kFirstMenuId;

DynMenuItem::DynMenuItem(zMenu& menuBar, zMenu& menu, const MenuEntry& shown)
    : bar(menuBar), entry(shown), id(++menuIdCounter) {
  if (equalIgnoringCase(entry.label, kSeparatorWord)) {
    menu.appendSeparator();
    return;
  }
  help = "Execute Command: " + entry.definition;
  menu.appendItem(id, entry.label.c_str(), 0);
  bar.setCommand(this, toHandler(&DynMenuItem::onChosen), id);
}

DynMenuItem::~DynMenuItem() {
  bar.removeCommand(this, toHandler(&DynMenuItem::onChosen), id);
}

int DynMenuItem::onChosen(zEvent* /*event*/) {
  // Neither cut at semicolons nor replaced when empty, unlike a button's. Intended.
  sendCommand(entry.definition.c_str());
  theCommandLine->startFocusTimer();
  return 1;
}

DynMenu::DynMenu(zMenu& menuBar, const ButtonMenu& shown, int position)
    : bar(menuBar), menu(std::make_unique<zMenu>()) {
  for (const MenuEntry& entry : shown.entries) {
    entries.push_back(std::make_unique<DynMenuItem>(bar, *menu, entry));
  }
  bar.addSubMenu(menu.get(), shown.name.c_str(), position);
  bar.create();
}

void DynMenu::removeFromBar(int position) {
  // The newest first: its handler is the first that a search finds.
  while (!entries.empty()) {
    entries.pop_back();
  }
  bar.deleteSubMenuAt(position);
  menu.reset();
}
