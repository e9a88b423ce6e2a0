// The lines are made apart from the file, so that what is written is a matter of frames alone. Text
// is written as it comes, also without its line end: who follows the file sees what the user sees.
#include "postmaster/transcript.h"

#include "link/message_numbers.h"
#include "support/version.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>

namespace postmaster {

namespace {

constexpr char kLogMark = '|';
constexpr char kContinuedMark = '+';
constexpr char kCommandMark = '>';
constexpr char kQuestionMark = '?';
constexpr char kAnswerMark = '=';
constexpr char kBoxMark = '!';
constexpr char kRemarkMark = '#';

/// A message that is told in a line of its own: these words, then its parameters.
struct TalkRow {
  int tag;
  char mark;
  std::string_view words;
};

constexpr std::array kTalk = {
    TalkRow{MSG_UI_OK, kAnswerMark, "OK"},
    TalkRow{MSG_UI_NOT_OK, kAnswerMark, "not OK"},
    TalkRow{MSG_UI_CANCEL, kAnswerMark, "cancelled"},
    TalkRow{MSG_UI_STRING, kAnswerMark, "string"},
    TalkRow{MSG_UI_VALUE, kAnswerMark, "number"},
    TalkRow{MSG_UI_LIST_CHOICE, kAnswerMark, "choice"},
    TalkRow{MSG_UI_EXIT, kRemarkMark, "the user closes the window"},
    TalkRow{MSG_UI_FILE, kAnswerMark, "file"},
    TalkRow{MSG_UI_BITS, kAnswerMark, "bits"},
    TalkRow{MSG_UI_DIRECTORY, kAnswerMark, "directory"},
    TalkRow{MSG_UI_ACK, kAnswerMark, "closed"},
    TalkRow{MSG_UI_SIGNAL_PARAM, kAnswerMark, "signal parameter"},
    TalkRow{MSG_T_QUESTION, kQuestionMark, "OK or not"},
    TalkRow{MSG_T_ASK_STRING, kQuestionMark, "string"},
    TalkRow{MSG_T_ASK_INTEGER, kQuestionMark, "number"},
    TalkRow{MSG_T_ASK_LIST, kQuestionMark, "choice"},
    TalkRow{MSG_T_ASK_FILE, kQuestionMark, "file"},
    TalkRow{MSG_T_ASK_BITS, kQuestionMark, "bits"},
    TalkRow{MSG_T_ASK_DIRECTORY, kQuestionMark, "directory"},
    TalkRow{MSG_T_ERROR_BOX, kBoxMark, "error"},
    TalkRow{MSG_T_WARNING_BOX, kBoxMark, "warning"},
    TalkRow{MSG_T_FIND, kQuestionMark, "find"},
    TalkRow{MSG_T_ASK_SIGNAL_PARAM, kQuestionMark, "signal parameter"},
    TalkRow{MSG_T_ASK_RANGE, kQuestionMark, "number in a range"},
    TalkRow{MSG_LINK_WARNING_BOX, kBoxMark, "warning"},
};

/// Null for a message that the transcript leaves out.
const TalkRow* talkRowOf(int tag) {
  const auto row =
      std::find_if(kTalk.begin(), kTalk.end(), [tag](const auto& each) { return each.tag == tag; });
  return row != kTalk.end() ? &*row : nullptr;
}

std::string withBlanksForNuls(std::string text) {
  std::replace(text.begin(), text.end(), '\0', ' ');
  return text;
}

std::string timeNow() {
  return formatTime(std::chrono::system_clock::now());
}

}  // namespace

std::string Transcript::sawAt(std::string_view time, const Envelope& message,
                              std::string_view refusal) {
  const FrameHeader& header = message.header;
  const bool isOfUser = header.sender == NELKVUI;
  if (!isOfUser && (!frames::goesToUi(header) || !refusal.empty())) {
    return {};
  }
  const bool isCommand = isOfUser && header.tag == MSG_UI_COMMAND;
  const bool isText = !isOfUser && header.tag == MSG_T_TEXT;
  const TalkRow* row = talkRowOf(header.tag);
  if (!isCommand && !isText && row == nullptr) {
    return {};
  }
  const frames::Parameters parameters = frames::parametersOf(message);
  if (!parameters.areGood()) {
    return remark(time, "malformed: " + messageLabel(header));
  }
  if (isText) {
    return logText(time, withBlanksForNuls(parameters.text(0)));
  }
  std::string told;
  if (isCommand) {
    told = line(time, kCommandMark, withBlanksForNuls(parameters.text(0)));
  } else {
    std::string words(row->words);
    for (const frames::Value& value : parameters.values) {
      words += ' ' + frames::describeValue(value, frames::Style::kRaw);
    }
    told = line(time, row->mark, words);
  }
  return refusal.empty() ? told : told + remark(time, "not passed on: " + std::string(refusal));
}

std::string Transcript::remark(std::string_view time, std::string_view text) {
  return line(time, kRemarkMark, text);
}

std::string Transcript::logText(std::string_view time, std::string_view text) {
  std::string told;
  while (!text.empty()) {
    if (!fileLineOpen) {
      told.append(time).append({' ', logLineOpen ? kContinuedMark : kLogMark, ' '});
    }
    const std::size_t end = text.find('\n');
    const std::size_t taken = std::min(end, text.size() - 1) + 1;
    told += text.substr(0, taken);
    text.remove_prefix(taken);
    logLineOpen = fileLineOpen = end == std::string_view::npos;
  }
  return told;
}

/// A text of several lines gives several.
std::string Transcript::line(std::string_view time, char mark, std::string_view text) {
  std::string told = fileLineOpen ? "\n" : "";
  fileLineOpen = false;
  while (true) {
    const std::size_t end = text.find('\n');
    told.append(time).append({' ', mark, ' '}).append(text.substr(0, end)) += '\n';
    if (end == std::string_view::npos) {
      return told;
    }
    text.remove_prefix(end + 1);
  }
}

TranscriptLog::~TranscriptLog() {
  if (isOpen) {
    const char* const where = transcript.isWithinLine() ? ", within a line of the log" : "";
    file.write(transcript.remark(timeNow(), std::string("the session ends") + where));
  }
}

std::string TranscriptLog::open(const std::string& fileName) {
  const bool isBroken = endsWithinLine(fileName);
  std::string why = file.open(fileName, GrowingFile::Start::kAppend);
  if (why.empty()) {
    isOpen = true;
    file.write((isBroken ? "\n" : "") +
               transcript.remark(timeNow(), std::string("a session begins, nelmpm ") +
                                                kProductVersion + " (process " +
                                                std::to_string(getpid()) + ")"));
  }
  return why;
}

void TranscriptLog::saw(const Message& message, std::string_view refusal) {
  const std::string told = transcript.sawAt(timeNow(), *message, refusal);
  if (!told.empty()) {
    file.write(told);
  }
}

}  // namespace postmaster
