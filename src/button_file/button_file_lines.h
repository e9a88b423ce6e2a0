#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "button_file/button_file_notes.h"

/// Characters that one read of a line delivers at most, its line feed included.
inline constexpr std::size_t kMaxButtonFileLine = 999;

/// Source of a button file: gives its next byte, or EOF again and again.
using ButtonFileBytes = std::function<int()>;

/// The line without line feeds, then carriage returns at its end, then blanks, then tabs at its
/// front, one pass each. A NUL ends the line.
std::string normaliseLine(std::string_view line);

/// The lines of a button file one by one.
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
