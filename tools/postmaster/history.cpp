#include "postmaster/history.h"

#include "link/message_numbers.h"
#include "support/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>

namespace postmaster {

namespace {

constexpr mode_t kOwnerOnly = 0600;

/// Writes all of `text`; false, with errno, when that failed.
bool writeAll(int fd, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(fd, text.data(), text.size());
    if (count < 0 && errno != EINTR) {
      return false;
    }
    text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
  }
  return true;
}

/// The end of the file, as much as could be kept. Begins with a whole line.
std::string readEnd(int fd) {
  constexpr off_t kMost = 2 * static_cast<off_t>(kMaxHistoryBytes);
  const off_t start = std::max<off_t>(0, lseek(fd, 0, SEEK_END) - kMost);
  std::string contents(static_cast<std::size_t>(kMost), '\0');
  const ssize_t count = pread(fd, contents.data(), contents.size(), start);
  contents.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  if (start > 0) {
    contents.erase(0, std::min(contents.find('\n'), contents.size() - 1) + 1);
  }
  return contents;
}

/// Lets a new file with `contents` take the place of `fileName`. Returns 0 or an error number.
int replaceFile(const std::string& fileName, const struct stat& old, std::string_view contents) {
  std::error_code error;
  // What a symbolic link leads to is replaced, not the link.
  const std::filesystem::path resolved = std::filesystem::canonical(fileName, error);
  const std::string target = error ? fileName : resolved.string();
  const std::string beside = target + ".new" + std::to_string(getpid());
  UniqueDescriptor file(
      ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly));
  if (!file.isOpen()) {
    return errno;
  }
  const bool isDone = writeAll(file.get(), contents) && fchmod(file.get(), old.st_mode) == 0 &&
                      fsync(file.get()) == 0 && file.close() &&
                      rename(beside.c_str(), target.c_str()) == 0;
  const int failure = isDone ? 0 : errno;
  if (!isDone) {
    unlink(beside.c_str());
  }
  return failure;
}

}  // namespace

std::vector<std::string> keptCommands(std::string_view contents) {
  std::vector<std::string> newestFirst;
  std::size_t bytes = 0;
  while (!contents.empty() && newestFirst.size() < kMaxHistoryCommands) {
    if (contents.ends_with('\n')) {
      contents.remove_suffix(1);
    }
    const std::size_t start = contents.rfind('\n') + 1;
    std::string command(contents.substr(start));
    contents.remove_suffix(contents.size() - start);
    std::replace(command.begin(), command.end(), '\0', ' ');
    bytes += command.size();
    if (bytes > kMaxHistoryBytes) {
      break;
    }
    const bool isAgain = !newestFirst.empty() && newestFirst.back() == command;
    if (!command.empty() && command.size() <= kMaxSentText && !isAgain) {
      newestFirst.push_back(std::move(command));
    }
  }
  return {std::make_move_iterator(newestFirst.rbegin()),
          std::make_move_iterator(newestFirst.rend())};
}

std::string History::open(const std::string& fileName) {
  name = fileName;
  const std::string cannot = "cannot keep the history in " + name + ": ";
  // A pipe that nobody reads would be waited for.
  const UniqueDescriptor file(
      ::open(name.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, kOwnerOnly));
  struct stat status {};
  if (!file.isOpen() || fstat(file.get(), &status) != 0) {
    return cannot + std::strerror(errno);
  }
  if (!S_ISREG(status.st_mode)) {
    return cannot + "it is no regular file";
  }
  const std::string contents = readEnd(file.get());
  commands = keptCommands(contents);
  newest = commands.empty() ? "" : commands.back();
  std::string kept;
  for (const std::string& command : commands) {
    kept += command + '\n';
  }
  const bool isCut = kept != contents || static_cast<off_t>(kept.size()) != status.st_size;
  const int failure = isCut ? replaceFile(name, status, kept) : 0;
  if (failure != 0) {
    complaints.say("cannot cut the history " + name + ": " + std::strerror(failure));
  }
  return {};
}

std::vector<Message> History::messages() const {
  std::vector<Message> all;
  for (const std::string& command : commands) {
    all.push_back(ownMessage(MSG_T_PROMPT, NELKVUI, ToolMessage().setText(0, command.c_str())));
  }
  return all;
}

void History::saw(const Message& message, std::string_view refusal) {
  const FrameHeader& header = message->header;
  if (header.tag != MSG_T_PROMPT || header.sender == NELMPM || !frames::goesToUi(header) ||
      !refusal.empty()) {
    return;
  }
  const frames::Parameters parameters = frames::parametersOf(*message);
  std::string command = parameters.areGood() ? parameters.text(0) : "";
  std::replace(command.begin(), command.end(), '\0', ' ');
  // A command is one line.
  if (!command.empty() && command != newest && command.find('\n') == std::string::npos) {
    append(command);
    newest = std::move(command);
  }
}

void History::append(const std::string& command) {
  if (isBroken) {
    return;
  }
  const std::string line = (endsWithinLine(name) ? "\n" : "") + command + '\n';
  UniqueDescriptor file(
      ::open(name.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, kOwnerOnly));
  if (!file.isOpen() || !writeAll(file.get(), line) || !file.close()) {
    isBroken = true;
    complaints.say("the history cannot be written and ends here: " +
                   std::string(std::strerror(errno)));
  }
}

}  // namespace postmaster
