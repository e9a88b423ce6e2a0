#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

#include "tests/support/rendezvous_folder.h"
#include "tests/support/unique_descriptor.h"
#include "tests/support/wire_text.h"

/// How a tool ended.
struct ToolEnd {
  int status = -1;     ///< exit status, 128 + n when signal n ended it
  std::string errors;  ///< all that it wrote to standard error
};

/// Runs `body` in a child process, its result being the exit status.
class ForkedTool {
 public:
  explicit ForkedTool(const std::function<int()>& body);
  ForkedTool(const ForkedTool&) = delete;
  ForkedTool& operator=(const ForkedTool&) = delete;
  ~ForkedTool();

  pid_t id() const { return processId; }

  /// Waits for the end, and kills what does not end.
  ToolEnd end();

 private:
  pid_t processId = -1;
  UniqueDescriptor errors;
};

/// Keeps the link's rendezvous files in a folder of their own. The test is the Postmaster, that
/// is, the parent of its forked tools.
class PrivateRendezvous {
 public:
  static constexpr int kPort = 4711;

  void writePortFile() const;
  void listen();
  /// Takes the tool's connection.
  void accept();
  void send(const std::string& bytes) const;

  /// Name of the socket that the tools of this process look for.
  static std::string socketName(int port = kPort);

 private:
  RendezvousFolder folder;
  UniqueDescriptor listener;
  UniqueDescriptor connection;
};

/// Reads one frame with its NUL, byte by byte; less at the end of the stream or of patience.
std::string readFrameText(int fd);
