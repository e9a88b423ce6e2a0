// The button set as a document: loading, saving, the question at the end.

#include <filesystem>
#include <memory>
#include <system_error>

#include <unistd.h>

#include "button_file/button_file_reader.h"
#include "button_file/button_file_remarks.h"
#include "button_file/button_file_writer.h"
#include "button_file/file_access.h"
#include "buttons/button_pane.h"
#include "buttons/dialogs/save_changes_dlg.h"
#include "buttons/group_pane.h"
#include "dialogs/file_form.h"
#include "framework/controls/scroll_bar.h"
#include "framework/core/application.h"
#include "framework/core/message_box.h"
#include "framework/core/show_together.h"
#include "resources/command_ids.h"

namespace {

constexpr char kDefaultFile[] = "nelkv.btn";
constexpr const char* kFilter[] = {
    "Button Files (*.btn)", "*.btn", "All Files (*.*)", "*.*", nullptr, nullptr};
constexpr std::size_t kTooLongToRead = 255;
constexpr std::size_t kLongestToWrite = 250;
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

std::string absolutePath(const std::string& path) {
  std::error_code failure;
  const auto absolute = std::filesystem::absolute(path, failure);
  return failure ? path : absolute.string();
}

// Nobody saves to a file that came with the program.
std::string proposalFor(const std::string& path) {
  return access(path.c_str(), W_OK) == 0 ? absolutePath(path) : std::string();
}

}  // namespace

RWCString GroupPane::title(const char* action) {
  return host.applicationTitle() + RWCString(" ") + RWCString(action);
}

void GroupPane::showError(const std::string& message) {
  const zMessage box(&host.window(), message.c_str(), title("Error").c_str(), kErrorBox);
}

int GroupPane::loadButtons(int append) {
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
    const std::string& path = form.path();
    if (path.size() < kTooLongToRead && readFile(path, append)) {
      result = 1;
      break;
    }
    showError("File does not exist\n" + path + ".");
    if (!goesOn) {
      return 0;
    }
  }
  host.focusCommandLine();
  return result;
}

bool GroupPane::readFile(const std::string& path, int append) {
  const ziFile file = openRegularFile(path);
  if (file == nullptr) {
    return false;
  }
  if (append != 0) {
    setModified();
  } else {
    deleteAllGroups();
    deleteAllMenus();
    clearModified();
    proposal = proposalFor(path);
  }
  readSet(path, file.get());
  return true;
}

int GroupPane::loadFile(const std::string& path) {
  const ziFile file = openRegularFile(path);
  if (file == nullptr) {
    return 0;
  }
  deleteAllGroups();
  proposal = proposalFor(path);
  readSet(path, file.get());
  return 1;
}

void GroupPane::readSet(const std::string& path, std::FILE* file) {
  ButtonFileRemarks remarks;
  addSet(readButtonFile(file, remarks.observer()));
  if (const std::string summary = remarks.summary(); !summary.empty()) {
    host.tellInLog(std::filesystem::path(path).filename().string() + ": " + summary);
  }
}

void GroupPane::addSet(const ButtonSet& set) {
  const ziShowTogetherScope together;
  for (const ButtonGroup& read : set.groups) {
    ButtonPane& group = appendGroup(read.name, read.expanded ? 1 : 0);
    for (const Button& button : read.buttons) {
      group.append(button.label, button.definition);
    }
    group.updateExtents();
  }
  for (const ButtonMenu& read : set.menus) {
    menus.push_back(std::make_unique<DynMenu>(host, read.name));
    for (const MenuEntry& entry : read.entries) {
      menus.back()->append(entry.label, entry.definition);
    }
    menus.back()->putIntoBar(nextMenuPosition++);
  }
  down.bar.scrollPos()->setPosition(0);
  down.offset = 0;
  relayout();
  rebuildHelpTable();
}

ButtonSet GroupPane::contents() const {
  ButtonSet set;
  for (const ButtonPane* pane : groupList) {
    ButtonGroup group = {pane->name().str(), pane->isExpanded(), {}};
    for (const auto& command : pane->commands()) {
      group.buttons.push_back({command->label.str(), command->definition.str()});
    }
    set.groups.push_back(std::move(group));
  }
  for (const auto& shown : menus) {
    ButtonMenu menu = {shown->name().str(), {}};
    for (const auto& item : shown->items()) {
      menu.entries.push_back({item->label().str(), item->definition().str()});
    }
    set.menus.push_back(std::move(menu));
  }
  return set;
}

int GroupPane::writeButtonFile() {
  if (!replaceFile(saveName, formatButtonSet(contents()))) {
    const ziAlive alive(this);
    showError("Permission denied!\nCannot write to file\n" + saveName + ".");
    if (alive) {
      saveName.clear();
    }
    return 0;
  }
  proposal = saveName;
  clearModified();
  return 1;
}

int GroupPane::saveButtonsAs() {
  const Flow goesOn(this);
  while (goesOn) {
    const zFileSaveForm form(&host.window(), title("Save Buttons").c_str(),
                             proposal.empty() ? kDefaultFile : proposal.c_str(), kFilter);
    if (!goesOn || form.accepted() == 0) {
      return 0;
    }
    if (form.path().size() > kLongestToWrite) {
      showError("Cannot write to file\n" + form.path() + ".");
      continue;
    }
    // The working directory may be another one at the next save.
    const std::string chosen = absolutePath(form.path());
    if (access(chosen.c_str(), F_OK) == 0) {
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
    saveName = chosen;
    if (writeButtonFile() != 0) {
      return 1;
    }
  }
  return 0;
}

int GroupPane::queryExit() {
  if (modified == 0) {
    return 1;
  }
  const ziAlive alive(this);
  auto* dialog = new SaveChangesDlg(&host.window(), "Save changes to button set?");
  dialog->setCaption(title("Exit"));
  const int status = dialog->run(0);
  if (status == zDialogFrame::kDialogGone) {
    return 0;
  }
  const int isSaveRequested = dialog->saveRequested;
  delete dialog;
  if (status == 0 || !alive) {
    return 0;
  }
  return isSaveRequested != 0 ? save() : 1;
}

void GroupPane::setModified() {
  modified = 1;
  host.mainMenu().enableItem(kCommandSaveButtons, 1);
}

void GroupPane::clearModified() {
  modified = 0;
  host.mainMenu().enableItem(kCommandSaveButtons, 0);
}

void loadDefaultButtons(const RWCString& directory) {
  if (theGroupPane->loadFile(directory.str() + "/" + kDefaultFile) != 0) {
    return;
  }
  const std::string program = theGroupPane->mainWindow().programPath().str();
  const std::size_t end = program.rfind('/');
  if (end == std::string::npos ||
      theGroupPane->loadFile(program.substr(0, end + 1) + kDefaultFile) == 0) {
    theGroupPane->loadButtons(0);
  }
}
