#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "button_file/button_set.h"
#include "buttons/button_host.h"
#include "buttons/dyn_menu.h"
#include "buttons/group_geometry.h"
#include "framework/core/pane.h"

class ButtonPane;
class zPopupMenu;
class zScrollBarBase;
class zScrollBarCtrl;

/// The button set: its groups, which are children of this pane, and its menus; and the canvas on
/// which the groups stand, which is moved about in its parent to scroll. There is one.
///
/// What asks the user runs a nested event loop; messages of the tester are carried out meanwhile
/// and may replace the groups, and the program may end.
class GroupPane : public zPane {
 public:
  /// An empty set without a file. The bars' pages, and what is seen, are for the parent to set.
  GroupPane(zWindow* parent, zSizer* sizer, zScrollBarCtrl& vertical, zScrollBarCtrl& horizontal,
            ziButtonHost& host);
  ~GroupPane() override;

  // The file. Results are 1 for done, 0 for not.
  /// Lets the user choose a file and reads it, in place of the present set or, with `append`, in
  /// addition to it.
  int loadButtons(int append);
  /// Reads a file's groups in place of the present ones, and its menus in addition; 0 if it cannot
  /// be opened. Neither the name to save to nor whether the set counts as modified changes. As all
  /// that read a file, it says in the log when the file holds what it hardly means.
  int loadFile(const std::string& path);
  /// Writes to the file that the set was saved to last; when that fails, the user is told, there is
  /// no such file any more, and the set stays modified.
  int writeButtonFile();
  /// Proposes the file that was loaded or saved last. Nothing is written while the question about
  /// an existing file has no answer.
  int saveButtonsAs();
  /// The command Save: asks for a file only if there is none.
  int save() { return saveName.empty() ? saveButtonsAs() : writeButtonFile(); }
  /// 1 if the program may end; asks the user about unsaved changes.
  int queryExit();
  /// Both also enable or disable the command Save.
  void setModified();
  void clearModified();
  bool isModified() const { return modified != 0; }
  const std::string& fileName() const { return saveName; }
  ButtonSet contents() const;

  // The groups.
  /// Appends a group without laying it out.
  ButtonPane& appendGroup(const RWCString& name, int expanded);
  const std::vector<ButtonPane*>& groups() const { return groupList; }
  void expandAll();
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

  void buildPopup();
  void updateBar(Direction& direction);
  void placeCanvas();
  void placeGroups();
  void placeGroupButtons();
  bool rebase();
  CanvasBand neededBand() const;
  int onKey(zEvent* event);
  int onPress(zEvent* event);

  class ChosenGroup;

  void readSet(const std::string& path, std::FILE* file);
  void addSet(const ButtonSet& set);
  bool readFile(const std::string& path, int append);
  void showError(const std::string& message);
  RWCString title(const char* action);
  void deleteAllGroups();
  void deleteGroup(ButtonPane& group);
  template <class Dialog, class Accepted>
  bool runDialog(Dialog* dialog, const RWCString& caption, Accepted accepted);
  int onMenuSelect(zEvent* event);
  int onAddButton(zEvent* event);
  int onEditButton(zEvent* event);
  int onDeleteButton(zEvent* event);
  int onRenameGroup(zEvent* event);
  int onDeleteGroup(zEvent* event);

  ziButtonHost& host;
  std::vector<std::unique_ptr<DynMenu>> menus;
  int nextMenuPosition;
  std::vector<ButtonPane*> groupList;  ///< owned as children
  ButtonPane* currentGroup = nullptr;
  Direction down;
  Direction across;
  int canvasTop = 0;  ///< what the canvas' upper edge shows, pixels below the top of all groups
  zDimension canvasSize;
  int modified = 0;
  std::string saveName;
  std::string proposal;  ///< what Save As proposes; empty for the default
  GroupMetrics groupMetrics;
  zRCFont labelFont;  ///< the main window's
  std::unique_ptr<zPopupMenu> popupMenu;
};

/// The button set; null before it is made and after.
extern GroupPane* theGroupPane;

/// Fills the button set from "nelkv.btn" in `directory`, or beside the program, or from a file that
/// the user chooses.
void loadDefaultButtons(const RWCString& directory);
