#include "gdb/session/output_store.h"

#include <algorithm>
#include <utility>

#include "support/text.h"

namespace gdb {

namespace {

/// By this caption the user interface knows the question that shows its milder icon.
constexpr char kPageCaption[] = "Korvane - Page file";

constexpr std::string_view kProgramMark = "> ";

/// Of the program's output no more is taken than is shown soon, so that it also ends soon.
constexpr std::size_t kMostProgramWaiting = std::size_t{256} << 10;

/// How long an unfinished line waits for its end.
constexpr std::chrono::milliseconds kLineTime{30};

std::size_t linesOf(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

/// What a log can show of a byte.
char shown(char c) {
  return isControlCharacter(c) && c != '\n' && c != '\t' ? '.' : c;
}

}  // namespace

OutputStore::OutputStore(tester_link::UserLink& userLink, std::function<void()> afterPaging)
    : user(userLink), pagingEnded(std::move(afterPaging)) {}

void OutputStore::beginCommand() {
  if (state != Paging::kAsking) {
    state = Paging::kCounting;
  }
  lines = 0;
}

void OutputStore::stopCounting() {
  if (state == Paging::kCounting) {
    state = Paging::kWanted;
  }
}

void OutputStore::endCommand() {
  if (!isPaging()) {
    tellDropped();
  }
}

bool OutputStore::hasRoom() const {
  return !isPaging() && user.waitingText() < kMostProgramWaiting;
}

void OutputStore::stopKeeping() {
  isKeeping = false;
  copy.clear();
}

bool OutputStore::repeatKept() {
  user.print(copy);
  unfinished.clear();
  isAtLineStart = copy.empty() || copy.back() == '\n';
  return !copy.empty();
}

/// Every text leaves by here.
void OutputStore::show(const std::string& text) {
  if (isKeeping && copy.size() + text.size() <= kMostWaiting) {
    copy += text;
  }
  unfinished += text;
  const std::size_t size = unfinished.rfind('\n') + 1;
  if (size > 0) {
    user.print(unfinished.substr(0, size));
    unfinished.erase(0, size);
  }
  if (unfinished.empty()) {
    unfinishedTime.reset();
  } else if (!unfinishedTime || size > 0) {
    unfinishedTime = Clock::now() + kLineTime;
  }
}

void OutputStore::flush() {
  user.print(std::exchange(unfinished, {}));
  unfinishedTime.reset();
}

void OutputStore::addConsole(std::string_view text, bool isCounted) {
  if (!isCounted || state != Paging::kCounting || pageLength == 0) {
    add(Source::kConsole, text);
    return;
  }
  std::size_t end = 0;
  while (lines < pageLength && end < text.size()) {
    end = std::min(text.find('\n', end), text.size() - 1) + 1;
    lines += text[end - 1] == '\n' ? 1 : 0;
  }
  add(Source::kConsole, text.substr(0, end));
  if (end < text.size()) {
    askForMore();
    add(Source::kConsole, text.substr(end));
  }
}

void OutputStore::addProgram(std::string_view text) {
  add(Source::kProgram, text);
}

void OutputStore::addLine(std::string_view line) {
  if (isPaging()) {
    keptLines += std::string(line) + '\n';
    return;
  }
  endLine();
  add(Source::kOwn, std::string(line) + '\n');
}

void OutputStore::addAnswer(std::string_view answer) {
  add(lastSource, std::string(answer) + '\n');
}

void OutputStore::add(Source source, std::string_view text) {
  if (text.empty()) {
    return;
  }
  if (isPaging()) {
    if (keptBack.size() + text.size() > kMostWaiting) {
      dropped += linesOf(text);
    } else {
      keptBack += text;
    }
    return;
  }
  if (isUnwanted() && source == Source::kConsole) {
    return;
  }
  if (source != Source::kOwn && user.waitingText() + text.size() > kMostWaiting) {
    dropped += linesOf(text);
    return;
  }
  tellDropped();
  if (source != lastSource) {
    endLine();
    // GDB begins some texts with an empty line, to get away from what stands before.
    if (std::exchange(endsForced, false) && source == Source::kConsole && text.front() == '\n') {
      text.remove_prefix(1);
    }
  }
  lastSource = source;
  put(text);
}

void OutputStore::put(std::string_view text) {
  const bool isMarked = marksProgram && lastSource == Source::kProgram;
  std::string result;
  result.reserve(text.size() + text.size() / 8);
  for (char c : text) {
    const bool isReturned = std::exchange(wasReturn, c == '\r');
    if (c == '\r') {
      // Alone it goes back to the line's start, which a log has no way to do.
      c = '\n';
    } else if (c == '\n' && isReturned) {
      continue;
    }
    if (isMarked && isAtLineStart) {
      result += kProgramMark;
    }
    result += shown(c);
    isAtLineStart = c == '\n';
  }
  show(result);
}

void OutputStore::endLine() {
  wasReturn = false;
  endsForced = !isAtLineStart;
  if (endsForced) {
    show("\n");
    isAtLineStart = true;
  }
}

void OutputStore::tellDropped() {
  if (dropped != 0) {
    endLine();
    show("... " + std::to_string(std::exchange(dropped, 0)) + " lines dropped\n");
  }
}

void OutputStore::askForMore() {
  state = Paging::kAsking;
  flush();
  user.askYesNo(kPageCaption,
                "There are more than " + std::to_string(pageLength) + " lines.\nShow them all?",
                [this](const tester_link::Answer& answer) {
                  takeAnswer(answer.kind == tester_link::AnswerKind::kYes);
                });
}

void OutputStore::takeAnswer(bool isMoreWanted) {
  const std::string kept = std::exchange(keptBack, {});
  state = isMoreWanted ? Paging::kWanted : Paging::kUnwanted;
  if (isMoreWanted) {
    add(Source::kConsole, kept);
  } else {
    addLine("Stopped; the rest is not shown.");
  }
  if (!keptLines.empty()) {
    endLine();
    add(Source::kOwn, std::exchange(keptLines, {}));
  }
  pagingEnded();
}

void OutputStore::forgetUser() {
  unfinished.clear();
  keptBack.clear();
  keptLines.clear();
  dropped = 0;
  isAtLineStart = true;
  if (isPaging()) {
    state = Paging::kUnwanted;
    pagingEnded();
  }
}

}  // namespace gdb
