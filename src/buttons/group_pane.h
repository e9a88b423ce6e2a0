#pragma once

#include <memory>
#include <string>
#include <vector>

#include "button_file/button_set_document.h"
#include "buttons/button_host.h"
#include "buttons/dyn_menu.h"
#include "buttons/group_geometry.h"
#include "framework/core/pane.h"

class ButtonPane;
class zPopupMenu;
class zScrollBarBase;
class zScrollBarCtrl;

/// Shows the button set, of which there is one: its menus in the main window's bar, and its groups,
/// which are children of this pane. It is the canvas on which the groups stand, and is moved about
/// in its parent to scroll. What the user does to the set it asks for, and leaves to the document.
///
/// What asks the user runs a nested event loop; messages of the tester are carried out meanwhile
/// and may replace the groups, and the program may end.
class GroupPane : public zPane, private ButtonSetObserver {
 public:
  /// An empty set without a file. The bars' pages, and what is seen, are for the parent to set.
  GroupPane(zWindow* parent, zSizer* sizer, zScrollBarCtrl& vertical, zScrollBarCtrl& horizontal,
            ziButtonHost& host);
  ~GroupPane() override;

  ButtonSetDocument& document() { return content; }
  void setModified() { content.setModified(); }
  void clearModified() { content.clearModified(); }

  // The file. Results are 1 for done, 0 for not.
  /// Lets the user choose a file and reads it, in place of the present set or, with `append`, in
  /// addition to it.
  int loadButtons(int append);
  /// Writes to the file that the set was saved to last. When that fails, the user is told.
  int writeButtonFile();
  /// Nothing is written while the question about an existing file has no answer.
  int saveButtonsAs();
  /// The command Save: asks for a file only if there is none.
  int save() { return content.fileName().empty() ? saveButtonsAs() : writeButtonFile(); }
  /// 1 if the program may end; asks the user about unsaved changes.
  int queryExit();

  // The groups.
  const std::vector<ButtonPane*>& groups() const { return groupList; }
  void expandAll() { content.setAllExpanded(true); }
  void collapseAll();
  /// Asks for groups to add.
  void addGroup();
  /// Opens the menu of a group, which becomes the current one. The group may be gone afterwards.
  void openMenuOf(ButtonPane& group);
  /// Asks, and deletes the current group.
  void deleteCurrentGroup();

  // The canvas.
  /// Every change of the groups ends in this.
  void relayout();
  /// The extents of the part in which this pane is seen.
  void setViewport(const zDimension& paneSize, int visibleHeight);
  /// A bar has moved.
  void scrolled(zScrollBarCtrl& bar);
  /// In one of the windows here, lets the wheel and the keys Page Up and Page Down scroll, and the
  /// middle and the right button do nothing.
  void takeInputOf(zWindow& window);

  // The menus.
  void deleteAllMenus();
  void rebuildHelpTable();

  ziButtonHost& mainWindow() { return host; }
  const GroupMetrics& metrics() const { return groupMetrics; }
  /// In this pane's font, pixels.
  zDimension textExtent(const RWCString& shown) const;
  /// The width that a label asks for, pixels.
  int buttonWidth(const RWCString& label) const;
  static int nextControlId();

 private:
  /// What one bar scrolls.
  struct Direction {
    zScrollBarCtrl& bar;
    int offset;          ///< of the canvas: where the first group is, before rebasing
    int total = 0;       ///< extent of all groups, pixels
    int visible = 0;     ///< of that, what is seen
    int paneExtent = 0;  ///< of the viewport
    int largest = 0;     ///< position
  };

  ButtonPane& paneOf(const ButtonGroup& group);
  ButtonPane& appendPane(const ButtonGroup& group);
  void deletePane(const ButtonGroup& group);
  void appended() override;
  void groupAdded(const ButtonGroup& group) override { appendPane(group); }
  void groupGoes(const ButtonGroup& group) override { deletePane(group); }
  void allMenusGo() override { deleteAllMenus(); }
  void groupRenamed(const ButtonGroup& group) override;
  void groupFolded(const ButtonGroup& group) override;
  void buttonAdded(const ButtonGroup& group) override;
  void buttonChanged(const ButtonGroup& group, const Button& button) override;
  void buttonGoes(const ButtonGroup& group, const Button& button) override;
  void buttonsGone(const ButtonGroup& group) override;
  void changed() override { relayout(); }
  void modifiedChanged() override;
  void told(const std::string& line) override;

  void buildPopup();
  void updateBar(Direction& direction);
  void placeCanvas();
  void scrollToTop();
  void placeGroups();
  void placeGroupButtons();
  bool rebase();
  CanvasBand neededBand() const;
  int onKey(zEvent* event);
  int onPress(zEvent* event);

  void showError(const std::string& message);
  RWCString title(const char* action);
  template <class Dialog, class Accepted>
  void ask(Dialog* dialog, const char* action, Accepted accepted);
  template <class Command>
  int onChosen(Command command);
  int onMenuSelect(zEvent* event);
  int onAddButton(zEvent* event);
  int onEditButton(zEvent* event);
  int onDeleteButton(zEvent* event);
  int onRenameGroup(zEvent* event);
  int onDeleteGroup(zEvent* event);

  ziButtonHost& host;
  ButtonSetDocument content;
  std::vector<std::unique_ptr<DynMenu>> menus;  ///< in the order of the set's
  int nextMenuPosition;
  std::vector<ButtonPane*> groupList;  ///< in the order of the set's; owned as children
  Direction down;
  Direction across;
  int canvasTop = 0;  ///< what the canvas' upper edge shows, pixels below the top of all groups
  zDimension canvasSize;
  GroupMetrics groupMetrics;
  zRCFont labelFont;  ///< the main window's
  std::unique_ptr<zPopupMenu> popupMenu;
};

/// The button set; null before it is made and after.
extern GroupPane* theGroupPane;

/// Fills the button set from "nelkv.btn" in `directory`, or beside the program, or from a file that
/// the user chooses.
void loadDefaultButtons(const RWCString& directory);
