#include "tests/e2e/postmaster/nelmpm_process.h"

#include "tests/e2e/postmaster/test_client.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::string makeFolder() {
  std::string name = "/tmp/nelmpm_test_XXXXXX";
  return mkdtemp(name.data()) != nullptr ? name : "/tmp";
}

}  // namespace

int publishedPort() {
  std::ifstream file(kPortFile);
  int port = 0;
  file >> port;
  return port;
}

bool exists(const std::string& path) {
  return std::filesystem::symlink_status(path).type() != std::filesystem::file_type::not_found;
}

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

NelmpmProcess::NelmpmProcess(std::vector<std::string> arguments)
    : folder(makeFolder()), outputFile(folder + "/output"), errorFile(folder + "/errors") {
  arguments.insert(arguments.begin(), NELMPM_PROGRAM);
  std::vector<char*> words;
  std::transform(arguments.begin(), arguments.end(), std::back_inserter(words),
                 [](std::string& word) { return word.data(); });
  words.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_APPEND;
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, outputFile.c_str(), flags, 0600);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, errorFile.c_str(), flags, 0600);
  posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
  posix_spawn(&child, NELMPM_PROGRAM, &files, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&files);
}

NelmpmProcess::~NelmpmProcess() {
  if (child > 0) {
    signal(SIGTERM);
    EXPECT_EQ(exitStatus(), 0) << errors();
  }
  if (child > 0) {
    signal(SIGKILL);
    waitpid(child, nullptr, 0);
  }
  std::filesystem::remove_all(folder);
}

bool NelmpmProcess::isUp() {
  return waitUntil([this] {
    socketName =
        "/tmp/.nel.tessil." + std::to_string(publishedPort()) + "." + std::to_string(child);
    return exists(socketName);
  });
}

std::string NelmpmProcess::socketPath() const {
  return socketName;
}

bool NelmpmProcess::complains(const std::string& text) const {
  return waitUntil([&] { return errors().find(text) != std::string::npos; });
}

int NelmpmProcess::complaintCount() const {
  const std::string text = errors();
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

void NelmpmProcess::signal(int number) const {
  kill(child, number);
}

int NelmpmProcess::exitStatus() {
  int status = 0;
  if (!waitUntil([&] { return waitpid(child, &status, WNOHANG) == child; })) {
    return -1;
  }
  child = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
