#include "tests/ui/app_object/x_faults.h"

#include <unistd.h>

#include "framework/core/application.h"
#include "framework/core/toolkit_xm.h"

#include <Xm/XmAll.h>

namespace {

Display* display() {
  return zApp::instance()->display();
}

}  // namespace

void setXResource(const std::string& name, const std::string& value) {
  XrmDatabase database = XtDatabase(display());
  XrmPutStringResource(&database, name.c_str(), value.c_str());
}

void mapUnknownWindow(unsigned long window) {
  XSync(display(), False);
  const XErrorHandler before = XSetErrorHandler(XErrorReporter);
  XMapWindow(display(), window);
  XSync(display(), False);
  XSetErrorHandler(before);
}

void raiseXtWarning(const char* text) {
  XtAppWarning(zApp::instance()->context(), text);
}

void raiseXtError(const char* text) {
  XtAppError(zApp::instance()->context(), text);
}

void endProcessLater() {
  constexpr unsigned kSeconds = 10;
  alarm(kSeconds);
}
