// What asks the user: the menu of a group, the dialogs behind it, loading, saving, the end.
//
// A dialog's loop carries out messages of the tester. One of them replaces all groups, so after
// each dialog the group that it was opened for may be gone. What was entered is then for the group
// of the same name; where there is none, the log says that it was dropped.

#include <optional>

#include "button_file/chosen_group.h"
#include "buttons/button_pane.h"
#include "buttons/dialogs/button_dialogs.h"
#include "buttons/group_pane.h"
#include "dialogs/file_form.h"
#include "framework/core/application.h"
#include "framework/core/message_box.h"
#include "framework/core/question.h"
#include "framework/draw/measure.h"
#include "framework/menus/menu.h"
#include "resources/resource_ids.h"
#include "textarea/my_pane.h"

namespace {

// Dialog units, horizontal ones in both directions. Intended.
constexpr int kMenuInset = 5;
constexpr int kMenuButton = 3;

constexpr const char* kFilter[] = {
    "Button Files (*.btn)", "*.btn", "All Files (*.*)", "*.*", nullptr, nullptr};
constexpr int kErrorBox = kBoxFullModal | kBoxStop | kBoxOk;
constexpr int kOverwriteBox = kBoxSystemModal | kBoxOkCancel;

/// A flow with dialogs goes on while this holds: the pane is there, and the end of the program has
/// not begun meanwhile. A flow may as well be a part of that end.
class Flow {
 public:
  explicit Flow(GroupPane* pane) : alive(pane), wasRunning(zApp::instance()->isRunning()) {}
  explicit operator bool() const { return alive && zApp::instance()->isRunning() == wasRunning; }

 private:
  ziAlive alive;
  bool wasRunning;
};

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
  content.setCurrentGroup(group.group());
  const int inset = zDialogUnit(kMenuInset, 0).width();
  const zPoint inGroup = group.menuPlace();
  const zPoint place = {inset + across.offset + inGroup.x,
                        inset + host.toolBarHeight() + down.offset + group.yPosition + inGroup.y};
  const ziAlive alive(this);
  popupMenu->popup(place, kMenuButton);
  if (alive) {
    theCommandLine->startFocusTimer();
  }
}

/// Asks by a dialog of this call's own and hands it to `accepted` when the user has confirmed it,
/// unless this pane has gone.
template <class Dialog, class Accepted>
void GroupPane::ask(Dialog* dialog, const char* action, Accepted accepted) {
  const ziAlive alive(this);
  {
    zQuestion question(dialog);
    question->setCaption(title(action));
    if (question.run() == zDialogEnd::kAccepted && alive) {
      accepted(*question);
    }
  }
  if (alive) {
    theCommandLine->startFocusTimer();
  }
}

/// Carries out a command of the current group's menu, if there is such a group.
template <class Command>
int GroupPane::onChosen(Command command) {
  if (content.currentGroup() != nullptr) {
    ChosenGroup chosen(content, *content.currentGroup());
    command(chosen);
  }
  return 1;
}

int GroupPane::onAddButton(zEvent* /*event*/) {
  return onChosen([this](ChosenGroup& chosen) {
    const auto add = [&](const RWCString& label, const RWCString& definition) {
      chosen.addButton({label.str(), definition.str()});
    };
    ask(new AddButtonDlg(&host.window(), add), "Add Button",
        [&](const AddButtonDlg& dialog) { add(dialog.label(), dialog.definition()); });
  });
}

int GroupPane::onEditButton(zEvent* /*event*/) {
  return onChosen([this](ChosenGroup& chosen) {
    constexpr const char* kAction = "Edit Button";
    std::optional<Button> button;
    ask(new SelectButtonDlg(&host.window(), chosen.labels()), kAction,
        [&](const SelectButtonDlg& dialog) { button = chosen.choose(dialog.chosenRow()); });
    if (button) {
      ask(new EditButtonDlg(&host.window(), button->label, button->definition), kAction,
          [&](const EditButtonDlg& dialog) {
            chosen.changeButton({dialog.label().str(), dialog.definition().str()});
          });
    }
  });
}

int GroupPane::onDeleteButton(zEvent* /*event*/) {
  return onChosen([this](ChosenGroup& chosen) {
    ask(new DeleteButtonDlg(&host.window(), chosen.labels()), "Delete Button",
        [&](const DeleteButtonDlg& dialog) { chosen.removeButtons(dialog.chosenLabels()); });
  });
}

