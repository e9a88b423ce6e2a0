#pragma once

#include <array>
#include <memory>
#include <vector>

#include "buttons/dyn_button.h"
#include "buttons/group_geometry.h"

class GroupPane;
class zCheckBox;
class zGravSizer;

/// The panel of one group: a header with the group's name, which folds and unfolds it, and the
/// button "Group", which opens the menu of the group; below it the buttons in rows of three. Owned
/// by the GroupPane as its child.
class ButtonPane : public zPanel3d {
 public:
  ButtonPane(GroupPane& canvas, zSizer* sizer, const RWCString& name, int expanded);
  ~ButtonPane() override;

  const RWCString& name() const { return groupName; }
  bool isExpanded() const { return expanded != 0; }
  const std::vector<std::unique_ptr<ziCommand>>& commands() const { return buttons; }
  std::vector<RWCString> labels() const;

  /// Stores it and shows it in the check box; nothing is laid out.
  void setExpanded(int newValue);
  int width() const { return isExpanded() ? expandedWidth : collapsedWidth; }
  int height() const { return isExpanded() ? expandedHeight : headerHeight(); }

  /// Adds a button read from a file. updateExtents() follows after the last.
  void append(const RWCString& label, const RWCString& definition);
  /// The widths and the height from the buttons as they are now.
  void updateExtents();

  // What the dialogs do. Each unfolds the group (not so a rename), lays out all groups and marks
  // the set as modified.
  void addButton(const RWCString& label, const RWCString& definition);
  void changeCurrentButton(const RWCString& label, const RWCString& definition);
  /// Deletes the first button with exactly this label. rebuildAfterDelete() follows after the last.
  void deleteButton(const RWCString& label);
  void rebuildAfterDelete();
  void rename(const RWCString& newName);

  /// Makes the button of that row the one that changeCurrentButton changes if it has this label,
  /// else the first one that has; false if there is none.
  bool setCurrentButton(std::size_t row, const RWCString& label);
  /// Null when the group has no buttons.
  const ziCommand* currentButton() const;

  /// Places the panel on the canvas, whose upper edge shows what is at `canvasTop`.
  void place(int newWidth, int canvasTop);
  /// Keeps the button "Group" left of what is at `seenRight` on the canvas.
  void placeGroupButton(int seenRight);
  /// Makes the buttons that lie in the band.
  void showButtons(const CanvasBand& band);

  /// Where the menu of the group opens, from the upper left corner of the panel.
  zPoint menuPlace() const;

  int yPosition = 0;  ///< of the panel, below the top of all groups, pixels

 private:
  int headerHeight() const;
  int checkBoxWidth() const;
  void createHeader();
  void updateWidths();
  void placeButton(int index);
  /// Of the first button with this label; their number if there is none.
  std::size_t indexOf(const RWCString& label) const;
  void settleChange();
  int onFold(zEvent* event);
  int onGroup(zEvent* event);
  static int openMenu(zEvH* self);

  GroupPane& groups;
  std::array<std::unique_ptr<zGravSizer>, 4> margins;  ///< top, bottom, left, right
  std::unique_ptr<zTimer> menuTimer;
  std::vector<std::unique_ptr<ziCommand>> buttons;
  std::size_t current = 0;
  zCheckBox* checkBox = nullptr;
  zPushButton* groupButton = nullptr;
  RWCString groupName;
  int collapsedWidth = 0;
  int expandedWidth = 0;
  int nameWidth = 0;
  int maxButtonWidth = 0;
  int expandedHeight = 0;
  int expanded;
  int cutOff = 0;  ///< rows of pixels of the panel above the upper edge of its window
};
