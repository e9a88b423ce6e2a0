#pragma once

#include <concepts>
#include <cstdint>
#include <memory>

#include "framework/core/event.h"
#include "framework/core/evh.h"
#include "support/lists.h"

/// A handler: a member of an object derived from zEvH. Non-zero means handled and stops the search.
using zHandler = int (zEvH::*)(zEvent*);

/// A member of a derived class as a zHandler. The target that it is bound to must be a T.
template <class T>
requires std::derived_from<T, zEvH> zHandler toHandler(int (T::*member)(zEvent*)) {
  return static_cast<zHandler>(member);
}

/// One handler binding: which message and which ids, and what is called.
class zNotifyNode {
 public:
  /// For all ids.
  zNotifyNode(zEvH* target, zHandler member, int message);
  /// For the ids from `idLow` to `idHigh`, compared unsigned.
  zNotifyNode(zEvH* target, zHandler member, int message, unsigned idLow, unsigned idHigh);
  zNotifyNode(const zNotifyNode&) = delete;
  zNotifyNode& operator=(const zNotifyNode&) = delete;
  virtual ~zNotifyNode() = default;

  virtual bool matches(const zEvent& event) const;
  bool isBoundTo(const zEvH* target, zHandler member) const;
  /// Calls the binding. This node may be gone afterwards.
  int call(zEvent* event) const { return (target->*member)(event); }

 private:
  unsigned idLow;
  unsigned idHigh;
  int message;
  zHandler member;
  zEvH* target;
};

/// A binding to one notification code of one control.
class zCtrlNotifyNode : public zNotifyNode {
 public:
  zCtrlNotifyNode(zEvH* target, zHandler member, int id, Widget widget, int code);

  bool matches(const zEvent& event) const override;
  Widget controlWidget() const { return widget; }

 private:
  Widget widget;
  int code;  ///< 16 bits
};

/// List of bindings, newest first. It owns its nodes; bindings may be added and removed, and the
/// list itself may be destroyed, while it is being run.
class zNotifyNodeDlist {
 public:
  zNotifyNodeDlist() = default;
  zNotifyNodeDlist(const zNotifyNodeDlist&) = delete;
  zNotifyNodeDlist& operator=(const zNotifyNodeDlist&) = delete;
  ~zNotifyNodeDlist();

  /// The node registered last runs first.
  void add(std::unique_ptr<zNotifyNode> node);
  /// Removes the first binding that matches `probe` and calls `member` on `target`.
  bool remove(const zEvent& probe, const zEvH* target, zHandler member);
  /// Offers the event to each matching binding in turn; 1 as soon as one took it, else 0.
  int run(zEvent& event);
  /// Moves all bindings of `other` behind those of this list.
  void takeFrom(zNotifyNodeDlist& other);

 private:
  zTypedDlist<zNotifyNode> nodes;
};

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
  /// Tells the owner that there are handlers, too.
  zNotifyNodeDlist& handlersToAddTo();

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
