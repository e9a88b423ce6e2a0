#pragma once

#include "framework/visuals/visual_button.h"
#include "framework/visuals/visual_pane.h"

/// Base of the buttons that draw themselves. A press issues the control's id as a command: it is
/// offered to the parent by zDispatch and then to the parent's handle().
class ziCtrlBase : public ziVisualCtrlPane {
 public:
  int enable() override;
  int disable() override;

  /// Whether it looks pressed, disabled, and so on.
  zVisualState visualState() const { return visual->visualState(); }

 protected:
  ziCtrlBase(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* captionText, int id);
  /// Makes the button that fills this control, and its caption. `bitmap` becomes the button's.
  void createVisuals(std::uint32_t buttonStyle, zBitmap* bitmap, const char* captionText);
  ziVisBmpButtonInternal& button() { return *visual; }

 private:
  ziVisBmpButtonInternal* visual = nullptr;  ///< the compound owns it and its caption
};

/// A button with an image. With the focus, the space bar presses it and fires when it is released.
class ziVCBCtrlButton : public ziCtrlBase {
 public:
  int keyArrived(zEvent& event, bool typed) override;

 protected:
  /// `buttonStyle` is a set of zBmpButtonStyle.
  ziVCBCtrlButton(zWindow* parent, zSizer* sizer, std::uint32_t style, std::uint32_t buttonStyle,
                  const char* captionText, int id, zBitmap* bitmap);

 private:
  int keyReleased(zEvent* event);
};

/// A button of a toolbar. It never takes the keyboard focus.
class zToolButton : public ziVCBCtrlButton {
 public:
  /// `style` is a set of zBmpButtonStyle. `bitmap` becomes the button's and goes with it; it may be
  /// null.
  zToolButton(zWindow* parent, zSizer* sizer, int style, int id, zBitmap* bitmap);

  bool isEnabled() const override;

 protected:
  /// The widget stays sensitive: of one that is not no pointer is heard, and a greyed button keeps
  /// its tip.
  void applySensitivity(bool /*on*/) override {}
};

/// The same outside toolbars, with a caption beside or below the image; it takes the focus.
class zBitmapButton : public ziVCBCtrlButton {
 public:
  zBitmapButton(zWindow* parent, zSizer* sizer, int style, const char* captionText, int id,
                zBitmap* bitmap);
};
