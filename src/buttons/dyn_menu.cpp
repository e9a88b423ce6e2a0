#include "buttons/dyn_menu.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "button_file/button_set.h"
#include "link/tool_interface.h"
#include "textarea/my_pane.h"

int menuIdCounter = kFirstMenuId;

namespace {

bool isSeparatorLabel(std::string_view label) {
  return std::equal(
      label.begin(), label.end(), kSeparatorWord.begin(), kSeparatorWord.end(),
      [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
}

}  // namespace

DynMenuItem::DynMenuItem(zMenu& menuBar, zMenu& menu, const MenuEntry& shown)
    : bar(menuBar), entry(shown), id(++menuIdCounter) {
  if (isSeparatorLabel(entry.label)) {
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
