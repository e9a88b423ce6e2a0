#include "postmaster/tester_watch.h"

#include "link/message_numbers.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace postmaster {

void TesterWatch::saw(const Message& message, std::string_view refusal) {
  const FrameHeader& header = message->header;
  if (header.sender == NELKVUI && header.tag == MSG_UI_COMMAND && refusal.empty() &&
      !waitingSince) {
    waitingSince = clock();
  }
  if (header.sender == NELKV) {
    waitingSince.reset();
    isBusy = header.tag == MSG_T_BUSY || (isBusy && header.tag != MSG_T_IDLE);
    endsSession = endsSession || header.tag == MSG_T_EXIT || header.tag == MSG_T_EXIT_CONFIRM;
  }
  if (header.sender == NELMPM && header.dest == NELKV && header.tag == MSG_CONNECT_OK) {
    waitingSince.reset();
    isBusy = false;
    endsSession = false;
  }
}

std::optional<TesterWatch::TimePoint> TesterWatch::deadline() const {
  const bool isWaiting = waitingSince && !isBusy && patienceOfUser.count() > 0;
  return isWaiting ? std::optional(*waitingSince + patienceOfUser) : std::nullopt;
}

void ButtonKeeper::saw(const Message& message, std::string_view /*refusal*/) {
  if (message->header.tag != MSG_T_SYSTEM_OPENED) {
    return;
  }
  const std::string folder = frames::parametersOf(*message).text(0);
  namespace fs = std::filesystem;
  const fs::path file = fs::path(folder) / "nelkv.btn";
  std::error_code error;
  // What its user cannot change, a shipped set say, is not lost.
  if (!folders.insert(folder).second || !fs::is_regular_file(file, error) ||
      access(file.c_str(), W_OK) != 0) {
    return;
  }
  fs::copy_file(file, file.string() + "~", fs::copy_options::overwrite_existing, error);
  if (error) {
    complaints.say("cannot copy " + file.string() + " to " + file.filename().string() +
                   "~: " + error.message());
  }
}

}  // namespace postmaster
