#pragma once

#include <string>
#include <vector>

#include "framework/draw/xtfwd.h"

/// What a user sees of a file form.
class FileFormView {
 public:
  /// The form with this title; it must be on the screen.
  explicit FileFormView(const std::string& title);

  std::string selection() const;
  /// Replaces the text of the selection field.
  void setSelection(const std::string& text) const;
  std::string filter() const;
  std::vector<std::string> files() const;
  bool selectionHasFocus() const;
  bool hasHelpButton() const;
  bool isOnTheScreen() const;
  Widget okButton() const;
  Widget fileList() const;

 private:
  Widget child(unsigned char which) const;

  Widget box;
};
