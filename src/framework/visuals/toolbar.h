#pragma once

#include <memory>

#include "framework/layout/slot_layout.h"
#include "framework/visuals/visual_button.h"
#include "framework/visuals/visual_pane.h"

class ziVisPanelInternal;

/// Style bits of a toolbar: where it draws lines.
enum zToolbarStyle : std::uint32_t {
  kToolbarEdgeByGravity = 0x001,  ///< on the side that faces the frame's inside
  kToolbarLineRight = 0x002,
  kToolbarLineLeft = 0x004,
  kToolbarLineTop = 0x008,
  kToolbarLineBottom = 0x010,
  kToolbarBorder = 0x200,  ///< a raised border instead of lines
};

/// Connects a toolbar with a menu. This program makes none.
class zMenuLink {
 public:
  zMenuLink() = default;
  zMenuLink(const zMenuLink&) = delete;
  zMenuLink& operator=(const zMenuLink&) = delete;
  virtual ~zMenuLink() = default;
};

/// A strip of tool buttons, its children. It places those with slot sizers in their slots, and
/// hands commands to the menu of its frame and to the frame, so that one handler serves menu,
/// accelerator and button.
class zToolbar : public ziVisualPane {
 public:
  /// `style` is a set of zToolbarStyle. `link` becomes the bar's; it may be null.
  zToolbar(zWindow* parent, zSizer* sizer, int style, zMenuLink* link);
  ~zToolbar() override;

  int draw(zEvent* event) override;
  int handle(zEvent* event) override;
  int size(zEvent* event) override;

  /// Where the slots lie.
  zSlotLayout& slots() { return *layout; }

 private:
  bool has(zToolbarStyle bit) const { return (barStyle & bit) != 0; }
  void drawLines(zDisplay& display);
  int forwardCommand(zEvent& event);

  std::unique_ptr<zSlotLayout> layout;
  std::unique_ptr<ziVisPanelInternal> border;
  std::unique_ptr<zMenuLink> menuLink;
  std::uint32_t barStyle;
};

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
