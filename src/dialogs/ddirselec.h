#pragma once

#include <optional>
#include <string>

#include "dialogs/directory_tree.h"
#include "framework/core/dialog_frame.h"

class zEditLine;
class zListBox;

/// The dialog in which the user picks a directory, by walking through the list or by typing its
/// path. OK on another path than the one shown goes there first; OK on the one shown ends.
///
///   Ddirselec dialog(mainWindow, workingDirectory().value_or(""));
///   dialog.run(kFullModal);
///   if (const auto directory = dialog.chosen()) ...
class Ddirselec : public zFormDialog {
 public:
  static constexpr const char* kTitle = "Select Source Directory";

  /// Ids of the controls.
  enum Control : int {
    kOk = 4711,
    kCurrent = 4712,
    kCancel = 4713,
    kPathEdit = 4714,
    kDirList = 4715,
  };

  /// Opens on `startDirectory`, an absolute path; empty stands for none, and it opens on "/".
  Ddirselec(zWindow* parent, const std::string& startDirectory);

  /// After the run: the directory confirmed by OK, with "/" at its end. Nothing after any other end
  /// and when it is the one that the dialog opened with.
  std::optional<std::string> chosen() const;

  int activate(zEvent* event) override;

 private:
  void makeControls();
  void load(const std::string& name);
  void fillList();
  void selectCurrent();
  void showPath(const std::string& path);
  int openChosenRow();

  int onOk(zEvent* event);
  int onCurrent(zEvent* event);
  int onCancel(zEvent* event);
  int onDoubleClick(zEvent* event);
  int onListKey(zEvent* event);

  std::string startDir;
  ziDirectoryTree tree;
  zListBox* dirList = nullptr;
  zEditLine* pathEdit = nullptr;
  bool hasBeenActive = false;
};
