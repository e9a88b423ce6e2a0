#pragma once

#include <concepts>
#include <cstdint>
#include <memory>

/// Numbers by which zEvH::isA asks what an object is.
enum zClassNumber : int {
  kClassEvH = 1,
  kClassWindow = 2,
  kClassFrameWin = 3,
  kClassChildWin = 4,
  kClassAppFrame = 5,
  kClassDialogFrame = 6,
  kClassFormDialog = 7,
  kClassPane = 8,
  kClassControl = 10,
  kClassDevice = 12,
  kClassMenu = 13,
  kClassSystemMenu = 14,
  kClassPopupMenu = 15,
  kClassStaticText = 16,
  kClassButton = 17,
  kClassPushButton = 18,
  kClassDefPushButton = 19,
  kClassCheckBox = 20,
  kClassRadioButton = 21,
  kClassGroupBox = 22,
  kClassEditBase = 23,
  kClassEditLine = 24,
  kClassEditBox = 25,
  kClassListBoxBase = 26,
  kClassListBox = 27,
  kClassListBoxUnsorted = 28,
  kClassComboBoxBase = 29,
  kClassComboBox = 30,
  kClassComboBoxFull = 31,
  kClassComboBoxStatic = 32,
  kClassScrollBarBase = 33,
  kClassScrollBarVert = 34,
  kClassScrollBarHorz = 35,
  kClassScrollBarCtrl = 36,
  kClassMdiAppFrame = 37,
  kClassMdiChildFrame = 38,
  kClassCtrlPane = 42,
};

struct zEvent;

/// Root of everything that can take an event. It answers what an object is by class numbers, not by
/// the language's run-time types.
class zEvH {
 public:
  zEvH();
  zEvH(const zEvH&) = delete;
  zEvH& operator=(const zEvH&) = delete;
  virtual ~zEvH();

  /// The generic hook: a class may bind it as a handler of its own, and controls offer it pointer
  /// crossings (message 0). Non-zero means handled.
  virtual int handle(zEvent* event);

  bool isA(int classNumber) const;
  /// Expires with the object, or before as soon as it takes no more part in events; see ziAlive.
  std::weak_ptr<const void> life() const { return lifeToken; }

 protected:
  /// Adds a class number; for constructors only.
  void markClass(int classNumber);

  enum StateFlag : std::uint16_t {
    kDeleteOnUnmap = 0x001,  ///< the object deletes itself when its widget is unmapped
    kWidgetGone = 0x002,     ///< the widget dies elsewhere; the destructor leaves it alone
    kShown = 0x004,          ///< show has run once
  };
  bool hasState(StateFlag flag) const { return (stateFlags & flag) != 0; }
  void setState(StateFlag flag, bool on);
  /// From now on the object counts as destroyed.
  void endLife() { lifeToken.reset(); }

 private:
  std::shared_ptr<const void> lifeToken = std::make_shared<char>();
  std::uint8_t classBits[10] = {};
  std::uint16_t stateFlags = 0;
};

/// Tells, after a call that may have destroyed an object, whether it is still there. Of no object
/// it says no.
class ziAlive {
 public:
  explicit ziAlive(const zEvH* watched) {
    if (watched != nullptr) {
      life = watched->life();
    }
  }
  explicit operator bool() const { return !life.expired(); }

 private:
  std::weak_ptr<const void> life;
};

/// The object as a T, or null when it is none (or null itself). The framework's only downcast.
template <class T>
requires std::derived_from<T, zEvH> T* windowCast(zEvH* object) {
  return object != nullptr && object->isA(T::kClassNumber) ? static_cast<T*>(object) : nullptr;
}
