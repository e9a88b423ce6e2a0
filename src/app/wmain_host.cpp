// What the button set asks of the main window.

#include "app/app_main.h"
#include "app/main_menu.h"
#include "app/main_toolbar.h"
#include "app/wmain.h"
#include "textarea/command_queue.h"

void WMain::executeCommandLine(const RWCString& line) {
  ::executeCommandLine(line.view());
}

RWCString WMain::applicationTitle() {
  return g_AppTitle;
}

// The global keeps its value while the bar is hidden.
int WMain::toolBarHeight() {
  return toolBarStrip.isVisible ? g_ToolBarHeight : g_ToolBarHeight - toolBarStrip.size.height;
}

void WMain::showStatus(const RWCString& shown) {
  statusLine->setText(0, shown);
}

void WMain::setMenuHelp(std::span<const zHelpText> rows) {
  helpTexts.clear();
  for (const MenuRow& row : mainMenuRows()) {
    if (row.label != nullptr) {
      helpTexts.push_back({row.id, row.statusText});
    }
  }
  for (const CommandHelp& help : otherCommandHelp()) {
    helpTexts.push_back({help.id, help.statusText});
  }
  helpTexts.insert(helpTexts.end(), rows.begin(), rows.end());
  helpTexts.push_back({0, nullptr});
  statusLine->setHelpTable(kHelpItemId, helpTexts.data());
}
