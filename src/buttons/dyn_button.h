#pragma once

#include <memory>

#include "framework/controls/button.h"
#include "framework/core/timer.h"

class ButtonSetDocument;
class DynButton;
class ziButtonHost;
struct Button;

/// A button of the set as it is shown. Its window is made when it is first about to be seen.
struct ziCommand {
  const Button* shown;
  int id = 0;
  int buttonWidth = 0;          ///< that its label asks for, pixels
  DynButton* window = nullptr;  ///< owned by the group's panel
};

/// A button that executes its command when the first mouse button is released over it, or by the
/// keyboard. A click leaves the focus where it is.
class DynButton : public zPushButton {
 public:
  /// `set`, its button `shown` and `host` must outlive this one.
  DynButton(zWindow* parent, zSizer* sizer, int id, const Button& shown, ButtonSetDocument& set,
            ziButtonHost& host);
  ~DynButton() override;

  int mouseButtonDown(zEvent* event) override;
  int mouseButtonUp(zEvent* event) override;

 private:
  int onActivated(zEvent* event);
  static int watchPress(zEvH* button);
  void endPress();
  void execute();

  const Button& command;
  ButtonSetDocument& document;
  ziButtonHost& host;
  int armed = 0;                       ///< a press is under way
  std::unique_ptr<zTimer> pressWatch;  ///< while it is
};
