#pragma once

#include <string>
#include <vector>

#include "framework/draw/xtfwd.h"

/// What a user sees of a message box.
class BoxView {
 public:
  /// The box with this title; it must be on the screen.
  explicit BoxView(const std::string& title);

  /// From left to right.
  std::vector<std::string> buttonLabels() const;
  Widget button(const std::string& label) const;
  /// The button that the keyboard is on; null when it is elsewhere.
  Widget focusedButton() const;
  /// All of the text, wherever the box shows it.
  std::string text() const;
  std::string icon() const;
  /// The resource dialogStyle.
  int modality() const;
  bool isOnTheScreen() const;

 private:
  std::vector<Widget> buttons() const;

  Widget box;
};
