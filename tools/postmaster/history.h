#pragma once

#include "postmaster/witness.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace postmaster {

/// What is kept of the commands of earlier runs: so many of the newest, and no more bytes than the
/// window can be handed at once.
inline constexpr std::size_t kMaxHistoryCommands = 500;
inline constexpr std::size_t kMaxHistoryBytes = std::size_t{1} << 20;

/// The commands that are kept of a history's contents, a line each, oldest first: neighbours that
/// are equal once, and none that is empty or too long for a message.
std::vector<std::string> keptCommands(std::string_view contents);

/// The commands that the tester has confirmed (2002), kept from run to run in a file, a line each.
/// Each is appended as it comes, to whatever file has the name then, so that several runs may share
/// one; the file is cut when it is opened, by another one that takes its place.
class History : public Witness {
 public:
  explicit History(Complaints& complaintsOut) : complaints(complaintsOut) {}

  /// Reads `fileName` and cuts it; a missing file is an empty one. Returns an empty text or a line
  /// that says why it cannot be used.
  std::string open(const std::string& fileName);

  /// The kept commands as messages to the user interface, oldest first. The Postmaster is their
  /// sender, so that they are not kept again.
  std::vector<Message> messages() const;

  void saw(const Message& message, std::string_view refusal) override;

 private:
  void append(const std::string& command);

  Complaints& complaints;
  std::string name;
  std::vector<std::string> commands;  ///< of earlier runs
  std::string newest;
  bool isBroken = false;  ///< it could not be written
};

}  // namespace postmaster
