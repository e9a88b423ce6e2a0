#pragma once

#include <concepts>
#include <cstdint>
#include <memory>

#include "framework/core/class_numbers.h"

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
