// What the user does to groups and buttons: the menu of a group and the dialogs behind it.
//
// A dialog's loop carries out messages of the tester. One of them replaces all groups, so after
// each dialog the group that it was opened for may be gone. What was entered is then for the group
// of the same name; where there is none, the log says that it was dropped.

#include <algorithm>
#include <optional>
#include <string>

#include "buttons/button_pane.h"
#include "buttons/dialogs/button_list_dialogs.h"
#include "buttons/dialogs/button_text_dialogs.h"
#include "buttons/dialogs/group_name_dialogs.h"
#include "buttons/group_pane.h"
#include "framework/core/message_box.h"
#include "framework/draw/measure.h"
#include "framework/menus/menu_popup.h"
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

/// The current group as the user sees it, by its name.
class GroupPane::ChosenGroup {
 public:
  explicit ChosenGroup(GroupPane& canvas)
      : groups(canvas),
        canvasAlive(&canvas),
        pane(canvas.currentGroup),
        alive(pane),
        chosenName(pane->name()) {}

  const RWCString& name() const { return chosenName; }
  /// Null when there is no such group any more; `lost` is then told.
  ButtonPane* find(const std::string& lost) const {
    if (alive || !canvasAlive) {
      return alive ? pane : nullptr;
    }
    for (ButtonPane* group : groups.groupList) {
      if (group->name() == chosenName) {
        return group;
      }
    }
    groups.host.tellInLog(lost + " dropped: there is no group \"" + chosenName.str() +
                          "\" any more");
    return nullptr;
  }

 private:
  GroupPane& groups;
  ziAlive canvasAlive;
  ButtonPane* pane;
  ziAlive alive;
  RWCString chosenName;
};

int GroupPane::onAddButton(zEvent* /*event*/) {
  if (currentGroup == nullptr) {
    return 1;
  }
  const ChosenGroup chosen(*this);
  const auto add = [&](const RWCString& label, const RWCString& definition) {
    if (ButtonPane* group = chosen.find("Button \"" + label.str() + "\""); group != nullptr) {
      group->addButton(label, definition);
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
  const ChosenGroup chosen(*this);
  const RWCString caption = title("Edit Button");
  const std::vector<RWCString> labels = currentGroup->labels();
  std::size_t row = 0;
  std::optional<ziCommand> button;
  const bool goesOn = runDialog(
      new SelectButtonDlg(&host.window(), labels), caption, [&](const SelectButtonDlg& dialog) {
        row = static_cast<std::size_t>(std::max(dialog.chosenRow(), 0));
        ButtonPane* group = chosen.find("Selection");
        if (group != nullptr && row < labels.size() && group->setCurrentButton(row, labels[row])) {
          button = *group->currentButton();
        }
      });
  if (!goesOn || !button) {
    return 1;
  }
  runDialog(new EditButtonDlg(&host.window(), button->label, button->definition), caption,
            [&](const EditButtonDlg& dialog) {
              const std::string lost = "Button \"" + dialog.label().str() + "\"";
              ButtonPane* group = chosen.find(lost);
              if (group != nullptr && group->setCurrentButton(row, button->label)) {
                group->changeCurrentButton(dialog.label(), dialog.definition());
              } else if (group != nullptr) {
                host.tellInLog(lost + " dropped: there is no button \"" + button->label.str() +
                               "\" any more");
              }
            });
  return 1;
}

int GroupPane::onDeleteButton(zEvent* /*event*/) {
  if (currentGroup == nullptr) {
    return 1;
  }
  const ChosenGroup chosen(*this);
  runDialog(new DeleteButtonDlg(&host.window(), currentGroup->labels()), title("Delete Button"),
            [&](const DeleteButtonDlg& dialog) {
              ButtonPane* group = chosen.find("Deletion");
              if (group == nullptr) {
                return;
              }
              for (const RWCString& label : dialog.chosenLabels()) {
                group->deleteButton(label);
              }
              group->rebuildAfterDelete();
            });
  return 1;
}

int GroupPane::onRenameGroup(zEvent* /*event*/) {
  if (currentGroup == nullptr) {
    return 1;
  }
  const ChosenGroup chosen(*this);
  runDialog(new RenameGroupDlg(&host.window(), chosen.name()), title("Rename Group"),
            [&](const RenameGroupDlg& dialog) {
              ButtonPane* group = chosen.find("Name \"" + dialog.name().str() + "\"");
              if (group != nullptr) {
                group->rename(dialog.name());
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
  const ChosenGroup chosen(*this);
  const ziAlive alive(this);
  const std::string question = "Delete Group \"" + chosen.name().str() + "\" ?";
  const zMessage box(&host.window(), question.c_str(), title("Delete Group").c_str(),
                     kBoxOkCancel | kBoxQuestion);
  if (!alive) {
    return;
  }
  ButtonPane* group = box.isOk() ? chosen.find("Deletion") : nullptr;
  if (group != nullptr) {
    deleteGroup(*group);
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
