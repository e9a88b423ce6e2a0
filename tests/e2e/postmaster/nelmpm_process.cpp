#include "tests/e2e/postmaster/nelmpm_process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>

#include "link/port_control.h"
#include "tests/e2e/postmaster/test_client.h"

int publishedPort() {
  std::ifstream file(portFileName());
  int port = 0;
  file >> port;
  return port;
}

bool exists(const std::string& path) {
  return std::filesystem::symlink_status(path).type() != std::filesystem::file_type::not_found;
}

NelmpmProcess::NelmpmProcess(std::vector<std::string> arguments)
    : process(Launch{NELMPM_PROGRAM, std::move(arguments)}) {}

NelmpmProcess::~NelmpmProcess() {
  if (process.isRunning()) {
    signal(SIGTERM);
    EXPECT_TRUE(waitUntil([this] { return !process.isRunning(); }) && process.exitStatus() == 0)
        << process.report();
  }
}

bool NelmpmProcess::isUp() {
  return waitUntil([this] {
    socketName = socketFileName(publishedPort(), pid());
    return exists(socketName);
  });
}

std::string NelmpmProcess::errors() {
  process.drain();
  return process.errors();
}

std::string NelmpmProcess::output() {
  process.drain();
  return process.output();
}

bool NelmpmProcess::complains(const std::string& text) {
  return waitUntil([&] { return errors().find(text) != std::string::npos; });
}

int NelmpmProcess::complaintCount() {
  const std::string text = errors();
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}
