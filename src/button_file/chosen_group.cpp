#include "button_file/chosen_group.h"

#include <algorithm>
#include <iterator>

ChosenGroup::ChosenGroup(ButtonSetDocument& owner, const ButtonGroup& chosen)
    : document(&owner), group(&chosen), groupName(chosen.name) {
  for (const Button& listed : chosen.buttons) {
    groupLabels.push_back(listed.label);
  }
  owner.addObserver(*this);
}

ChosenGroup::~ChosenGroup() {
  if (document != nullptr) {
    document->removeObserver(*this);
  }
}

void ChosenGroup::groupGoes(const ButtonGroup& gone) {
  if (group == &gone) {
    group = nullptr;
  }
}

const ButtonGroup* ChosenGroup::find(const std::string& lost) {
  if (document == nullptr || group != nullptr) {
    return document == nullptr ? nullptr : group;
  }
  for (const ButtonGroup& candidate : document->set().groups) {
    if (candidate.name == groupName) {
      return &candidate;
    }
  }
  document->tellUser(lost + " dropped: there is no group \"" + groupName + "\" any more");
  return nullptr;
}

const Button* ChosenGroup::findButton(const ButtonGroup& in) const {
  const auto& buttons = in.buttons;
  if (buttonRow < buttons.size()) {
    const auto inRow = std::next(buttons.begin(), static_cast<std::ptrdiff_t>(buttonRow));
    if (inRow->label == buttonLabel) {
      return &*inRow;
    }
  }
  const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const Button& candidate) {
    return candidate.label == buttonLabel;
  });
  return found == buttons.end() ? nullptr : &*found;
}

void ChosenGroup::addButton(const Button& added) {
  if (const ButtonGroup* found = find("Button \"" + added.label + "\""); found != nullptr) {
    document->addButton(*found, added);
  }
}

void ChosenGroup::removeButtons(const std::vector<std::string>& labels) {
  if (const ButtonGroup* found = find("Deletion"); found != nullptr) {
    document->removeButtons(*found, labels);
  }
}

void ChosenGroup::rename(const std::string& name) {
  if (const ButtonGroup* found = find("Name \"" + name + "\""); found != nullptr) {
    document->renameGroup(*found, name);
  }
}

void ChosenGroup::remove() {
  if (const ButtonGroup* found = find("Deletion"); found != nullptr) {
    document->removeGroup(*found);
  }
}

std::optional<Button> ChosenGroup::choose(int row) {
  buttonRow = static_cast<std::size_t>(std::max(row, 0));
  const ButtonGroup* found = find("Selection");
  if (found == nullptr || buttonRow >= groupLabels.size()) {
    return std::nullopt;
  }
  buttonLabel = groupLabels[buttonRow];
  const Button* button = findButton(*found);
  return button == nullptr ? std::nullopt : std::optional(*button);
}

void ChosenGroup::changeButton(const Button& wanted) {
  const std::string lost = "Button \"" + wanted.label + "\"";
  const ButtonGroup* found = find(lost);
  if (found == nullptr) {
    return;
  }
  if (const Button* inGroup = findButton(*found); inGroup != nullptr) {
    document->changeButton(*found, *inGroup, wanted);
  } else {
    document->tellUser(lost + " dropped: there is no button \"" + buttonLabel + "\" any more");
  }
}
