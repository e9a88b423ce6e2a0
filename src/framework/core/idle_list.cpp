// Idle handlers on one Xt work procedure. Xt takes a work procedure off its queue while it runs, so
// a nested event loop started by a handler makes no idle passes, and the list is never run twice at
// a time. There is one work procedure at most: what was added after the last item had gone keeps
// the one that would otherwise drop itself at the end of its pass.

#include "framework/core/idle_list.h"

#include "framework/core/application.h"
#include "framework/core/connect_xm.h"

namespace {

// Counts the passes of all lists of the process.
int passes = 0;

}  // namespace

zIdleList::~zIdleList() {
  if (workProcId != 0) {
    XtRemoveWorkProc(workProcId);
  }
  while (zIdleItem* item = items.popFront()) {
    delete item;
  }
}

void zIdleList::add(zEvH* owner, zOwnerHandler handler) {
  if (isEmpty()) {
    install();
  }
  items.append(std::make_unique<zIdleItem>(zIdleItem{owner, handler, ++additions}).release());
}

void zIdleList::install() {
  removeProc = false;
  if (workProcId == 0) {
    workProcId = connectWork<&zIdleList::runPass>(zApp::instance()->context(), this);
  }
}

void zIdleList::remove(zEvH* owner, zOwnerHandler handler) {
  for (zTypedDlist<zIdleItem>::Iter walk(items); zIdleItem* item = walk.next();) {
    if (item->owner == owner && item->handler == handler) {
      forget(item);
      return;
    }
  }
}

bool zIdleList::forget(zIdleItem* item) {
  if (!items.remove(item)) {
    return false;
  }
  forgotten.emplace_back(item);
  if (!isRunningHandlers) {
    forgotten.clear();
  }
  removeProc = isEmpty();
  return true;
}

void zIdleList::contextReplaced() {
  workProcId = 0;
  if (!isEmpty()) {
    install();
  }
}

bool zIdleList::runPass() {
  if (!isEmpty() && passes >= kPassesPerRun) {
    passes = 0;
    runHandlers();
  }
  ++passes;
  if (removeProc) {
    workProcId = 0;
  }
  return removeProc;
}

void zIdleList::runHandlers() {
  if (!enabled) {
    return;
  }
  const std::uint64_t newest = additions;
  isRunningHandlers = true;
  for (zTypedDlist<zIdleItem>::Iter walk(items); zIdleItem* item = walk.next();) {
    // A handler that takes itself off and on again must not keep this run from ending.
    if (item->serial <= newest && item->handler(item->owner) != 0) {
      forget(item);
    }
  }
  isRunningHandlers = false;
  forgotten.clear();
}
