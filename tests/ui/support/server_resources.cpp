#include "tests/ui/support/server_resources.h"

#include <cstddef>
#include <span>

#include "tests/ui/support/test_application.h"
#include "tests/ui/support/wait.h"

#include <X11/Xlib.h>

#include <X11/extensions/XRes.h>  // needs Xlib.h before it

namespace ui {

std::map<std::string, unsigned> serverResources() {
  drain();
  int count = 0;
  XResType* types = nullptr;
  std::map<std::string, unsigned> counts;
  // Any id of this process stands for all that it has.
  XResQueryClientResources(display(), XAllocID(display()), &count, &types);
  for (const XResType& type : std::span(types, static_cast<std::size_t>(count))) {
    char* name = XGetAtomName(display(), type.resource_type);
    counts[name] = type.count;
    XFree(name);
  }
  XFree(types);
  return counts;
}

}  // namespace ui
