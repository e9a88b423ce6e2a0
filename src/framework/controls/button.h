#pragma once

#include "framework/controls/control.h"

/// Notification code of all buttons: pressed, or its state has changed.
inline constexpr int kNotifyClicked = 0;

/// Base of the buttons. In the text "&" marks the mnemonic ("&&" is a plain one) and a tab moves to
/// the next multiple of eight.
class zButton : public zControl {
 public:
  static constexpr int kClassNumber = kClassButton;

  void setText(const char* newText) override;
  void moveResize(int x, int y, int width, int height) override;
  /// Lets a click leave the focus where it is. The keyboard still reaches the button.
  void keepFocusOnClick() { takesFocus = false; }

 protected:
  zButton(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);

  /// Makes the push button; `isDefault` marks the one that Return presses in a dialog.
  void createPushButton(bool isDefault);
  /// Makes a toggle button.
  void createToggle(const char* name, unsigned char indicator);
  /// The widget that carries the text.
  virtual Widget labelWidget() const { return widget(); }
  void applyFontToWidget() override;
  bool pressArrived(zEvent& event) override;
  /// Shows the button up again, without a notification, although the mouse holds it down.
  void comeUp();

 private:
  template <class Data>
  void onPressed(Data* data);
  void fitEdges();

  bool takesFocus = true;
};

class zPushButton : public zButton {
 public:
  static constexpr int kClassNumber = kClassPushButton;
  zPushButton(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);
};

/// The button that Return presses in a dialog.
class zDefPushButton : public zButton {
 public:
  static constexpr int kClassNumber = kClassDefPushButton;
  zDefPushButton(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);
};

/// A button that is on or off. It may be bound to an int that is 1 for on.
class ziToggle : public zButton {
 public:
  /// Changes the state; no notification goes out.
  void check(bool on);
  bool checked() const;
  /// Binds the state to `value`, which must outlive the binding; null unbinds.
  void setBoundValue(int* value) { boundValue = value; }
  int storeData() override;
  int showData() override;

 protected:
  using zButton::zButton;

 private:
  int* boundValue = nullptr;
};

class zCheckBox : public ziToggle {
 public:
  static constexpr int kClassNumber = kClassCheckBox;
  zCheckBox(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);
};

class zRadioButton : public ziToggle {
 public:
  static constexpr int kClassNumber = kClassRadioButton;
  zRadioButton(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);
};

/// A frame round other controls, with a title on its upper edge unless the text is empty. Controls
/// may be its children; they then have coordinates relative to it.
class zGroupBox : public zButton {
 public:
  static constexpr int kClassNumber = kClassGroupBox;
  /// How the frame is drawn; etched unless another is set.
  enum class Relief { etched, sunken, raised };

  zGroupBox(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id);

  void setText(const char* newText) override;
  void setRelief(Relief relief);

 protected:
  Widget labelWidget() const override { return title; }
  void applyFontToWidget() override;
  void applyBackground() override;

 private:
  Widget title = nullptr;
};

/// A panel with a three-dimensional border: a group box that adds nothing but its name.
class zPanel3d : public zGroupBox {
 public:
  using zGroupBox::zGroupBox;
};

/// Text that the user cannot change, of one or several lines. Mnemonic signs and tabs as in
/// buttons.
class zStaticText : public zControl {
 public:
  static constexpr int kClassNumber = kClassStaticText;
  zStaticText(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id = -1);

  void setText(const char* newText) override;
  /// Size of what it shows, pixels.
  zDimension textSize() const;
};
