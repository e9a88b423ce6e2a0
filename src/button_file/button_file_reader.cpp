// Three levels share one source of lines: the top level, the body of a group, the body of a menu.
// A body ends at the next header, which lines.text() then holds for the top level to treat, or with
// the file. The memory used is linear in the size of the input.
//
// What looks careless here is the format, and files depend on it: a "#" anywhere makes a line of a
// body a comment, but only one in the first word a line of the top level; empty lines do not count
// as definitions; and "separator" in a menu means something wherever it stands.

#include "button_file/button_file_reader.h"

#include <algorithm>

#include "support/text.h"

namespace {

std::string_view withoutBack(std::string_view text, char unwanted) {
  return text.substr(0, text.find_last_not_of(unwanted) + 1);
}

std::string_view withoutFront(std::string_view text, char unwanted) {
  return text.substr(std::min(text.find_first_not_of(unwanted), text.size()));
}

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

/// The line without line feeds, then carriage returns at its end, then blanks, then tabs at its
/// front, one pass each. A NUL ends the line.
std::string normaliseLine(std::string_view line) {
  line = line.substr(0, line.find('\0'));
  line = withoutBack(withoutBack(line, '\n'), '\r');
  // One pass each is intended: a blank behind a tab stays in front, and so does all at the end.
  return std::string(withoutFront(withoutFront(line, ' '), '\t'));
}

/// Characters that one read of a line delivers at most, its line feed included.
constexpr std::size_t kMaxButtonFileLine = 999;

/// Source of a button file: gives its next byte, or EOF again and again.
using ButtonFileBytes = std::function<int()>;

/// The lines of a button file one by one, as a read into a buffer of fixed size and C strings would
/// give them. That is a property of the file format: files exist whose meaning depends on it.
class ButtonFileLines {
 public:
  ButtonFileLines(ButtonFileBytes source, const ButtonFileObserver& noteObserver)
      : bytes(std::move(source)), observer(noteObserver) {}

  /// Reads the next line; false at the end of the file, where text() keeps its value. The rest of a
  /// line that is too long for one read comes as a line of its own.
  bool next();

  /// The line read last, normalised.
  const std::string& text() const { return line; }
  /// Number, from 1, of the line of the file that text() is from.
  std::size_t number() const { return lineNumber; }
  /// Whether text() is the rest of a longer line.
  bool isRest() const { return rest; }

  void note(ButtonFileRemark remark) const { note(remark, lineNumber, line); }
  void note(ButtonFileRemark remark, std::size_t number, std::string_view text) const;

 private:
  std::string readRaw();
  void noteLosses(std::string_view raw);

