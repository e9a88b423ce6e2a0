#pragma once

#include <memory>

#include "framework/controls/button.h"
#include "framework/core/timer.h"

class DynButton;
class ziButtonHost;

/// A command that the user put on a button. Its window is made when it is first about to be seen.
struct ziCommand {
  RWCString label;
  RWCString definition;
  int id = 0;
  int buttonWidth = 0;          ///< that its label asks for, pixels
  DynButton* window = nullptr;  ///< owned by the group's panel
};

/// A button that executes its command when the first mouse button is released over it, or by the
/// keyboard. A click leaves the focus where it is.
class DynButton : public zPushButton {
 public:
  /// `shown` and `host` must outlive the button.
  DynButton(zWindow* parent, zSizer* sizer, ziCommand& shown, ziButtonHost& host);
  ~DynButton() override;

  int mouseButtonDown(zEvent* event) override;
  int mouseButtonUp(zEvent* event) override;

 private:
  int onActivated(zEvent* event);
  static int watchPress(zEvH* button);
  void endPress();
  void execute();

  ziCommand& command;
  ziButtonHost& host;
  int armed = 0;                       ///< a press is under way
  std::unique_ptr<zTimer> pressWatch;  ///< while it is
};
