#include "buttons/group_geometry.h"

#include <algorithm>

namespace {

constexpr double kTextWidening = 1.4;
constexpr int kGroupButtonMargins = 10;
constexpr int kHeaderMargins = 9;
constexpr int kButtonMargins = 6;
constexpr int kGroupFrameWidth = 6;
constexpr int kHeaderGap = 3;
constexpr int kContentMargins = 10;
constexpr int kBottomMargin = 5;
constexpr int kColumnGap = 1;
constexpr int kRowGap = 2;
constexpr int kFirstColumn = 2;

}  // namespace

GroupMetrics GroupMetrics::from(const zDimension& groupText, int buttonTextHeight,
                                int fiveUnitsDown, int paneWidth, int borderWidth) {
  GroupMetrics metrics;
  metrics.groupButtonWidth = groupText.width + kGroupButtonMargins;
  metrics.textRowHeight = groupText.height + fiveUnitsDown;
  metrics.headerHeight = metrics.textRowHeight + kHeaderMargins;
  metrics.buttonRowHeight = buttonTextHeight + kButtonMargins;
  metrics.minGroupWidth = paneWidth - borderWidth - kGroupFrameWidth;
  return metrics;
}

int widenedText(int textWidth) {
  return static_cast<int>(textWidth * kTextWidening);
}

int rowCount(int buttons) {
  return (buttons + kButtonsPerRow - 1) / kButtonsPerRow;
}

int collapsedGroupWidth(const GroupMetrics& metrics, int nameWidth, int checkBoxWidth) {
  return std::max({metrics.minGroupWidth, metrics.groupButtonWidth + nameWidth + kHeaderGap,
                   metrics.groupButtonWidth + checkBoxWidth});
}

int expandedGroupWidth(int collapsedWidth, int maxButtonWidth, int buttons) {
  return std::max(collapsedWidth,
                  maxButtonWidth * std::min(buttons, kButtonsPerRow) + kContentMargins);
}

int expandedGroupHeight(const GroupMetrics& metrics, int buttons) {
  return rowCount(buttons) * metrics.buttonRowHeight + metrics.headerHeight + kBottomMargin;
}

zRect buttonPlace(const GroupMetrics& metrics, int maxButtonWidth, int index) {
  const int column = index % kButtonsPerRow;
  const int row = index / kButtonsPerRow;
  return {zPoint{(maxButtonWidth + kColumnGap) * column + kFirstColumn,
                 row * metrics.buttonRowHeight + metrics.headerHeight},
          zDimension{maxButtonWidth, metrics.buttonRowHeight - kRowGap}};
}

ButtonSpan buttonsInBand(const GroupMetrics& metrics, int buttons, int groupTop,
                         const CanvasBand& band) {
  const int pitch = std::max(metrics.buttonRowHeight, 1);
  const int rowsTop = groupTop + metrics.headerHeight;
  const int firstRow = std::max(band.top - rowsTop, 0) / pitch;
  const int endRow = band.bottom <= rowsTop ? 0 : (band.bottom - rowsTop + pitch - 1) / pitch;
  const int last = std::min(std::min(endRow, rowCount(buttons)) * kButtonsPerRow, buttons);
  return {std::min(firstRow * kButtonsPerRow, last), last};
}
