#pragma once

#include "support/geometry.h"

/// Where the parts of a group of buttons are; pixels. Pure arithmetic.

inline constexpr int kButtonsPerRow = 3;

/// What follows from the fonts, once for all groups.
struct GroupMetrics {
  int groupButtonWidth = 0;  ///< of the button "Group" in the header
  int textRowHeight = 0;
  int headerHeight = 0;     ///< of a collapsed group, and where the first row of buttons begins
  int buttonRowHeight = 0;  ///< from row to row
  int minGroupWidth = 0;    ///< also what is seen of the groups' width

  /// From the extents of "Group" in the groups' font and of "Button" in the main window's, and
  /// from what 5 vertical and 160 and 18 horizontal dialog units are.
  static GroupMetrics from(const zDimension& groupText, int buttonTextHeight, int fiveUnitsDown,
                           int paneWidth, int borderWidth);
};

/// The room that a text is given: 1.4 times its width.
int widenedText(int textWidth);

int rowCount(int buttons);
/// `checkBoxWidth` with its margins and the button "Group" always have room, as the name of a
/// renamed group needs.
int collapsedGroupWidth(const GroupMetrics& metrics, int nameWidth, int checkBoxWidth);
int expandedGroupWidth(int collapsedWidth, int maxButtonWidth, int buttons);
int expandedGroupHeight(const GroupMetrics& metrics, int buttons);
/// Where the button number `index`, counted from 0, is in its group.
zRect buttonPlace(const GroupMetrics& metrics, int maxButtonWidth, int index);

/// A part of the canvas, from top to bottom; pixels from the top of the first group's row.
struct CanvasBand {
  int top = 0;
  int bottom = 0;

  bool operator==(const CanvasBand&) const = default;
  bool contains(const CanvasBand& other) const {
    return top <= other.top && other.bottom <= bottom;
  }
};

/// The indexes of the buttons that lie in `band` at least in part, in a group at `groupTop`: from
/// `first` up to, but not including, `last`.
struct ButtonSpan {
  int first = 0;
  int last = 0;

  bool operator==(const ButtonSpan&) const = default;
};
ButtonSpan buttonsInBand(const GroupMetrics& metrics, int buttons, int groupTop,
                         const CanvasBand& band);
