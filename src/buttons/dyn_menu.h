#pragma once

#include <memory>
#include <vector>

#include "framework/menus/menu.h"

class ziButtonHost;

/// Gives the ids of menu entries: raised before use, so that the first is one more.
extern int menuIdCounter;
inline constexpr int kFirstMenuId = 8000;

/// One entry of a pull-down of the button set. Choosing it sends its definition as one command.
class DynMenuItem : public zEvH {
 public:
  /// Appends itself to `menu`. The label "separator", in any case, makes a separator.
  DynMenuItem(ziButtonHost& host, zMenu& menu, const RWCString& label, const RWCString& definition);
  ~DynMenuItem() override;

  const RWCString& label() const { return labelText; }
  const RWCString& definition() const { return commandText; }
  const RWCString& helpText() const { return help; }
  int itemId() const { return id; }

 private:
  int onChosen(zEvent* event);

  ziButtonHost& host;
  RWCString commandText;
  RWCString labelText;
  RWCString help;
  int id;
};

/// A pull-down of the button set, with its entries.
class DynMenu : public zEvH {
 public:
  DynMenu(ziButtonHost& host, const RWCString& name);

  void append(const RWCString& label, const RWCString& definition);
  /// Puts the menu into the bar before `position`.
  void putIntoBar(int position);
  /// Deletes the entries and takes the menu, which must be the one at `position`, out of the bar.
  void removeFromBar(int position);

  const RWCString& name() const { return title; }
  const std::vector<std::unique_ptr<DynMenuItem>>& items() const { return entries; }

 private:
  ziButtonHost& host;
  RWCString title;
  std::unique_ptr<zMenu> menu;
  std::vector<std::unique_ptr<DynMenuItem>> entries;
};
