#pragma once

#include <string>

#include "button_file/button_set.h"

/// A set in one line: "+" an expanded group, "-" a collapsed one, "*" a menu, each with its name
/// and its "label=definition;" in braces; "--;" is what the reader adds for a separator.
inline std::string show(const ButtonSet& set) {
  std::string text;
  for (const ButtonGroup& group : set.groups) {
    text += (group.expanded ? "+" : "-") + group.name + '{';
    for (const Button& button : group.buttons) {
      text += button.label + '=' + button.definition + ';';
    }
    text += '}';
  }
  for (const ButtonMenu& menu : set.menus) {
    text += '*' + menu.name + '{';
    for (const MenuEntry& entry : menu.entries) {
      const bool isSeparator = entry == MenuEntry::separator();
      text += isSeparator ? "--;" : entry.label + '=' + entry.definition + ';';
    }
    text += '}';
  }
  return text;
}
