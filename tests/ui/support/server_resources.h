#pragma once

#include <map>
#include <string>

namespace ui {

/// What the X server keeps for this process at present: how many of each kind, such as "PIXMAP".
std::map<std::string, unsigned> serverResources();

}  // namespace ui
