#pragma once

/// The place of the entry in its strip, pixels.
inline constexpr int kCommandLineLeft = 80;     ///< room for the label, unless it needs more
inline constexpr int kCommandLabelMargin = 4;   ///< free beside the label's text, at least
inline constexpr int kCommandLineMargin = 2;    ///< free at the right
inline constexpr int kCommandLineHeight = 140;  ///< the entry and its open list
