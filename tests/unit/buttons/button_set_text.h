#pragma once

#include <string>

#include "button_file/button_set.h"

inline std::string show(const Button& button) {
  return button.label + '=' + button.definition + ';';
}

/// "+" an expanded group, "-" a collapsed one.
inline std::string show(const ButtonGroup& group) {
  std::string text = (group.expanded ? "+" : "-") + group.name + '{';
  for (const Button& button : group.buttons) {
    text += show(button);
  }
  return text + '}';
}

/// A set in one line: its groups and, behind "*", its menus, each with its name and its
/// "label=definition;" in braces; "--;" is what the reader adds for a separator.
inline std::string show(const ButtonSet& set) {
  std::string text;
  for (const ButtonGroup& group : set.groups) {
    text += show(group);
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
