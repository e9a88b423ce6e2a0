#include "tests/ui/app_object/work_procs.h"

#include <dlfcn.h>

#include <memory>
#include <vector>

#include <X11/Intrinsic.h>

namespace {

struct Wrapped {
  XtWorkProc procedure;
  XtPointer data;
};

Boolean countingProc(XtPointer data) {
  const auto* wrapped = static_cast<const Wrapped*>(data);
  ++workProcs().passes;
  const Boolean isDone = wrapped->procedure(wrapped->data);
  workProcs().dropped += isDone ? 1 : 0;
  return isDone;
}

}  // namespace

WorkProcs& workProcs() {
  static WorkProcs counters;
  return counters;
}

// Takes the place of the toolkit's function in this program and calls it.
XtWorkProcId XtAppAddWorkProc(XtAppContext context, XtWorkProc procedure, XtPointer data) {
  static std::vector<std::unique_ptr<Wrapped>> all;
  static auto* const original =
      reinterpret_cast<decltype(&XtAppAddWorkProc)>(dlsym(RTLD_NEXT, "XtAppAddWorkProc"));
  all.push_back(std::make_unique<Wrapped>(Wrapped{procedure, data}));
  ++workProcs().added;
  return original(context, countingProc, all.back().get());
}
