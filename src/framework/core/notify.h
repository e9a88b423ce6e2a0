#pragma once

#include <concepts>
#include <memory>

#include "framework/core/event.h"
#include "framework/core/evh.h"
#include "framework/core/messages.h"
#include "support/dbl_list.h"

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
