#pragma once

#include <array>
#include <memory>
#include <vector>

#include "button_file/button_set.h"
#include "buttons/dyn_button.h"
#include "buttons/group_geometry.h"

class GroupPane;
class zCheckBox;
class zGravSizer;

/// The panel of one group: a header with the group's name, which folds and unfolds it, and the
/// button "Group", which opens the menu of the group; below it the buttons in rows of three. Owned
/// by the GroupPane as its child, which passes on what happens to the group.
class ButtonPane : public zPanel3d {
 public:
  /// `shown` must outlive the pane.
  ButtonPane(GroupPane& canvas, zSizer* sizer, const ButtonGroup& shown);
  ~ButtonPane() override;

  const ButtonGroup& group() const { return model; }
  const std::vector<ziCommand>& commands() const { return buttons; }
  int width() const { return model.expanded ? expandedWidth : collapsedWidth; }
  int height() const { return model.expanded ? expandedHeight : headerHeight(); }

  // What has happened to the group. Nothing is laid out.
  /// Shows the state in the check box.
  void setExpanded(int newValue);
  /// All that the group has, none of which is shown yet.
  void addAllButtons();
  /// The last one of the group.
  void addButton();
  void changeCurrentButton(const Button& changed);
  /// Before the button goes. rebuildAfterDelete() follows after the last.
  void deleteButton(const Button& going);
  void rebuildAfterDelete() { updateExtents(); }
  void rename(const RWCString& newName);

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
  void append(const Button& shown);
  void updateWidths();
  /// The widths and the height from the buttons as they are now.
  void updateExtents();
  void placeButton(int index);
  ziCommand& commandOf(const Button& shown);
  int onFold(zEvent* event);
  int onGroup(zEvent* event);
  static int openMenu(zEvH* self);

  GroupPane& groups;
  const ButtonGroup& model;
  std::array<std::unique_ptr<zGravSizer>, 4> margins;  ///< top, bottom, left, right
  std::unique_ptr<zTimer> menuTimer;
  std::vector<ziCommand> buttons;  ///< in the order of the group's
  zCheckBox* checkBox = nullptr;
  zPushButton* groupButton = nullptr;
  int collapsedWidth = 0;
  int expandedWidth = 0;
  int nameWidth = 0;
  int maxButtonWidth = 0;
  int expandedHeight = 0;
  int cutOff = 0;  ///< rows of pixels of the panel above the upper edge of its window
};
