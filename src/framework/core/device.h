#pragma once

#include <cstdint>
#include <memory>

#include "framework/core/notify.h"

/// The bit of a window's handler mask that the handlers of its menus set.
inline constexpr std::uint32_t kMenuOwnerMask = 0x08;

/// An event receiver that is no window, such as a menu: it has handlers of its own and lends a mask
/// bit to the window that owns it.
class zDevice : public zEvH {
 public:
  static constexpr int kClassNumber = kClassDevice;

  zDevice(zWindow* owner, std::uint32_t ownerMask);
  ~zDevice() override;

  /// Runs the handlers of an attached device, then its own; 1 if one took the event. The device may
  /// be gone afterwards.
  virtual int dispatch(zEvent* event);

  /// Binds `member` of `target` to `message` for the ids from `idLow` to `idHigh`.
  void addHandler(zEvH* target, zHandler member, int message, unsigned idLow, unsigned idHigh);
  /// Binds for all ids.
  void addHandler(zEvH* target, zHandler member, int message);
  /// Undoes the first such binding for `id`; nothing happens when there is none.
  void removeHandler(zEvH* target, zHandler member, int message, unsigned id);

  zWindow* owner() const { return ownerWindow; }

 protected:
  /// Lets this device run the handlers of `attached`, which must outlive it, before its own.
  void shareHandlersOf(zDevice& attached) { shared = &attached; }

 private:
  zNotifyNodeDlist& ensureHandlers();
  void markOwner();

  std::unique_ptr<zNotifyNodeDlist> handlers;
  zDevice* shared = nullptr;
  zWindow* ownerWindow;
  std::uint32_t ownerMask;
};

/// What a frame and the accelerators must know of a menu bar.
class ziFrameMenu : public zDevice {
 public:
  using zDevice::zDevice;
  /// 0 only if the item exists, has a widget and is not sensitive.
  virtual int isItemEnabled(int id) const = 0;
};
