#pragma once

#include "frames/recording.h"
#include "postmaster/options.h"
#include "postmaster/witness.h"

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace postmaster {

/// One message of a recording that is played or awaited.
struct ReplayStep {
  std::chrono::milliseconds at{};     ///< in the recording
  std::chrono::milliseconds delay{};  ///< since the step before
  Message message;
  bool isOfUi = false;  ///< the window is to send it
};

/// What a recording says of the dialogue with the user interface, from the moment that this was
/// ready up to that in which it left.
struct ReplayScript {
  std::vector<ReplayStep> steps;
  std::set<int> tools;  ///< types of those that are played
};
ReplayScript scriptOf(const std::vector<frames::RecordedFrame>& recording);

/// Plays a recording to the user interface in the place of all other tools, and compares what comes
/// from it with what is recorded.
///
/// A message of the window is awaited where it is recorded, and what follows it keeps its distance
/// from the one that came. An answer is awaited without limit: a dialog is open until somebody ends
/// it. Anything that the user does unasked, such as a command, is awaited no longer than it took in
/// the recording, and the patience; another command in its place may be one that came besides.
///
/// What comes before its turn waits for it. Differences are complained of, a line each.
class Replay : public Witness {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  using Clock = std::function<TimePoint()>;

  Replay(ReplayScript played, const ReplayOptions& asked, Complaints& complaintsOut,
         Clock timeSource = std::chrono::steady_clock::now);

  /// Takes what comes from the window; its 9001 starts the replay.
  void saw(const Message& message, std::string_view refusal) override;

  /// The next message that is to go to the window now; null when none is.
  Message next();

  /// When to ask for the next one at the latest; nothing while only the window can go on.
  std::optional<TimePoint> deadline() const;

  /// To be called at the end: says what is left. Whether the window did all as recorded.
  bool conclude();

 private:
  using Queue = std::deque<Message>;

  bool isOver() const { return at == script.steps.size(); }
  TimePoint dueTime(const ReplayStep& step) const;
  bool passUiStep(const ReplayStep& step);
  bool takeEqual(Queue& queue, const Message& awaited);
  void goOn(TimePoint when);
  void finish();
  void reportDifference(const std::string& text);
  void reportExtra(const Message& message);
  bool isLate(const Message& message);
  Queue& queueOf(const Message& message);

  ReplayScript script;
  ReplayOptions options;
  Complaints& complaints;
  Clock clock;
  std::optional<TimePoint> reached;  ///< when the last step was done; nothing before the start
  std::size_t at = 0;                ///< the step that is next
  Queue answers;                     ///< that came before their turn
  Queue unasked;                     ///< the same of all else
  Queue missed;                      ///< what was not awaited any longer
  int differences = 0;
  bool isFinished = false;
  bool endIsPlayed = false;  ///< the window was told to leave
};

}  // namespace postmaster
