#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "button_file/button_set.h"

/// What a reader of button files may meet that its author hardly meant: text that is lost or taken
/// for something else, now or after the next save.
enum class ButtonFileRemark {
  kBeforeFirstHeader,      ///< a line that belongs to nothing, ignored
  kHeaderSkipped,          ///< a "#" makes a header a comment
  kLineSkipped,            ///< a "#" makes a label or a definition a comment
  kHashInName,             ///< a "#" in a name that only a file's first header may have
  kBarInName,              ///< a "|" that cuts a name, or may
  kBlankBeforeName,        ///< a blank or a tab that becomes part of a name
  kHeaderWordCase,         ///< a header word in other letters, so a plain group
  kBlanksLost,             ///< blanks or tabs in front of a line
  kNulByte,                ///< the rest of the line is lost
  kLongLine,               ///< a line read as several
  kEmptyDefinition,        ///< an empty line between a label and what is taken for its definition
  kNoDefinition,           ///< a label that is dropped at the end of its group or menu
  kSeparatorInLabel,       ///< a label of a menu taken for a separator
  kSeparatorInDefinition,  ///< a definition that puts a separator behind its entry
  kSeparatorLost,          ///< a single separator line at the end of its menu
};

struct ButtonFileNote {
  ButtonFileRemark remark;
  std::size_t line;       ///< of the file, from 1
  std::string_view text;  ///< that line as it was read; lives for the call only
};

/// Told each note as the reader comes upon it, so not strictly in the order of the lines.
using ButtonFileObserver = std::function<void(const ButtonFileNote&)>;

/// Reads the button file `file` from its present position to its end. There is no error of syntax:
/// what has no meaning is ignored, and odd lines are paired as they come. A failed read counts as
/// the end of the file; `ferror` tells. `observer`, when given, is told of what gets lost.
ButtonSet readButtonFile(std::FILE* file, const ButtonFileObserver& observer = {});

/// The same for a file's bytes.
ButtonSet readButtonFile(std::string_view bytes, const ButtonFileObserver& observer = {});

/// What to tell the author of a file about a remark, to stand before the line in question.
std::string_view remarkText(ButtonFileRemark remark);

/// The remarks on one file in short: at most one on each of its lines.
class ButtonFileRemarks {
 public:
  /// For the reader; refers to this object.
  ButtonFileObserver observer();
  /// Their number and the first one; empty when there is none.
  std::string summary() const;

 private:
  std::set<std::size_t> lines;
  std::string_view first;  ///< of the first line
};
