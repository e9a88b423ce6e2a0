// Measures what only the window of this project does, as its Postmaster, its tester and its user at
// once. Prints lines of a name and a number.
//
//   window_probe flood LINES NELKVUI         flood_ms: each line a message, until all are shown
//   window_probe usable LINES DELAY NELKVUI  typed_ms_DELAY: the longest time from a line typed in
//                                            the middle of a flood until its command leaves;
//                                            typed_tries_DELAY; flood_ms_DELAY
//   window_probe answer NELKVUI              answer_ms, answer_worst_ms: question in, answer out
//   window_probe prompt NELKVUI              replies_prompt_first, replies_prompt_again
//
// DELAY is the time in milliseconds that everything between the window and its display takes, one
// way.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "benchmarks/flood.h"
#include "benchmarks/probe_main.h"
#include "benchmarks/subject.h"
#include "benchmarks/x_proxy.h"

#include <X11/Xlib.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = Subject::Clock;

constexpr seconds kAnswerPatience{30};

double inMilliseconds(Clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

/// The window, its user and its tester.
class Session {
 public:
  Session(const std::string& program, const std::string& display)
      : subject(watcher, {kWindowTitle, kWindowProcess, {program}}, display) {
    subject.pause(kStartTail);
  }

  BenchPostmaster& tester() { return subject.postmaster(); }

  /// Types a line and returns when the last key went down.
  Clock::time_point type(const std::string& line) {
    watcher.type(line);
    const auto pressed = Clock::now();
    watcher.type("\n");
    return pressed;
  }

  /// Waits until what the user types arrives as commands.
  void awaitUsable() {
    constexpr milliseconds kAgain{500};
    for (const auto end = Clock::now() + kAnswerPatience; Clock::now() < end;) {
      type("ready");
      subject.pause(kAgain);
      if (tester().take(MSG_UI_COMMAND, "ready")) {
        return;
      }
    }
    throw std::runtime_error("the window takes no commands");
  }

  void sendQuestion() { tester().send(MSG_T_ASK_RANGE, {"Korvane Select", "Number", 1, 1}); }

  /// From the question's sending to its answer.
  Clock::duration answerTime() {
    const auto start = Clock::now();
    sendQuestion();
    return tester().await(MSG_UI_VALUE, kAnswerPatience) - start;
  }

  void queueFlood(int lines) {
    std::string frames;
    for (int i = 0; i < lines; ++i) {
      frames += BenchPostmaster::frame(MSG_T_TEXT, {floodLine(i)});
    }
    tester().sendFrames(frames);
    sendQuestion();
  }

  /// Asks for a text, answers, and waits for the answer.
  void runPrompt() {
    // Keys typed before a prompt has had the focus for a while do not answer it.
    constexpr milliseconds kReadingTime{600};
    tester().send(MSG_T_ASK_STRING, {"Name", "Name of the process"});
    Window prompt = 0;
    for (const auto end = Clock::now() + kAnswerPatience; prompt == 0;) {
      if (Clock::now() > end) {
        throw std::runtime_error("no prompt came");
      }
      subject.pause(kLookEvery);
      prompt = watcher.find("Korvane Select");
    }
    watcher.awaitStill(prompt, subject.pauser(), kAnswerPatience);
    subject.pause(kReadingTime);
    type("a");
    tester().await(MSG_UI_STRING, kAnswerPatience);
    subject.settle();
  }

  Watcher watcher;
  Subject subject;
};

void measureFlood(const Words& words) {
  Session session(words.at(2), ownDisplay());
  const Window log = session.watcher.largestInside(session.subject.window());
  session.queueFlood(std::stoi(words.at(1)));
  const auto start = Clock::now();
  session.tester().await(MSG_UI_VALUE, kFloodPatience);
  const auto end = session.watcher.awaitStill(log, session.subject.pauser(), kFloodPatience);
  std::printf("flood_ms %.0f\n", inMilliseconds(end - start));
}

void measureUsable(const Words& words) {
  constexpr milliseconds kBetweenLines{240};
  const std::string& delay = words.at(2);
  XProxy proxy(ownDisplay());
  Session session(words.at(3), proxy.display());
  session.awaitUsable();
  proxy.setDelay(milliseconds(std::stoi(delay)));
  session.queueFlood(std::stoi(words.at(1)));
  const auto start = Clock::now();
  Clock::duration worst{};
  int tries = 0;
  session.subject.pause(kBetweenLines);
  while (!session.tester().take(MSG_UI_VALUE)) {
    const std::string command = "c" + std::to_string(tries);
    const auto pressed = session.type(command);
    const auto came = session.tester().await(MSG_UI_COMMAND, kFloodPatience, command);
    worst = std::max(worst, came - pressed);
    ++tries;
    session.subject.pause(kBetweenLines);
  }
  std::printf("typed_ms_%s %.1f\ntyped_tries_%s %d\nflood_ms_%s %.0f\n", delay.c_str(),
              inMilliseconds(worst), delay.c_str(), tries, delay.c_str(),
              inMilliseconds(session.tester().takenAt() - start));
}

void measureAnswer(const Words& words) {
  constexpr int kQuestions = 100;
  constexpr milliseconds kBetween{37};  // no multiple of any timer's period
  Session session(words.at(1), ownDisplay());
  std::vector<double> times;
  for (int i = 0; i < kQuestions; ++i) {
    session.subject.pause(kBetween);
    times.push_back(inMilliseconds(session.answerTime()));
  }
  std::sort(times.begin(), times.end());
  std::printf("answer_ms %.2f\nanswer_worst_ms %.2f\n", times[kQuestions / 2], times.back());
}

void measurePrompt(const Words& words) {
  const XProxy proxy(ownDisplay());
  Session session(words.at(1), proxy.display());
  session.awaitUsable();
  session.subject.settle();
  for (const char* const name : {"first", "again"}) {
    const std::uint64_t before = proxy.replies();
    session.runPrompt();
    std::printf("replies_prompt_%s %llu\n", name,
                static_cast<unsigned long long>(proxy.replies() - before));
  }
}

}  // namespace

int main(int argc, char** argv) {
  return runProbe({{"flood", measureFlood},
                   {"usable", measureUsable},
                   {"answer", measureAnswer},
                   {"prompt", measurePrompt}},
                  argc, argv);
}
