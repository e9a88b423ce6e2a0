#include "gdb/process/pty.h"

#include <fcntl.h>
#include <termios.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace gdb {

namespace {

[[noreturn]] void fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

void setMode(int terminal, PtyUse use) {
  termios mode{};
  if (tcgetattr(terminal, &mode) != 0) {
    fail("terminal");
  }
  if (use == PtyUse::kMachine) {
    cfmakeraw(&mode);
  } else {
    mode.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHOE | ECHOK | ECHONL);
    mode.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    mode.c_iflag &= ~static_cast<tcflag_t>(IXON);
  }
  if (use == PtyUse::kConsole) {
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | IEXTEN);
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
  }
  if (tcsetattr(terminal, TCSANOW, &mode) != 0) {
    fail("terminal");
  }
}

}  // namespace

Pty openPty(PtyUse use) {
  Pty pty;
  pty.master = UniqueDescriptor(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
  std::array<char, 64> name{};
  if (!pty.master.isOpen() || grantpt(pty.master.get()) != 0 || unlockpt(pty.master.get()) != 0 ||
      ptsname_r(pty.master.get(), name.data(), name.size()) != 0) {
    fail("pseudo-terminal");
  }
  pty.name = name.data();
  pty.slave = UniqueDescriptor(open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!pty.slave.isOpen()) {
    fail(name.data());
  }
  setMode(pty.slave.get(), use);
  return pty;
}

bool isOpenIn(const std::string& process, const std::string& terminal) {
  namespace fs = std::filesystem;
  std::error_code error;
  for (const fs::directory_entry& file :
       fs::directory_iterator("/proc/" + process + "/fd", error)) {
    std::error_code closed;
    if (fs::read_symlink(file, closed) == terminal) {
      return true;
    }
  }
  return error == std::errc::permission_denied;
}

}  // namespace gdb
