// What the program does with its button set. The observers are told step by step, so that what
// shows the set never refers to something that has gone.

#include "button_file/button_set_document.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "button_file/button_file_reader.h"
#include "button_file/file_access.h"

namespace {

constexpr char kDefaultFile[] = "nelkv.btn";
constexpr std::size_t kTooLongToRead = 255;
constexpr std::size_t kLongestToWrite = 250;

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

ButtonSaveTarget::ButtonSaveTarget(const std::string& typed)
    : path(absolutePath(typed)),
      isTooLong(typed.size() > kLongestToWrite),
      isThere(access(path.c_str(), F_OK) == 0) {}

ButtonSetDocument::~ButtonSetDocument() {
  tell(&ButtonSetObserver::documentGoes);
}

void ButtonSetDocument::markModified(bool isModified) {
  modified = isModified;
  tell(&ButtonSetObserver::modifiedChanged);
}

bool ButtonSetDocument::read(const std::string& path, Reading reading) {
  if (reading != Reading::start && path.size() >= kTooLongToRead) {
    return false;
  }
  const UniqueFile file = openRegularFile(path);
  if (file == nullptr) {
    return false;
  }
  if (reading == Reading::append) {
    setModified();
  } else {
    removeAllGroups();
    lastFile = proposalFor(path);
  }
  if (reading == Reading::load) {
    removeAllMenus();
    clearModified();
  }
  ButtonFileRemarks remarks;
  append(readButtonFile(file.get(), remarks.observer()));
  if (const std::string summary = remarks.summary(); !summary.empty()) {
    tell(&ButtonSetObserver::told,
         std::filesystem::path(path).filename().string() + ": " + summary);
  }
  return true;
}

bool ButtonSetDocument::readDefault(const std::string& directory, const std::string& program) {
  if (read(directory + "/" + kDefaultFile, Reading::start)) {
    return true;
  }
  const std::size_t end = program.rfind('/');
  return end != std::string::npos &&
         read(program.substr(0, end + 1) + kDefaultFile, Reading::start);
}

void ButtonSetDocument::append(ButtonSet&& added) {
  content.groups.splice(content.groups.end(), added.groups);
  content.menus.splice(content.menus.end(), added.menus);
  tell(&ButtonSetObserver::appended);
}

std::string ButtonSetDocument::proposal() const {
  return lastFile.empty() ? kDefaultFile : lastFile;
}

bool ButtonSetDocument::save() {
  if (!replaceFile(saveName, formatButtonSet(content))) {
    saveName.clear();
    return false;
  }
  lastFile = saveName;
  clearModified();
  return true;
}

ButtonGroup& ButtonSetDocument::own(const ButtonGroup& group) {
  return *std::find_if(content.groups.begin(), content.groups.end(),
                       [&](const ButtonGroup& candidate) { return &candidate == &group; });
}

void ButtonSetDocument::addGroup(const std::string& name) {
  addGroupUncounted(name);
  setModified();
}

void ButtonSetDocument::addGroupUncounted(const std::string& name) {
  content.groups.push_back({name, true, {}});
  tell(&ButtonSetObserver::groupAdded, content.groups.back());
  tell(&ButtonSetObserver::changed);
}

void ButtonSetDocument::fold(ButtonGroup& group, bool expanded) {
  group.expanded = expanded;
  tell(&ButtonSetObserver::groupFolded, group);
}

void ButtonSetDocument::setExpanded(const ButtonGroup& group, bool expanded) {
  fold(own(group), expanded);
  tell(&ButtonSetObserver::changed);
}

void ButtonSetDocument::setAllExpanded(bool expanded) {
  for (ButtonGroup& group : content.groups) {
    fold(group, expanded);
  }
  tell(&ButtonSetObserver::changed);
}

void ButtonSetDocument::renameGroup(const ButtonGroup& group, const std::string& name) {
  own(group).name = name;
  tell(&ButtonSetObserver::groupRenamed, group);
  tell(&ButtonSetObserver::changed);
  setModified();
}

void ButtonSetDocument::removeGroup(const ButtonGroup& group) {
  dropGroup(group);
  tell(&ButtonSetObserver::changed);
  setModified();
}

void ButtonSetDocument::dropGroup(const ButtonGroup& group) {
  tell(&ButtonSetObserver::groupGoes, group);
  if (current == &group) {
    current = nullptr;
  }
  content.groups.remove_if([&](const ButtonGroup& candidate) { return &candidate == &group; });
}

void ButtonSetDocument::removeAllGroups() {
  while (!content.groups.empty()) {
    dropGroup(content.groups.back());
  }
}

void ButtonSetDocument::removeAllMenus() {
  tell(&ButtonSetObserver::allMenusGo);
  content.menus.clear();
}

void ButtonSetDocument::settle(ButtonGroup& group) {
  fold(group, true);
  tell(&ButtonSetObserver::changed);
  setModified();
}

void ButtonSetDocument::addButton(const ButtonGroup& group, const Button& button) {
  own(group).buttons.push_back(button);
  tell(&ButtonSetObserver::buttonAdded, group);
  settle(own(group));
}

void ButtonSetDocument::changeButton(const ButtonGroup& group, const Button& button,
                                     const Button& wanted) {
  for (Button& candidate : own(group).buttons) {
    if (&candidate == &button) {
      candidate = wanted;
      tell(&ButtonSetObserver::buttonChanged, group, button);
      settle(own(group));
      return;
    }
  }
}

void ButtonSetDocument::removeButtons(const ButtonGroup& group,
                                      const std::vector<std::string>& labels) {
  std::list<Button>& buttons = own(group).buttons;
  for (const std::string& label : labels) {
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const Button& candidate) {
      return candidate.label == label;
    });
    if (found != buttons.end()) {
      tell(&ButtonSetObserver::buttonGoes, group, *found);
      buttons.erase(found);
    }
  }
  tell(&ButtonSetObserver::buttonsGone, group);
  settle(own(group));
}

void ButtonSetDocument::define(const Button& button, const std::string& definition) {
  for (ButtonGroup& group : content.groups) {
    for (Button& candidate : group.buttons) {
      if (&candidate == &button) {
        candidate.definition = definition;
      }
    }
  }
}
