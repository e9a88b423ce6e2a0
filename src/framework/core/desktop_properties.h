#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/draw/xtfwd.h"

/// What desktops want to know of a top-level window beyond what the toolkit tells them: properties
/// of the extended window manager hints. All of this does nothing for a shell that has no window
/// yet.

enum class ziWindowType { normal, dialog };

/// Tells the process, the type and the title of a shell that was just realized; to be called before
/// it is mapped.
void announceWindow(Widget shell, ziWindowType type, const char* title);

/// Tells a title that has changed.
void announceTitle(Widget shell, const char* title);

/// Whether the window manager shows the window of `shell` as an icon.
bool isIconic(Widget shell);
/// Asks for the user's attention to the window of `shell`, or no more.
void demandAttention(Widget shell, bool wanted);

/// Tells the icon: width, height, then ARGB words row by row. No words take it away.
void announceIcon(Widget shell, const std::vector<unsigned long>& pixels);

/// `title` unchanged if it is well-formed UTF-8, otherwise from Latin-1 to UTF-8.
std::string titleInUtf8(std::string_view title);