int GroupPane::onRenameGroup(zEvent* /*event*/) {
  return onChosen([this](ChosenGroup& chosen) {
    ask(new RenameGroupDlg(&host.window(), chosen.name()), "Rename Group",
        [&](const RenameGroupDlg& dialog) { chosen.rename(dialog.name().str()); });
  });
}

int GroupPane::onDeleteGroup(zEvent* /*event*/) {
  deleteCurrentGroup();
  return 1;
}

void GroupPane::deleteCurrentGroup() {
  onChosen([this](ChosenGroup& chosen) {
    const ziAlive alive(this);
    const std::string question = "Delete Group \"" + chosen.name() + "\" ?";
    const zMessage box(&host.window(), question.c_str(), title("Delete Group").c_str(),
                       kBoxOkCancel | kBoxQuestion);
    if (box.isOk()) {
      chosen.remove();
    }
    if (alive) {
      theCommandLine->startFocusTimer();
    }
  });
}

void GroupPane::addGroup() {
  const ziAlive alive(this);
  const auto apply = [&](const RWCString& name) {
    if (alive) {
      content.addGroupUncounted(name.str());
    }
  };
  ask(new AddGroupDlg(&host.window(), apply), "Add Group",
      [&](const AddGroupDlg& dialog) { content.addGroup(dialog.name().str()); });
}

RWCString GroupPane::title(const char* action) {
  return host.applicationTitle() + RWCString(" ") + RWCString(action);
}

void GroupPane::showError(const std::string& message) {
  const zMessage box(&host.window(), message.c_str(), title("Error").c_str(), kErrorBox);
}

int GroupPane::loadButtons(int append) {
  using Reading = ButtonSetDocument::Reading;
  const Reading reading = append != 0 ? Reading::append : Reading::load;
  const Flow goesOn(this);
  const RWCString caption = title(append != 0 ? "Append Buttons" : "Load Buttons");
  int result = 0;
  while (result == 0) {
    const zFileOpenForm form(&host.window(), caption.c_str(), nullptr, kFilter);
    if (!goesOn) {
      return 0;
    }
    if (form.accepted() == 0) {
      break;
    }
    result = content.read(form.path(), reading) ? 1 : 0;
    if (result == 0) {
      showError("File does not exist\n" + form.path() + ".");
      if (!goesOn) {
        return 0;
      }
    }
  }
  theCommandLine->startFocusTimer();
  return result;
}

int GroupPane::writeButtonFile() {
  const std::string target = content.fileName();
  if (!content.save()) {
    showError("Permission denied!\nCannot write to file\n" + target + ".");
    return 0;
  }
  return 1;
}

int GroupPane::saveButtonsAs() {
  const Flow goesOn(this);
  while (goesOn) {
    const zFileSaveForm form(&host.window(), title("Save Buttons").c_str(),
                             content.proposal().c_str(), kFilter);
    if (!goesOn || form.accepted() == 0) {
      return 0;
    }
    const ButtonSaveTarget target(form.path());
    if (target.isTooLong) {
      showError("Cannot write to file\n" + form.path() + ".");
      continue;
    }
    if (target.isThere) {
      // The question informs; the file is written after either answer. Intended.
      const zMessage question(&host.window(), "File already exist!\nOK for writing",
                              title("Error").c_str(), kOverwriteBox);
      if (question.result == kAnswerNone) {
        continue;
      }
    }
    if (!goesOn) {
      return 0;
    }
    content.setFileName(target.path);
    if (writeButtonFile() != 0) {
      return 1;
    }
  }
  return 0;
}

int GroupPane::queryExit() {
  if (!content.isModified()) {
    return 1;
  }
  int result = 0;
  bool isSaveRequested = false;
  ask(new SaveChangesDlg(&host.window(), "Save changes to button set?"), "Exit",
      [&](const SaveChangesDlg& dialog) {
        result = 1;
        isSaveRequested = dialog.saveRequested != 0;
      });
  return isSaveRequested ? save() : result;
}

void loadDefaultButtons(const RWCString& directory) {
  if (!theGroupPane->document().readDefault(directory.str(), zApp::instance()->programPath())) {
    theGroupPane->loadButtons(0);
  }
}
