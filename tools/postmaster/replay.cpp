#include "postmaster/replay.h"

#include "link/message_numbers.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace postmaster {

namespace {

/// Keeps sums of times in bounds.
constexpr std::chrono::hours kLongestWait{24 * 365};

/// What the window sends by itself or by its user's wish, not as an answer.
bool isUnasked(const Message& message) {
  const int tag = message->header.tag;
  return tag == MSG_UI_COMMAND || tag == MSG_UI_FIND || tag == MSG_HELP_REQUEST ||
         tag == MSG_SHOW_ORGANIZER;
}

bool tellsToLeave(int tag) {
  return tag == MSG_T_EXIT || tag == MSG_T_EXIT_CONFIRM;
}

/// What the window takes no notice of.
bool isNewsOfTools(int tag) {
  return tag == MSG_TOOL_STARTED || tag == MSG_TOOL_READY || tag == MSG_TOOL_ACTIVE;
}

bool areEqual(const Message& one, const Message& other) {
  return one->text == other->text;
}

std::string described(const Message& message) {
  return describeMessage(*message, frames::Style::kFull);
}

std::string secondsText(std::chrono::milliseconds time) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%lld.%03d s",
                static_cast<long long>(time.count() / 1000), static_cast<int>(time.count() % 1000));
  return text.data();
}

}  // namespace

ReplayScript scriptOf(const std::vector<frames::RecordedFrame>& recording) {
  ReplayScript script{{}, {NELKV}};
  std::chrono::milliseconds last{0};
  for (const frames::RecordedFrame& frame : recording) {
    const FrameHeader& header = frame.message->header;
    const bool isOfUi = header.sender == NELKVUI;
    if (isOfUi && (header.tag == MSG_UI_EXIT || header.tag == MSG_DISCONNECT)) {
      break;
    }
    if (header.sender == NELMPM) {
      // What was undirected before did not reach the window.
      if (header.tag == MSG_CONNECT_OK && header.dest == NELKVUI) {
        script.steps.clear();
      }
      continue;
    }
    if (isOfUi && header.tag == MSG_TOOL_READY) {
      last = frame.time;
    }
    const bool isForOthers = isOfUi ? header.dest == NELMPM : !frames::goesToUi(header);
    if (isForOthers || isNewsOfTools(header.tag)) {
      continue;
    }
    script.tools.insert(isOfUi ? header.dest : header.sender);
    const auto delay = std::max(frame.time - last, std::chrono::milliseconds{0});
    script.steps.push_back({frame.time, delay, frame.message, isOfUi});
    last = frame.time;
  }
  return script;
}

Replay::Replay(ReplayScript played, const ReplayOptions& asked, Complaints& complaintsOut,
               Clock timeSource)
    : script(std::move(played)),
      options(asked),
      complaints(complaintsOut),
      clock(std::move(timeSource)) {}

void Replay::saw(const Message& message, std::string_view refusal) {
  const FrameHeader& header = message->header;
  if (header.sender != NELKVUI || !refusal.empty()) {
    return;
  }
  if (header.tag == MSG_TOOL_READY && !reached) {
    reached = clock();
    return;
  }
  const bool isOfPostmaster = header.kind == kFrameDirected && header.dest == NELMPM;
  const bool isRecorded =
      !isOfPostmaster && !isNewsOfTools(header.tag) && header.tag != MSG_UI_EXIT;
  if (reached && isRecorded && !isFinished) {
    queueOf(message).push_back(message);
  }
}

Message Replay::next() {
  while (reached && !isOver()) {
    const ReplayStep& step = script.steps[at];
    if (step.isOfUi) {
      if (!passUiStep(step)) {
        return nullptr;
      }
      continue;
    }
    const TimePoint due = dueTime(step);
    if (clock() < due) {
      return nullptr;
    }
    goOn(due);
    endIsPlayed = endIsPlayed || tellsToLeave(step.message->header.tag);
    return step.message;
  }
  if (!reached || isFinished) {
    return nullptr;
  }
  finish();
  return options.closes && !endIsPlayed ? frames::makeMessage(NELKV, NELKVUI, MSG_T_EXIT) : nullptr;
}

