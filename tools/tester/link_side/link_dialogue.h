#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tester/commands/dialogue.h"
#include "tester/link_side/outgoing_message.h"
#include "tester/link_side/text_batch.h"

namespace tester {

/// The dialogue over the link. Messages wait in a queue, in their order, until pump() sends them;
/// nothing here blocks. While a run goes on its text is sent in batches at a bounded rate, and the
/// run pauses while a batch waits, so the text is never lost and the queue never grows. A long
/// list goes as a run of messages, all but the last of which say that more follow.
class LinkDialogue : public Dialogue {
 public:
  using Clock = std::chrono::steady_clock;

  /// Shortest time between two text messages of a run, so at most 320 kilobytes a second: more
  /// than anybody reads, less than would keep a log from its other work.
  static constexpr Clock::duration kTextPeriod = std::chrono::milliseconds(50);

  enum class SendResult {
    kSent,
    kLater,    ///< the link takes none at the moment
    kRefused,  ///< it will never take this one
  };
  using Sender = std::function<SendResult(const OutgoingMessage&)>;

  bool acceptsTrace() const override { return queue.empty(); }
  void confirm(const std::string& command) override;
  void showBusy(bool isBusy) override;
  void showTitle(const std::string& title) override;
  void showSystem(const std::string& directory, const std::string& name) override;
  void askYesNo(const std::string& caption, const std::string& text) override;
  void showError(const std::string& caption, const std::string& text) override;
  void showWarning(const std::string& caption, const std::string& text) override;
  void askText(const std::string& text) override;
  void askNumber(const std::string& text) override;
  void askNumberInRange(const std::string& text, const NumberRange& range) override;
  void askChoice(const std::string& text, const std::vector<std::string>& items) override;
  void askBits(const std::string& text, const std::vector<std::string>& items) override;
  void askParameters(const std::string& text, const std::vector<std::string>& definitions) override;
  void askFile(const FileFilter& filter, const std::string& directory) override;
  void askDirectory(const std::string& directory) override;
  void offerSearch(const SearchLists& lists) override;
  void askToExit() override { exitIsDue = true; }

  /// Without a user interface nothing is kept or sent. A new one knows no title yet.
  void setUserPresent(bool isPresent);
  bool isUserPresent() const { return userPresent; }

  /// Sends what is due at `now`. What the link refuses is left out, with the rest of its list.
  void pump(Clock::time_point now, const Sender& send);

  /// Whether the link has refused something that is waited for; true once.
  bool takeRefusal() { return std::exchange(refused, false); }

  /// Whether messages wait that only the link holds up.
  bool isBlocked() const { return blocked; }

  /// When the next text of a run may go out; only a bound on how long it makes sense to sleep.
  Clock::time_point nextTextTime() const { return nextText; }

  /// The user interface was asked to leave, and no command came since.
  bool isExitAsked() const { return exitAsked; }

 private:
  void show(const std::string& lines) override;
  void enqueue(int tag, std::vector<OutgoingParameter> parameters = {});
  void enqueueAfterText(int tag, std::vector<OutgoingParameter> parameters);
  void enqueueList(int tag, const std::string& text, const std::vector<std::string>& items);
  void closeBatch();
  void popFirst();
  void dropFirst();

  TextBatch batch;
  std::deque<OutgoingMessage> queue;
  std::string lastTitle;
  bool userPresent = true;
  bool busy = false;
  bool blocked = false;
  bool refused = false;
  bool exitIsDue = false;
  bool exitAsked = false;
  std::size_t unlimited = 0;  ///< messages at the front from before the run, which do not wait
  Clock::time_point nextText{};
};

}  // namespace tester
