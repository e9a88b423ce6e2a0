#include "button_file/button_file_reader.h"

std::string_view remarkText(ButtonFileRemark remark) {
  switch (remark) {
    case ButtonFileRemark::kBeforeFirstHeader:
      return "before the first header, so it is ignored";
    case ButtonFileRemark::kHeaderSkipped:
      return "header skipped for its \"#\"; what follows does not go where it should";
    case ButtonFileRemark::kLineSkipped:
      return "skipped for its \"#\", so the lines behind it may be paired otherwise";
    case ButtonFileRemark::kHashInName:
      return "\"#\" in a name: this header is skipped as soon as another one stands before it";
    case ButtonFileRemark::kBarInName:
      return "\"|\" in a name: menus and collapsed groups are cut there, other groups lose those "
             "at "
             "the end";
    case ButtonFileRemark::kBlankBeforeName:
      return "the name begins with a blank or a tab";
    case ButtonFileRemark::kHeaderWordCase:
      return "header word not in capitals, so this is an expanded group of that name";
    case ButtonFileRemark::kBlanksLost:
      return "blanks or tabs in front are lost";
    case ButtonFileRemark::kNulByte:
      return "the line is lost from its NUL byte on";
    case ButtonFileRemark::kLongLine:
      return "line of 1000 characters or more, read as several lines; a further one begins with";
    case ButtonFileRemark::kEmptyDefinition:
      return "empty line behind a label: the next line is taken for the definition";
    case ButtonFileRemark::kNoDefinition:
      return "label without a definition, dropped";
    case ButtonFileRemark::kSeparatorInLabel:
      return "holds \"separator\", so it is read as a separator";
    case ButtonFileRemark::kSeparatorInDefinition:
      return "definition with \"separator\" in a menu: a separator appears behind the entry";
    case ButtonFileRemark::kSeparatorLost:
      return "a single separator line at the end of a menu, dropped";
  }
  return "";
}

ButtonFileObserver ButtonFileRemarks::observer() {
  return [this](const ButtonFileNote& note) {
    // A label turns out to be the last one of its group only when the group is over.
    if (lines.empty() || note.line < *lines.begin()) {
      first = remarkText(note.remark);
    }
    lines.insert(note.line);
  };
}

std::string ButtonFileRemarks::summary() const {
  if (lines.empty()) {
    return {};
  }
  const std::string place = "line " + std::to_string(*lines.begin()) + ": " + std::string(first);
  return lines.size() == 1 ? "1 remark: " + place
                           : std::to_string(lines.size()) + " remarks, the first: " + place;
}
