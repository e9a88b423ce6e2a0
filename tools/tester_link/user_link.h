#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// What every tester has in common on its side of the link.
namespace tester_link {

using Items = std::vector<std::string>;

enum class AnswerKind {
  kYes,
  kNo,
  kAcknowledged,  ///< an error box was read and closed
  kText,
  kNumber,  ///< digits, or kAllNumbers
  kChoice,
  kBits,
  kParameters,
  kFile,
  kDirectory,
  kCancelled,
  kWrong,    ///< none of what could be answered: `text` says so in a sentence
  kTooLong,  ///< the question is too long for a message and was never asked
};

/// What the user answered.
struct Answer {
  AnswerKind kind = AnswerKind::kCancelled;
  std::string text = {};  ///< of all kinds that have one; as the user gave it
  Items items = {};       ///< of kBits
  std::size_t index = 0;  ///< of kChoice: of the item that was chosen
};

/// Goes on after the answer; may ask again.
using AnswerHandler = std::function<void(const Answer&)>;

inline constexpr char kAllNumbers[] = "*";

/// Limits of a number that is asked for.
struct NumberRange {
  int low = 0;
  int high = 0;
  bool isAllAllowed = false;  ///< the user may answer kAllNumbers instead of a number
};

/// Which files a file question shows.
struct FileFilter {
  std::string title;
  std::string extension;  ///< without a point
  std::string label;
};

/// Names that the user may want to search his log for.
struct SearchLists {
  Items processes;
  Items signals;
  Items timers;
};

using OutgoingParameter = std::variant<std::string, std::int32_t, Items>;

/// One message to the user interface, with the parameters of its row in the message table.
struct OutgoingMessage {
  int tag = 0;
  std::vector<OutgoingParameter> parameters = {};
};

/// The user as a tester sees him: a log to print to, signs of the tester's state, and questions.
/// Messages wait in a queue, in their order, until pump() sends them; nothing here blocks. While
/// the tester is busy its text is sent in batches at a bounded rate; a tester that prints only
/// while acceptsText() loses nothing and lets nothing pile up.
///
/// One question is open at a time, further ones wait for its answer; the handler of each gets one
/// answer, unless the user interface leaves before: then it is forgotten.
class UserLink {
 public:
  using Clock = std::chrono::steady_clock;

  /// Bytes of one text: nearly what a frame holds, since the user interface takes frame by frame.
  static constexpr std::size_t kMaxText = 16000;
  /// Shortest time between two texts of a busy tester, so at most 320 kilobytes a second: more
  /// than anybody reads, less than would keep a log from its other work.
  static constexpr Clock::duration kTextPeriod = std::chrono::milliseconds(50);

  /// Has all text paced, also that of a tester that is not busy: `period` between two texts, but
  /// for the first few after a pause.
  void paceAllText(Clock::duration period);

  /// Appends whole lines, each with its end, to the user's log. They go out in texts of whole
  /// lines; only a line that is longer than a text is cut.
  void print(const std::string& lines);
  /// Whether what a busy tester prints can be taken now.
  bool acceptsText() const { return queue.empty(); }
  /// Bytes of text that have not gone out.
  std::size_t waitingText() const { return text.size() + queuedText; }

  /// Ends a command, which goes into the user's history, after all text so far. The user interface
  /// releases the waiting pieces of a command line only when the command had some text.
  void confirm(const std::string& command);
  void showBusy(bool isBusy);
  /// What the window's title shows besides the program's name.
  void showTitle(const std::string& title);
  /// Names the present system and the directory in which the user works on it.
  void showSystem(const std::string& directory, const std::string& name);
  /// A box that is not waited for.
  void showWarning(const std::string& caption, const std::string& text);
  /// Asks the user interface to leave when the present command is confirmed. Its user may refuse
  /// where he is to be asked to save before.
  enum class Leave { kAfterSaving, kAtOnce };
  void askToLeave(Leave how) { leave = how; }
  /// The user interface was asked to leave by the last command.
  bool isLeaving() const { return leaving; }