  ButtonFileBytes bytes;
  const ButtonFileObserver& observer;
  std::string line;
  std::size_t lineNumber = 0;
  bool rest = false;
  bool unfinished = false;  ///< the last read has not reached a line feed
  bool longLineTold = false;
};

bool ButtonFileLines::next() {
  const std::string raw = readRaw();
  if (raw.empty()) {
    return false;
  }
  rest = unfinished;
  if (!rest) {
    ++lineNumber;
    longLineTold = false;
  }
  unfinished = raw.back() != '\n';
  line = normaliseLine(raw);
  if (observer) {
    noteLosses(raw);
  }
  return true;
}

void ButtonFileLines::note(ButtonFileRemark remark, std::size_t number,
                           std::string_view text) const {
  if (observer) {
    observer({remark, number, text});
  }
}

std::string ButtonFileLines::readRaw() {
  std::string raw;
  while (raw.size() < kMaxButtonFileLine) {
    const int byte = bytes();
    if (byte == EOF) {
      break;
    }
    raw += static_cast<char>(byte);
    if (byte == '\n') {
      break;
    }
  }
  return raw;
}

void ButtonFileLines::noteLosses(std::string_view raw) {
  if (raw.find('\0') != std::string_view::npos) {
    note(ButtonFileRemark::kNulByte);
  }
  const bool isMoreThanLineEnd = raw.find_first_not_of("\r\n") != std::string_view::npos;
  if (rest && isMoreThanLineEnd && !longLineTold) {
    longLineTold = true;
    note(ButtonFileRemark::kLongLine);
  }
  const bool isComment = line.substr(0, 1) == "#";
  if (!rest && isBlank(raw.front()) && !line.empty() && !isComment) {
    note(ButtonFileRemark::kBlanksLost);
  }
}

constexpr std::string_view kMenuWord = ":MENU";
constexpr std::string_view kCollapsedWord = ":COLLAPSED";
constexpr std::string_view kWordEnds = " \t";
constexpr char kHeaderMark = ':';
constexpr char kCommentMark = '#';
constexpr char kNameEnd = '|';

constexpr auto kNowhere = std::string_view::npos;

bool holdsSeparator(std::string_view line) {
  return std::search(line.begin(), line.end(), kSeparatorWord.begin(), kSeparatorWord.end(),
                     isSameLetter) != line.end();
}

/// Whether the line is what an author writes for a separator.
bool isSeparatorLine(std::string_view line) {
  return equalIgnoringCase(line.substr(0, line.find_last_not_of(kWordEnds) + 1), kSeparatorWord);
}

bool holds(std::string_view text, char wanted) {
  return text.find(wanted) != kNowhere;
}

std::string_view firstWord(std::string_view line) {
  line = line.substr(std::min(line.find_first_not_of(kWordEnds), line.size()));
  return line.substr(0, line.find_first_of(kWordEnds));
}

/// The name behind ":MENU" or ":COLLAPSED". Only blanks go: a tab belongs to the name.
std::string nameBehind(std::string_view word, std::string_view line) {
  std::string_view name = line.substr(line.find(word) + word.size());
  name = name.substr(0, name.find(kNameEnd));
  return std::string(name.substr(std::min(name.find_first_not_of(' '), name.size())));
}

/// The name of an expanded group. The first character goes even where it is a blank before the ":";
/// this is intended.
std::string plainName(std::string_view line) {
  return std::string(line.substr(0, line.find_last_not_of(kNameEnd) + 1).substr(1));
}

/// Two lines that belong together.
class LinePair {
 public:
  /// Takes a line; true when it is the second one.
  bool take(const ButtonFileLines& lines) {
    if (++count == 1) {
      first = lines.text();
      firstNumber = lines.number();
    } else {
      count = 0;
    }
    return count == 0;
  }
  void reset() { count = 0; }
  bool isHalf() const { return count == 1; }
  const std::string& label() const { return first; }
  void noteHalf(const ButtonFileLines& lines, ButtonFileRemark remark) const {
    if (isHalf()) {
      lines.note(remark, firstNumber, first);
    }
  }

 private:
  int count = 0;
  std::string first;
  std::size_t firstNumber = 0;
};

class Reader {
 public:
  Reader(ButtonFileBytes bytes, const ButtonFileObserver& observer)
      : lines(std::move(bytes), observer) {}

  ButtonSet read() {
    while (lines.next()) {
      while (readSection()) {
      }
    }
    return std::move(set);
  }

 private:
  bool readSection();
  bool readGroupBody(ButtonGroup& group);
  bool readMenuBody(ButtonMenu& menu);

  bool nextBodyLine(bool labelIsPending);
  bool isAtHeader() const { return lines.text().front() == kHeaderMark; }
  void noteName(const std::string& name) const;
  void noteSeparator(bool isDefinition) const;

