#pragma once

#include <list>
#include <string>
#include <string_view>
#include <vector>

/// Stands for label and definition of a separator in a menu.
inline constexpr std::string_view kSeparatorWord = "separator";

/// A command button: what it shows and the command line that it sends.
struct Button {
  std::string label;
  std::string definition;
  bool operator==(const Button&) const = default;
};

/// A named group of buttons. A collapsed one shows its name only.
struct ButtonGroup {
  std::string name;
  bool expanded = true;
  std::list<Button> buttons;
  bool operator==(const ButtonGroup&) const = default;
};

/// An entry of a pull-down menu: a command or a separator.
struct MenuEntry {
  std::string label;
  std::string definition;
  bool operator==(const MenuEntry&) const = default;

  /// The definition alone decides, in this case of letters.
  bool isSeparator() const { return definition == kSeparatorWord; }
  static MenuEntry separator() {
    return {std::string(kSeparatorWord), std::string(kSeparatorWord)};
  }
};

struct ButtonMenu {
  std::string name;
  std::vector<MenuEntry> entries;
  bool operator==(const ButtonMenu&) const = default;
};

/// What a button file holds. Names need not be unique, and any text may be empty. Lists: what shows
/// a group, a button or a menu refers to it while others come and go.
struct ButtonSet {
  std::list<ButtonGroup> groups;
  std::list<ButtonMenu> menus;
  bool operator==(const ButtonSet&) const = default;
};

/// The bytes of a button file that holds `set`. Texts that the reader will not take for what they
/// are go out as they stand, without a word.
std::string formatButtonSet(const ButtonSet& set);
