#pragma once

#include <string_view>

#include "buttons/file/button_file_notes.h"

namespace btnlint {

/// What to tell the author of a file about a remark, to stand before the line in question.
std::string_view remarkText(ButtonFileRemark remark);

}  // namespace btnlint