  ButtonFileLines lines;
  ButtonSet set;
};

/// Treats the present line as one of the top level, with the body that it opens. True when that
/// body ended at a header, now the present line; a body that ends with the file hands nothing back.
bool Reader::readSection() {
  const std::string& line = lines.text();
  const std::string_view word = firstWord(line);
  if (word.empty()) {
    return false;
  }
  const bool isHeader = word.front() == kHeaderMark;
  if (holds(word, kCommentMark)) {
    if (isHeader) {
      lines.note(ButtonFileRemark::kHeaderSkipped);
    } else if (word.front() != kCommentMark) {
      lines.note(ButtonFileRemark::kLineSkipped);
    }
    return false;
  }
  if (!isHeader) {
    lines.note(ButtonFileRemark::kBeforeFirstHeader);
    return false;
  }
  if (word == kMenuWord) {
    set.menus.push_back({nameBehind(word, line), {}});
    noteName(set.menus.back().name);
    return readMenuBody(set.menus.back());
  }
  const bool isCollapsed = word == kCollapsedWord;
  set.groups.push_back({isCollapsed ? nameBehind(word, line) : plainName(line), !isCollapsed, {}});
  noteName(set.groups.back().name);
  if (!isCollapsed &&
      (equalIgnoringCase(word, kMenuWord) || equalIgnoringCase(word, kCollapsedWord))) {
    lines.note(ButtonFileRemark::kHeaderWordCase);
  }
  return readGroupBody(set.groups.back());
}

bool Reader::readGroupBody(ButtonGroup& group) {
  LinePair pair;
  bool isHeader = false;
  while (!isHeader && nextBodyLine(pair.isHalf())) {
    isHeader = isAtHeader();
    if (!isHeader && pair.take(lines)) {
      group.buttons.push_back({pair.label(), lines.text()});
    }
  }
  pair.noteHalf(lines, ButtonFileRemark::kNoDefinition);
  return isHeader;
}

bool Reader::readMenuBody(ButtonMenu& menu) {
  LinePair pair;
  int separatorLines = 0;
  bool isHeader = false;
  const auto addSeparator = [&] {
    menu.entries.push_back(MenuEntry::separator());
    separatorLines = 0;
    pair.reset();
  };
  while (!isHeader && nextBodyLine(pair.isHalf() && separatorLines == 0)) {
    isHeader = isAtHeader();
    if (isHeader) {
      break;
    }
    if (holdsSeparator(lines.text())) {
      noteSeparator(pair.isHalf() && separatorLines == 0);
      if (++separatorLines == 2) {
        addSeparator();
        continue;
      }
    } else if (separatorLines == 1) {
      addSeparator();
    }
    // A definition that holds the word leaves separatorLines at 1, so the next line brings a
    // separator that nobody wrote. This is intended.
    if (pair.take(lines)) {
      menu.entries.push_back({pair.label(), lines.text()});
    }
  }
  pair.noteHalf(lines, separatorLines == 1 ? ButtonFileRemark::kSeparatorLost
                                           : ButtonFileRemark::kNoDefinition);
  return isHeader;
}

/// Goes to the next line of a body that is neither a comment nor empty; false at the file's end.
bool Reader::nextBodyLine(bool labelIsPending) {
  while (lines.next()) {
    const std::string& line = lines.text();
    if (holds(line, kCommentMark)) {
      if (line.front() == kHeaderMark) {
        lines.note(ButtonFileRemark::kHeaderSkipped);
      } else if (line.front() != kCommentMark || labelIsPending) {
        lines.note(ButtonFileRemark::kLineSkipped);
      }
    } else if (!line.empty()) {
      return true;
    } else if (labelIsPending && !lines.isRest()) {
      lines.note(ButtonFileRemark::kEmptyDefinition);
    }
  }
  return false;
}

void Reader::noteName(const std::string& name) const {
  if (holds(lines.text(), kNameEnd)) {
    lines.note(ButtonFileRemark::kBarInName);
  }
  if (holds(name, kCommentMark)) {
    lines.note(ButtonFileRemark::kHashInName);
  }
  if (!name.empty() && holds(kWordEnds, name.front())) {
    lines.note(ButtonFileRemark::kBlankBeforeName);
  }
}

void Reader::noteSeparator(bool isDefinition) const {
  if (isDefinition) {
    lines.note(ButtonFileRemark::kSeparatorInDefinition);
  } else if (!isSeparatorLine(lines.text())) {
    lines.note(ButtonFileRemark::kSeparatorInLabel);
  }
}

}  // namespace

ButtonSet readButtonFile(std::FILE* file, const ButtonFileObserver& observer) {
  return Reader([file] { return std::getc(file); }, observer).read();
}

ButtonSet readButtonFile(std::string_view bytes, const ButtonFileObserver& observer) {
  std::size_t position = 0;
  const auto nextByte = [&]() -> int {
    return position < bytes.size() ? static_cast<unsigned char>(bytes[position++]) : EOF;
  };
  return Reader(nextByte, observer).read();
}
