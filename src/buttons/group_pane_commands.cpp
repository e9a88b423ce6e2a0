// What the user does to groups and buttons: the menu of a group and the dialogs behind it.
//
// A dialog's loop carries out messages of the tester. One of them replaces all groups, so after
// each dialog the group that it was opened for may be gone; what was entered is dropped then.

#include <algorithm>
#include <string>

#include "buttons/button_pane.h"
#include "buttons/dialogs/button_list_dialogs.h"
#include "buttons/dialogs/button_text_dialogs.h"
#include "buttons/dialogs/group_name_dialogs.h"
#include "buttons/group_pane.h"
#include "framework/core/message_box.h"
#include "framework/draw/measure.h"
#include "framework/furniture/menu_popup.h"
#include "resources/command_ids.h"

namespace {

// Dialog units, horizontal ones in both directions. Intended.
constexpr int kMenuInset = 5;
constexpr int kMenuButton = 3;

}  // namespace

void GroupPane::buildPopup() {
  popupMenu = std::make_unique<zPopupMenu>(zPoint{}, &host.window());
  const struct {
    int id;
    const char* text;
    zHandler handler;
  } rows[] = {
      {kCommandAddButton, "&Add...", toHandler(&GroupPane::onAddButton)},
      {kCommandEditButton, "&Edit...", toHandler(&GroupPane::onEditButton)},
      {kCommandDeleteButton, "&Delete...", toHandler(&GroupPane::onDeleteButton)},
      {0, nullptr, nullptr},
      {kCommandRenameGroup, "Re&name Group...", toHandler(&GroupPane::onRenameGroup)},
      {kCommandDeleteGroup, "De&lete Group...", toHandler(&GroupPane::onDeleteGroup)},
  };
  for (const auto& row : rows) {
    if (row.text == nullptr) {
      popupMenu->appendSeparator();
      continue;
    }
    popupMenu->appendItem(row.id, row.text, 0);
    popupMenu->setCommand(this, row.handler, row.id);
  }
  popupMenu->addHandler(this, toHandler(&GroupPane::onMenuSelect), kMsgMenuSelect);
}

// Help for the entries comes from where that for the menu bar does.
int GroupPane::onMenuSelect(zEvent* event) {
  return host.mainMenu().dispatch(event);
}

void GroupPane::openMenuOf(ButtonPane& group) {
  currentGroup = &group;
  const int inset = zDialogUnit(kMenuInset, 0).width();
  const zPoint inGroup = group.menuPlace();
  const zPoint place = {inset + across.offset + inGroup.x,
                        inset + host.toolBarHeight() + down.offset + group.yPosition + inGroup.y};
  const ziAlive alive(this);
  popupMenu->popup(place, kMenuButton);
  if (alive) {
    host.focusCommandLine();
  }
}

/// Runs a dialog of this call's own and hands it to `accepted` when the user has confirmed it.
/// False if the program is ending: this pane may be gone then.
template <class Dialog, class Accepted>
bool GroupPane::runDialog(Dialog* dialog, const RWCString& caption, Accepted accepted) {
  const ziAlive alive(this);
  dialog->setCaption(caption);
  const int status = dialog->run(0);
  if (status == zDialogFrame::kDialogGone) {
    return false;
  }
  if (status != 0 && alive) {
    accepted(*dialog);
  }
  delete dialog;
  if (alive) {
    host.focusCommandLine();
  }
  return static_cast<bool>(alive);
}

int GroupPane::onAddButton(zEvent* /*event*/) {
  if (currentGroup == nullptr) {
    return 1;
  }
  ButtonPane& group = *currentGroup;
  const ziAlive alive(&group);
  const auto add = [&](const RWCString& label, const RWCString& definition) {
    if (alive) {
      group.addButton(label, definition);
    }
  };
  runDialog(new AddButtonDlg(&host.window(), add), title("Add Button"),
            [&](const AddButtonDlg& dialog) { add(dialog.label(), dialog.definition()); });
  return 1;
}

int GroupPane::onEditButton(zEvent* /*event*/) {
  if (currentGroup == nullptr) {
    return 1;
  }
  ButtonPane& group = *currentGroup;
  const ziAlive alive(&group);
  const RWCString caption = title("Edit Button");
  bool isSelected = false;
  const bool goesOn = runDialog(new SelectButtonDlg(&host.window(), group.labels()), caption,
                                [&](const SelectButtonDlg& dialog) {
                                  if (alive) {
                                    group.setCurrentButton(dialog.chosenRow());
                                    isSelected = group.currentButton() != nullptr;
                                  }
                                });
  if (goesOn && isSelected && alive) {
    const ziCommand& button = *group.currentButton();
    runDialog(new EditButtonDlg(&host.window(), button.label, button.definition), caption,
              [&](const EditButtonDlg& dialog) {
                if (alive) {
                  group.changeCurrentButton(dialog.label(), dialog.definition());
                }
              });
  }
  return 1;
}

int GroupPane::onDeleteButton(zEvent* /*event*/) {
  if (currentGroup == nullptr) {
    return 1;
  }
  ButtonPane& group = *currentGroup;
  const ziAlive alive(&group);
  runDialog(new DeleteButtonDlg(&host.window(), group.labels()), title("Delete Button"),
            [&](const DeleteButtonDlg& dialog) {
              if (!alive) {
                return;
              }
              for (const RWCString& label : dialog.chosenLabels()) {
                group.deleteButton(label);
              }
              group.rebuildAfterDelete();
            });
  return 1;
}

int GroupPane::onRenameGroup(zEvent* /*event*/) {
  if (currentGroup == nullptr) {
    return 1;
  }
  ButtonPane& group = *currentGroup;
  const ziAlive alive(&group);
  runDialog(new RenameGroupDlg(&host.window(), group.name()), title("Rename Group"),
            [&](const RenameGroupDlg& dialog) {
              if (alive) {
                group.rename(dialog.name());
              }
            });
  return 1;
}

int GroupPane::onDeleteGroup(zEvent* /*event*/) {
  deleteCurrentGroup();
  return 1;
}

void GroupPane::addGroup() {
  const ziAlive alive(this);
  const auto add = [&](const RWCString& name) {
    if (alive) {
      appendGroup(name, 1);
      relayout();
    }
  };
  runDialog(new AddGroupDlg(&host.window(), add), title("Add Group"),
            [&](const AddGroupDlg& dialog) {
              add(dialog.name());
              // Not so for groups that Apply has added. Intended.
              setModified();
            });
}

void GroupPane::deleteCurrentGroup() {
  if (currentGroup == nullptr) {
    return;
  }
  ButtonPane& group = *currentGroup;
  const ziAlive groupAlive(&group);
  const ziAlive alive(this);
  const std::string question = "Delete Group \"" + group.name().str() + "\" ?";
  const zMessage box(&host.window(), question.c_str(), title("Delete Group").c_str(),
                     kBoxOkCancel | kBoxQuestion);
  if (!alive) {
    return;
  }
  if (box.isOk() && groupAlive) {
    deleteGroup(group);
    relayout();
    setModified();
  }
  host.focusCommandLine();
}

void GroupPane::deleteGroup(ButtonPane& group) {
  std::erase(groupList, &group);
  if (currentGroup == &group) {
    currentGroup = nullptr;
  }
  delete &group;
}

void GroupPane::deleteAllGroups() {
  while (!groupList.empty()) {
    deleteGroup(*groupList.back());
  }
}
