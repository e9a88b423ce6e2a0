#include "tests/ui/support/test_application.h"

#include <gtest/gtest.h>

#include <array>

#include "framework/core/application.h"

#include <X11/Xlib.h>

namespace ui {

namespace {

int ignoringDepth = 0;

int failOnXError(Display* connection, XErrorEvent* event) {
  if (ignoringDepth == 0) {
    std::array<char, 100> text = {};
    XGetErrorText(connection, event->error_code, text.data(), static_cast<int>(text.size()));
    ADD_FAILURE() << "X error: " << text.data() << ", request " << int{event->request_code} << "."
                  << int{event->minor_code} << ", resource 0x" << std::hex << event->resourceid;
  }
  return 0;
}

}  // namespace

void makeTestApplication(int argc, char** argv) {
  // Lives as long as the process, as does the display: Motif keeps what it made for a connection
  // and would hand it out for the next one.
  static zApp application(argc, argv, "nelkvui");
  application.setName("nelkvui");
  XSetErrorHandler(failOnXError);
}

Display* display() {
  return zApp::instance()->display();
}

XtAppContext context() {
  return zApp::instance()->context();
}

IgnoreXErrors::IgnoreXErrors() {
  ++ignoringDepth;
}

IgnoreXErrors::~IgnoreXErrors() {
  XSync(display(), False);
  --ignoringDepth;
}

}  // namespace ui