/// Whether the step, which is the window's, is done with.
bool Replay::passUiStep(const ReplayStep& step) {
  Queue& queue = queueOf(step.message);
  if (takeEqual(queue, step.message)) {
    goOn(clock());
    return true;
  }
  const bool isAnswer = !isUnasked(step.message);
  if ((isAnswer && queue.empty()) || (!isAnswer && clock() < dueTime(step))) {
    return false;
  }
  const std::string when = "at " + secondsText(step.at);
  if (queue.empty()) {
    reportDifference(when + " did not come: " + described(step.message));
    missed.push_back(step.message);
  } else {
    reportDifference(when + " came: " + described(queue.front()) +
                     ", recorded is: " + described(step.message));
    queue.pop_front();
  }
  goOn(isAnswer ? clock() : dueTime(step));
  return true;
}

/// Takes the message that is awaited, if it has come. Those that came before it are no others.
bool Replay::takeEqual(Queue& queue, const Message& awaited) {
  const auto equal = std::find_if(queue.begin(), queue.end(), [&awaited](const Message& came) {
    return areEqual(came, awaited);
  });
  if (equal == queue.end()) {
    std::erase_if(queue, [this](const Message& came) { return isLate(came); });
    return false;
  }
  std::for_each(queue.begin(), equal, [this](const Message& extra) { reportExtra(extra); });
  queue.erase(queue.begin(), equal + 1);
  return true;
}

/// Whether the message was awaited in vain before, and is told of so far.
bool Replay::isLate(const Message& message) {
  const auto isSame = [&message](const Message& other) { return areEqual(other, message); };
  const auto found = std::find_if(missed.begin(), missed.end(), isSame);
  if (found == missed.end()) {
    return false;
  }
  missed.erase(found);
  return true;
}

void Replay::goOn(TimePoint when) {
  reached = when;
  ++at;
}

Replay::TimePoint Replay::dueTime(const ReplayStep& step) const {
  using Duration = std::chrono::duration<double, std::milli>;
  const Duration delay = options.speed > 0 ? Duration(step.delay) / options.speed : Duration(0);
  const Duration patience = step.isOfUi ? Duration(options.patience) : Duration(0);
  return *reached + std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                        std::min(delay + patience, Duration(kLongestWait)));
}

std::optional<Replay::TimePoint> Replay::deadline() const {
  if (!reached || isFinished) {
    return std::nullopt;
  }
  if (isOver()) {
    return *reached;
  }
  const ReplayStep& step = script.steps[at];
  return step.isOfUi && !isUnasked(step.message) ? std::nullopt : std::optional(dueTime(step));
}

/// Says how the replay went, once.
void Replay::finish() {
  isFinished = true;
  for (Queue* queue : {&answers, &unasked}) {
    for (const Message& extra : std::exchange(*queue, {})) {
      reportExtra(extra);
    }
  }
  const std::string count =
      std::to_string(differences) + (differences == 1 ? " difference" : " differences");
  complaints.say("the replay has ended, " + (differences > 0 ? count : "as recorded"));
}

bool Replay::conclude() {
  if (isFinished) {
    return differences == 0;
  }
  const auto rest = script.steps.begin() + static_cast<std::ptrdiff_t>(at);
  const auto isOfUi = [](const ReplayStep& step) { return step.isOfUi; };
  const auto awaited = std::count_if(rest, script.steps.end(), isOfUi);
  if (!reached || awaited > 0 || (rest != script.steps.end() && !endIsPlayed)) {
    const auto time = rest != script.steps.end() ? rest->at : std::chrono::milliseconds{0};
    reportDifference("broken off at " + secondsText(time) + ", messages of the window that did " +
                     "not come: " + std::to_string(awaited));
  }
  finish();
  return differences == 0;
}

void Replay::reportDifference(const std::string& text) {
  ++differences;
  complaints.say("replay: " + text);
}

void Replay::reportExtra(const Message& message) {
  if (!isLate(message)) {
    reportDifference("not in the recording: " + described(message));
  }
}

Replay::Queue& Replay::queueOf(const Message& message) {
  return isUnasked(message) ? unasked : answers;
}

}  // namespace postmaster
