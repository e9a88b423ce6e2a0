#pragma once

#include <string>
#include <string_view>

class zWindow;

/// Base of the two modal forms that ask for a file name. Constructing one shows it and waits for
/// the answer in a nested event loop; the answer is then read from it. Nothing is remembered from
/// one form to the next. A form whose parent goes away, or that the end of the application ends, is
/// not accepted.
class zFileForm {
 public:
  zFileForm(const zFileForm&) = delete;
  zFileForm& operator=(const zFileForm&) = delete;

  /// 1 if the user confirmed a name, else 0.
  int accepted() const { return isAccepted ? 1 : 0; }
  /// The confirmed name as it stands in the form, of any length; empty if there is none.
  const std::string& path() const { return chosenPath; }
  operator const char*() const { return chosenPath.c_str(); }

  /// What the name may be the name of.
  enum class Target { anythingButDirectory, anything };

 protected:
  /// `parent` may be null; the form then belongs to the main window, and where there is none
  /// either, nothing is shown. `preset` is a path or name, which may have wild cards, or null.
  /// `filter` alternates descriptions and patterns and ends with two nulls; only its first pattern
  /// counts. Null is "*".
  zFileForm(zWindow* parent, const char* title, const char* preset, const char* const* filter,
            Target target);
  ~zFileForm() = default;

 private:
  std::string chosenPath;
  bool isAccepted = false;
};

/// Asks for a file that is to exist. On a directory the form stays open and goes there; whether the
/// file is there, and can be read, is for the caller to see.
class zFileOpenForm : public zFileForm {
 public:
  zFileOpenForm(zWindow* parent, const char* title, const char* preset, const char* const* filter)
      : zFileForm(parent, title, preset, filter, Target::anythingButDirectory) {}
};

/// Asks for a file to be written. A directory's name is accepted too: opening it fails later.
class zFileSaveForm : public zFileForm {
 public:
  zFileSaveForm(zWindow* parent, const char* title, const char* preset, const char* const* filter)
      : zFileForm(parent, title, preset, filter, Target::anything) {}
};

/// What a file form shows at first.
struct ziFilePreset {
  std::string directory;  ///< empty for the working directory
  std::string name;       ///< goes into the selection field behind the directory
  std::string pattern;

  friend bool operator==(const ziFilePreset&, const ziFilePreset&) = default;
};

/// Takes a preset path apart. The pattern is that of `filter` (see zFileForm); without a filter it
/// is the part of the preset that has wild cards, and otherwise "*".
ziFilePreset makeFilePreset(std::string_view preset, const char* const* filter);
