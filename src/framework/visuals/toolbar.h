#pragma once

#include <memory>

#include "framework/layout/slot_layout.h"
#include "framework/visuals/extra/more_visuals.h"
#include "framework/visuals/visual_pane.h"

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
