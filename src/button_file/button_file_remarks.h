#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "button_file/button_file_reader.h"

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
