#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/message.h"
#include "tests/support/rendezvous.h"

/// Postmaster and partner of a window or a tester under measure, which is a child of this process:
/// a tester or a window. It accepts the child by itself. All waiting is in serve(), which moves
/// bytes both ways.
class BenchPostmaster {
 public:
  using Clock = std::chrono::steady_clock;

  /// Moves what can be moved, for at most `limit`; returns early when a message has come.
  void serve(std::chrono::milliseconds limit);
  /// Serves for just so long.
  void pause(std::chrono::milliseconds time);

  /// Sends a message of the partner, or of the Postmaster. It leaves while serving.
  void send(int tag, std::vector<Parameter> parameters);
  /// Sends frames made before.
  void sendFrames(const std::string& frames) { outgoing += frames; }
  /// Such a message in wire form.
  static std::string frame(int tag, std::vector<Parameter> parameters);

  /// Whether message `tag` has come; with a text, one with this first parameter. It is
  /// forgotten then, and takenAt() says when it came.
  bool take(int tag, const std::string& text = "");
  Clock::time_point takenAt() const { return taken; }

  /// Serves until message `tag` has come; throws when that takes longer than `limit`. Returns when
  /// it came.
  Clock::time_point await(int tag, std::chrono::seconds limit, const std::string& text = "");

  /// The texts of all messages `tag` that have come and were not taken; they are forgotten then.
  std::string takeTexts(int tag);

 private:
  struct Arrived {
    Message message;
    Clock::time_point when;
  };

  void readAll();
  void writeAll();
  void takeApart();

  Rendezvous rendezvous;
  UniqueDescriptor connection;
  std::string outgoing;
  std::size_t sent = 0;  ///< of `outgoing`
  std::string received;  ///< no whole frame
  std::vector<Arrived> arrived;
  Clock::time_point taken;
};
