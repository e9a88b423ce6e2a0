#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "button_file/button_set_document.h"

/// A group while the user is asked about it. Files may be read meanwhile: then it stands for the
/// first group of the same name; where there is none, the observers are told of what was dropped.
/// Nothing happens when the document has gone.
class ChosenGroup : private ButtonSetObserver {
 public:
  ChosenGroup(ButtonSetDocument& document, const ButtonGroup& group);
  ChosenGroup(const ChosenGroup&) = delete;
  ChosenGroup& operator=(const ChosenGroup&) = delete;
  ~ChosenGroup() override;

  const std::string& name() const { return groupName; }
  /// The labels as they were when the group was chosen.
  const std::vector<std::string>& labels() const { return groupLabels; }

  void addButton(const Button& button);
  void removeButtons(const std::vector<std::string>& labels);
  void rename(const std::string& name);
  void remove();
  /// The button of a row of labels(), the first for a row below 0; nothing if there is none.
  std::optional<Button> choose(int row);
  /// Changes what choose() gave: the button of that row if it still has its label, else the first
  /// that has.
  void changeButton(const Button& wanted);

 private:
  const ButtonGroup* find(const std::string& lost);
  const Button* findButton(const ButtonGroup& in) const;
  void groupGoes(const ButtonGroup& gone) override;
  void documentGoes() override { document = nullptr; }

  ButtonSetDocument* document;
  const ButtonGroup* group;
  std::string groupName;
  std::vector<std::string> groupLabels;
  std::size_t buttonRow = 0;
  std::string buttonLabel;
};
