#include "button_file/button_set.h"

namespace {

constexpr char kGroupHead[] = ":";
constexpr char kCollapsedHead[] = ":COLLAPSED ";
constexpr char kMenuHead[] = ":MENU ";

void appendLine(std::string& text, std::string_view head, std::string_view line) {
  text.append(head).append(line) += '\n';
}

void appendPair(std::string& text, std::string_view label, std::string_view definition) {
  appendLine(text, "", label);
  appendLine(text, "", definition);
}

}  // namespace

std::string formatButtonSet(const ButtonSet& set) {
  std::string text;
  for (const ButtonGroup& group : set.groups) {
    appendLine(text, group.expanded ? kGroupHead : kCollapsedHead, group.name);
    for (const Button& button : group.buttons) {
      appendPair(text, button.label, button.definition);
    }
  }
  for (const ButtonMenu& menu : set.menus) {
    appendLine(text, kMenuHead, menu.name);
    for (const MenuEntry& entry : menu.entries) {
      // A separator keeps no label of its own, whatever the entry has; this is intended.
      appendPair(text, entry.isSeparator() ? kSeparatorWord : entry.label, entry.definition);
    }
  }
  return text;
}
