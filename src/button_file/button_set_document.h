#pragma once

#include <string>
#include <vector>

#include "button_file/button_set.h"

/// Told what happens to a button set, so that it can be shown. Whatever goes is there until the
/// call returns; all else has happened already.
class ButtonSetObserver {
 public:
  virtual ~ButtonSetObserver() = default;

  /// Groups with their buttons, and menus, stand behind those that there were; no changed()
  /// follows.
  virtual void appended() {}
  /// An empty group stands behind the others.
  virtual void groupAdded(const ButtonGroup& /*group*/) {}
  virtual void groupGoes(const ButtonGroup& /*group*/) {}
  virtual void allMenusGo() {}
  virtual void groupRenamed(const ButtonGroup& /*group*/) {}
  virtual void groupFolded(const ButtonGroup& /*group*/) {}
  /// It is the last one of its group.
  virtual void buttonAdded(const ButtonGroup& /*group*/) {}
  virtual void buttonChanged(const ButtonGroup& /*group*/, const Button& /*button*/) {}
  virtual void buttonGoes(const ButtonGroup& /*group*/, const Button& /*button*/) {}
  /// All that were to go have gone.
  virtual void buttonsGone(const ButtonGroup& /*group*/) {}
  /// One change is complete: what is shown can be laid out.
  virtual void changed() {}
  virtual void modifiedChanged() {}
  /// Something for the user to know; a line without its end.
  virtual void told(const std::string& /*line*/) {}
  virtual void documentGoes() {}
};

/// The button set of the program with its file: all that is edited, loaded and saved. It asks
/// nobody and shows nothing.
class ButtonSetDocument {
 public:
  ButtonSetDocument() = default;
  ButtonSetDocument(const ButtonSetDocument&) = delete;
  ButtonSetDocument& operator=(const ButtonSetDocument&) = delete;
  ~ButtonSetDocument();

  /// Observers come and go at any time but in a call to one.
  void addObserver(ButtonSetObserver& observer) { observers.push_back(&observer); }
  void removeObserver(ButtonSetObserver& observer) { std::erase(observers, &observer); }

  const ButtonSet& set() const { return content; }
  bool isModified() const { return modified; }
  void setModified() { markModified(true); }
  void clearModified() { markModified(false); }
  /// Passes a line on to the observers.
  void tellUser(const std::string& line) const { tell(&ButtonSetObserver::told, line); }

  // The file.
  /// What becomes of the present set when a file is read.
  enum class Reading {
    load,    ///< it goes; the set counts as unmodified
    append,  ///< it stays in front; the set counts as modified
    start,   ///< the groups go, the menus stay in front; whether it is modified stays
  };
  /// False, and nothing has happened, if the file cannot be read or, but for a start, its name is
  /// too long. The observers are told when the file holds what its author hardly means.
  bool read(const std::string& path, Reading reading);
  /// Starts with the default file in `directory` or else beside `program`, the path that the
  /// program was started by. False if there is none.
  bool readDefault(const std::string& directory, const std::string& program);
  /// Puts groups and menus behind those that there are; whether the set is modified stays.
  void append(ButtonSet&& added);

  /// The file that was saved to last, an absolute path; empty if there is none.
  const std::string& fileName() const { return saveName; }
  /// What to offer as the name of a save: the file that was loaded or saved last.
  std::string proposal() const;
  void setFileName(const std::string& path) { saveName = path; }
  /// Writes to fileName(). When that fails there is no such file any more, and the set stays as it
  /// is.
  bool save();

  // Groups. But for what is said, each change makes the set a modified one.
  void addGroup(const std::string& name);
  /// The set does not count as modified by it. Intended, as with the next two.
  void addGroupUncounted(const std::string& name);
  void setExpanded(const ButtonGroup& group, bool expanded);
  void setAllExpanded(bool expanded);
  void renameGroup(const ButtonGroup& group, const std::string& name);
  void removeGroup(const ButtonGroup& group);
  /// The group that the user is at; null if it has gone or there was none yet.
  const ButtonGroup* currentGroup() const { return current; }
  void setCurrentGroup(const ButtonGroup& group) { current = &group; }

  // Buttons. Each change also unfolds the group.
  void addButton(const ButtonGroup& group, const Button& button);
  void changeButton(const ButtonGroup& group, const Button& button, const Button& wanted);
  /// Removes the first button with exactly this label, for each of the labels in turn.
  void removeButtons(const ButtonGroup& group, const std::vector<std::string>& labels);
  /// Gives a button another definition, and no more than that.
  void define(const Button& button, const std::string& definition);

 private:
  template <class... Parameters, class... Arguments>
  void tell(void (ButtonSetObserver::*notice)(Parameters...), const Arguments&... arguments) const {
    for (std::size_t i = 0; i < observers.size(); ++i) {
      (observers[i]->*notice)(arguments...);
    }
  }
  void markModified(bool isModified);
  void fold(ButtonGroup& group, bool expanded);
  void settle(ButtonGroup& group);
  void removeAllGroups();
  void dropGroup(const ButtonGroup& group);
  void removeAllMenus();
  ButtonGroup& own(const ButtonGroup& group);

  std::vector<ButtonSetObserver*> observers;
  ButtonSet content;
  const ButtonGroup* current = nullptr;
  bool modified = false;
  std::string saveName;
  std::string lastFile;  ///< read or saved; empty if nobody saves to it
};

/// Where a set is to be saved, as it was typed when that happened.
struct ButtonSaveTarget {
  explicit ButtonSaveTarget(const std::string& typed);

  std::string path;  ///< absolute: the working directory may be another one soon
  bool isTooLong;
  bool isThere;
};
