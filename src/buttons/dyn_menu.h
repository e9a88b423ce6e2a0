#pragma once

#include <memory>
#include <vector>

#include "framework/menus/menu.h"

struct ButtonMenu;
struct MenuEntry;

/// Gives the ids of menu entries: raised before use, so that the first is one more.
extern int menuIdCounter;
inline constexpr int kFirstMenuId = 8000;

/// One entry of a pull-down of the button set. Choosing it sends its definition as one command.
class DynMenuItem : public zEvH {
 public:
  /// Appends itself to `menu`. The label "separator", in any case, makes a separator. `shown` and
  /// `bar` must outlive it.
  DynMenuItem(zMenu& bar, zMenu& menu, const MenuEntry& shown);
  ~DynMenuItem() override;

  const RWCString& helpText() const { return help; }
  int itemId() const { return id; }

 private:
  int onChosen(zEvent* event);

  zMenu& bar;
  const MenuEntry& entry;
  RWCString help;
  int id;
};

/// A pull-down of the button set, with its entries.
class DynMenu : public zEvH {
 public:
  /// Puts itself into `bar` before `position`. `shown` and `bar` must outlive it.
  DynMenu(zMenu& bar, const ButtonMenu& shown, int position);

  /// Deletes the entries and takes the menu, which must be the one at `position`, out of the bar.
  void removeFromBar(int position);

  const std::vector<std::unique_ptr<DynMenuItem>>& items() const { return entries; }

 private:
  zMenu& bar;
  std::unique_ptr<zMenu> menu;
  std::vector<std::unique_ptr<DynMenuItem>> entries;
};
