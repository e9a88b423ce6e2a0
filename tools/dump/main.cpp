// Entry of the decoder of recordings: from a descriptor to standard output, what is shown of each
// piece that came before the next one is waited for.
#include "dump/dump.h"
#include "support/descriptor.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <utility>

namespace {

int fail(const std::string& what) {
  std::cerr << "nel-dump: " << what << ": " << std::strerror(errno) << '\n';
  return dump::kExitFailure;
}

/// Each line of `faults`, by the name of this program.
void tell(const std::string& faults) {
  for (std::size_t at = 0; at < faults.size();) {
    const std::size_t end = faults.find('\n', at) + 1;
    std::cerr << "nel-dump: " << faults.substr(at, end - at);
    at = end;
  }
}

/// Writes to standard output; false, with errno, when it takes no more.
bool writeOut(std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
    if (count < 0 && errno != EINTR) {
      return false;
    }
    text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
  }
  return true;
}

int run(dump::Options options) {
  constexpr std::size_t kReadBytes = std::size_t{64} * 1024;
  const std::string name =
      std::exchange(options.file, options.file == "-" ? "(standard input)" : options.file);
  const UniqueDescriptor input(name == "-" ? dup(STDIN_FILENO)
                                           : open(name.c_str(), O_RDONLY | O_CLOEXEC));
  if (!input.isOpen()) {
    return fail("cannot read " + options.file);
  }
  const std::string file = options.file;
  dump::Dump dump(std::move(options));
  std::array<char, kReadBytes> bytes;
  int status = dump::kExitGood;
  ssize_t count = 1;
  while (count > 0 && dump.isReadable()) {
    count = read(input.get(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) {
      count = 1;
      continue;
    }
    if (count < 0) {
      return fail("cannot read " + file);
    }
    std::string faults;
    const std::string_view piece(bytes.data(), static_cast<std::size_t>(count));
    const std::string shown = count > 0 ? dump.take(piece, faults) : dump.finish(faults);
    status = faults.empty() ? status : dump::kExitFailure;
    tell(faults);
    if (!writeOut(shown)) {
      return errno == EPIPE ? status : fail("cannot write");
    }
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  dump::CommandLine line = dump::parseCommandLine(argc, argv);
  if (!line.options) {
    (line.status == dump::kExitGood ? std::cout : std::cerr) << line.text;
    return line.status;
  }
  // Who reads the output may have had enough.
  std::signal(SIGPIPE, SIG_IGN);
  return run(std::move(*line.options));
}
