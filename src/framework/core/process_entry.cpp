#include "framework/core/process_entry.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <unistd.h>

#include "framework/core/application.h"

#include <X11/Xlib.h>

namespace {

bool exists(const std::string& file) {
  return access(file.c_str(), F_OK) == 0;
}

void setResourceFile() {
  const zResourceSearch search =
      findResourceFile(std::getenv("XAPPLRESDIR"), std::getenv("nelwerk"));
  if (search.file) {
    // The environment keeps the pointer.
    static std::string setting;
    setting = "XENVIRONMENT=" + *search.file;
    putenv(setting.data());
  } else if (search.isMissing) {
    std::fputs("Cannot find X-Resources. Please set XENVIRONMENT!\n", stderr);
  }
}

}  // namespace

int runProcess(int argc, char** argv, void (*appMain)(zApp* app)) {
  std::srand(static_cast<unsigned>(getpid()));
  setResourceFile();
  auto app = std::make_unique<zApp>(argc, argv, joinArguments(argc, argv));
  appMain(app.get());
  Display* display = app->display();
  app.reset();
  if (display != nullptr) {
    XCloseDisplay(display);
  }
  return EXIT_SUCCESS;
}

zResourceSearch findResourceFile(const char* resourceDirectories, const char* installation) {
  if (resourceDirectories != nullptr) {
    const std::string_view directories = resourceDirectories;
    std::string file = std::string(directories.substr(0, directories.find(':'))) + "/NEL2";
    if (exists(file)) {
      return {std::move(file)};
    }
  }
  if (installation != nullptr) {
    std::string file = std::string(installation) + "/X11/app-defaults/NEL2";
    if (exists(file)) {
      return {std::move(file)};
    }
    return {std::nullopt, true};
  }
  return {};
}

std::string joinArguments(int argc, char* const* argv) {
  std::string line;
  for (int i = 0; i < argc; ++i) {
    line += i == 0 ? "" : " ";
    line += argv[i];
  }
  return line;
}

const char* displayArgument(int argc, char* const* argv) {
  const char* name = nullptr;
  for (int i = 1; i + 1 < argc; ++i) {
    if (std::string_view(argv[i]).starts_with("-d")) {
      name = argv[i + 1];
    }
  }
  return name;
}
