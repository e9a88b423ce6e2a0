#pragma once

#include <memory>

#include "framework/draw/font.h"
#include "framework/visuals/status_item.h"
#include "framework/visuals/visual_pane.h"

class zDevice;

using zStatusItemDList = zTypedDlist<zStatusItem>;

/// The help text of a command. A null text ends a table.
struct zHelpText {
  int id;
  const char* text;
};

/// A strip of fields along a frame's edge, which also shows the help of the menu item that is
/// armed. On a sizer that is a strip of extent 0 it asks for the height that its font needs.
class zStatusLine : public ziVisualPane {
 public:
  /// With the default font specification, the font is a 12 point Helv. If the parent is a frame
  /// that has its menu already, the line listens to that.
  zStatusLine(zWindow* parent, zSizer* sizer, std::uint32_t style, int id = -1,
              const zFontSpec& spec = zFontSpec());
  ~zStatusLine() override;

  /// The item with this id, or null.
  zStatusItem* itemById(int itemId);
  /// Sets the text of the item number `slot`, counted from 0 over those that take texts.
  void setText(int slot, const RWCString& text);
  RWCString textAt(int slot);

  // Menu help.
  /// Takes `menu` (with null, none) as the one whose armed items are explained.
  void setHelpMenu(zDevice* menu);
  /// Shows the help in the text item `itemId` from now on. The table stays the caller's and must
  /// live until the next call or the end of the line; null and an empty table stand for the
  /// program's string resources.
  void setHelpTable(int itemId, const zHelpText* table);
  /// What is added to a command id to get the id of its string resource.
  void setHelpBase(int base) { helpBase = base; }
  /// True while a help text shows: other changes are drawn afterwards.
  bool inMessageMode() const { return messageMode; }

  bool isOnFrame() const { return onFrame; }
  /// Pixels that the font needs.
  int neededHeight();
  // For items.
  void addItem(zStatusItem* item);
  void removeItem(const zStatusItem* item);
  /// Items came, went or changed their widths.
  void itemsChanged();
  /// Whether a help text stands in `item`: `text` comes up after it then.
  bool keepsForLater(const zStatusItem& item, const RWCString& text);

  int draw(zEvent* event) override;
  /// Ignored: the line keeps its font, for which its height was chosen.
  void setFont(const zRCFont& newFont, int redraw) override;

 protected:
  zRect visualArea() override;

 private:
  /// Where a help text goes.
  enum HelpTarget { kHelpWholeLine = 0, kHelpItem = 2 };

  zStatusItemText* textItem(int slot);
  int menuSelected(zEvent* event);
  void menuClosed();
  RWCString helpFor(int commandId) const;
  void showHelp(const RWCString& help);
  void drawEdges();

  zStatusItemDList items;  ///< in the order of creation; the compound owns them
  bool onFrame;
  zRCFont lineFont;
  bool messageMode = false;
  HelpTarget helpTarget = kHelpWholeLine;
  zStatusItemText* helpItem = nullptr;
  const zHelpText* helpTable = nullptr;
  int helpBase = 0;
  RWCString savedText;
  RWCString message;  ///< over the whole line
  zDevice* helpMenu = nullptr;
  std::weak_ptr<const void> helpMenuLife;
};

/// A status line with items of its own at the right end.
class zStatusLineEZ : public zStatusLine {
 public:
  /// Style bits: which items.
  enum Item : std::uint32_t {
    kClock = 0x0100,
    kNumLock = 0x1000,
    kCapsLock = 0x8000,
  };

  zStatusLineEZ(zWindow* parent, zSizer* sizer, std::uint32_t style, int id = -1,
                const zFontSpec& spec = zFontSpec());
};
