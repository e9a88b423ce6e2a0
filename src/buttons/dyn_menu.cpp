#include "buttons/dyn_menu.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "buttons/button_host.h"

int menuIdCounter = kFirstMenuId;

namespace {

constexpr std::string_view kSeparatorText = "separator";

bool isSeparatorLabel(std::string_view label) {
  return std::equal(
      label.begin(), label.end(), kSeparatorText.begin(), kSeparatorText.end(),
      [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
}

}  // namespace

DynMenuItem::DynMenuItem(ziButtonHost& mainWindow, zMenu& menu, const RWCString& label,
                         const RWCString& definition)
    : host(mainWindow), id(++menuIdCounter) {
  if (isSeparatorLabel(label.view())) {
    labelText = kSeparatorText;
    commandText = kSeparatorText;
    menu.appendSeparator();
    return;
  }
  labelText = label;
  commandText = definition;
  help = RWCString("Execute Command: ") + definition;
  menu.appendItem(id, label.c_str(), 0);
  host.mainMenu().setCommand(this, toHandler(&DynMenuItem::onChosen), id);
}

DynMenuItem::~DynMenuItem() {
  host.mainMenu().removeCommand(this, toHandler(&DynMenuItem::onChosen), id);
}

int DynMenuItem::onChosen(zEvent* /*event*/) {
  // Neither cut at semicolons nor replaced when empty, unlike a button's. Intended.
  host.sendCommand(commandText);
  host.focusCommandLine();
  return 1;
}

DynMenu::DynMenu(ziButtonHost& mainWindow, const RWCString& name)
    : host(mainWindow), title(name), menu(std::make_unique<zMenu>()) {}

void DynMenu::append(const RWCString& label, const RWCString& definition) {
  entries.push_back(std::make_unique<DynMenuItem>(host, *menu, label, definition));
}

void DynMenu::putIntoBar(int position) {
  host.mainMenu().addSubMenu(menu.get(), title.c_str(), position);
  host.mainMenu().create();
}

void DynMenu::removeFromBar(int position) {
  // The newest first: its handler is the first that a search finds.
  while (!entries.empty()) {
    entries.pop_back();
  }
  host.mainMenu().deleteSubMenuAt(position);
  menu.reset();
}
