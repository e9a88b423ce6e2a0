#pragma once

#include "framework/core/notify.h"
#include "framework/visuals/visual.h"

/// A visual that is pressed with button 1 and fires when it is released on the visual: to its press
/// handler, if that does not take it to its click handler, and then as a command to the parent of
/// the window that it stands in.
class ziVisButton : public ziVisControl {
 public:
  /// Style bit: stays down until it is pressed again.
  static constexpr std::uint32_t kLatching = 0x200;

  ziVisButton(ziCompound* owner, std::unique_ptr<zSizer> sizer, std::uint32_t style, int id);

  int id() const { return buttonId; }
  bool isArmed() const { return armed; }
  bool isPressed() const { return state == kVisualDown || state == kVisualHeld; }
  /// Both handlers may be unbound by a null target.
  void setPressHandler(zEvH* target, zHandler member) { pressHandler = {target, member}; }
  void setClickHandler(zEvH* target, zHandler member) { clickHandler = {target, member}; }
  /// A disabled button takes no mouse; a press that is under way is given up. Shows at once.
  void setEnabled(bool on);
  bool isEnabled() const { return state != kVisualDisabled; }

  void draw(zDisplay& display) override;
  int mouseDown(zEvent* event) override;
  int mouseUp(zEvent* event) override;
  int mouseMove(zEvent* event) override;

  // Each stores the state that it draws.
  virtual void drawIdle(zDisplay& display);
  virtual void drawDown(zDisplay& display);
  virtual void drawHeld(zDisplay& display);
  /// Looks pressed, as by the keyboard.
  virtual void press();
  /// Looks up again and fires. The button may be gone afterwards.
  virtual void click();
  /// Tells the handlers, or else the parent. The button may be gone afterwards.
  virtual int fire(XEvent* cause);

 private:
  struct Binding {
    zEvH* target = nullptr;
    zHandler member = nullptr;
    int call(zEvent& event) const { return target == nullptr ? 0 : (target->*member)(&event); }
  };
  using Drawing = void (ziVisButton::*)(zDisplay&);

  void show(Drawing drawing);
  void showAsBefore();
  void disarm();

  int buttonId;
  bool armed = false;
  bool buttonDown = false;
  zVisualState stateAtPress = kVisualUp;
  Binding pressHandler;
  Binding clickHandler;
};