  // Questions (questions.cpp). What can be checked of an answer is, so that a handler gets the kind
  // of its question, or kCancelled, kWrong or kTooLong.

  bool isAsking() const { return question.has_value() || !waitingQuestions.empty(); }
  /// Answered by kYes or kNo. `caption` chooses the icon, see the user interface's kPageCaption.
  void askYesNo(const std::string& caption, const std::string& text, AnswerHandler handler);
  /// Answered by kAcknowledged.
  void showError(const std::string& caption, const std::string& text, AnswerHandler handler);
  void askText(const std::string& text, AnswerHandler handler);
  /// A text that begins with "Instance number (*)" is answered by kAllNumbers without the user.
  void askNumber(const std::string& text, AnswerHandler handler);
  void askNumberInRange(const std::string& text, const NumberRange& range, AnswerHandler handler);
  /// One of the items, however many. Without items a notice is shown and the question cancelled.
  void askChoice(const std::string& text, const Items& items, AnswerHandler handler);
  /// Any of the items.
  void askBits(const std::string& text, const Items& items, AnswerHandler handler);
  /// The parameters of a signal, of which there is at least one.
  void askParameters(const std::string& text, const Items& definitions, AnswerHandler handler);
  void askFile(const FileFilter& filter, const std::string& directory, AnswerHandler handler);
  /// The user interface leaves the directory out that it is in.
  void askDirectory(const std::string& directory, AnswerHandler handler);
  /// Offers names to search for, after the answer to an open question. Nobody answers.
  void offerSearch(SearchLists lists) { dueSearch = std::move(lists); }

  /// Hands an answer to the open question; one that fits none is ignored.
  void takeAnswer(const Answer& reply);

  // For the one who connects the link.

  /// A user interface has come, which knows of no title and no question, or has left: without one
  /// nothing is kept, asked or sent.
  void setUserPresent(bool isPresent);
  bool isUserPresent() const { return userPresent; }

  enum class SendResult {
    kSent,
    kLater,    ///< the link takes none at the moment
    kRefused,  ///< it will never take this one
  };
  using Sender = std::function<SendResult(const OutgoingMessage&)>;

  /// Sends what is due at `now`. What the link refuses is left out, with the rest of its list.
  void pump(Clock::time_point now, const Sender& send);
  /// Whether messages wait that only the link holds up.
  bool isBlocked() const { return blocked; }
  /// Whether text waits only for nextTextTime(), although the tester may have nothing to do.
  bool isPacing() const { return pacesAll && !blocked && (!queue.empty() || !text.empty()); }
  /// When the next text of a busy tester may go out.
  Clock::time_point nextTextTime() const { return nextText; }

 private:
  /// Makes of an answer that came what the handler gets.
  using Check = std::function<Answer(const Answer&)>;
  struct Question {
    std::vector<OutgoingMessage> messages;
    std::vector<AnswerKind> kinds;
    AnswerHandler handler;
    Check check = {};
  };

  void enqueue(int tag, std::vector<OutgoingParameter> parameters = {});
  void enqueueText(std::string lines);
  void closeText();
  void sendDue(Clock::time_point now, const Sender& send);
  void popFirst();
  void dropFirst();
  bool tellRefusal();
  void ask(Question asked);
  void askWaiting();
  void answer(const Answer& reply);
  void offerDueSearch();

  std::string text;  ///< printed, not queued yet
  std::deque<OutgoingMessage> queue;
  std::size_t queuedText = 0;  ///< bytes of text in the queue
  std::optional<Question> question;
  std::deque<Question> waitingQuestions;
  std::optional<SearchLists> dueSearch;
  std::string lastTitle;
  std::optional<Leave> leave;
  bool leaving = false;
  bool userPresent = true;
  bool busy = false;
  bool blocked = false;
  bool refused = false;
  bool searchIsOffered = false;  ///< and may still be cancelled
  std::size_t unlimited = 0;     ///< messages at the front from before the work, which do not wait
  Clock::duration textPeriod = kTextPeriod;
  bool pacesAll = false;
  Clock::time_point nextText{};
};

}  // namespace tester_link
