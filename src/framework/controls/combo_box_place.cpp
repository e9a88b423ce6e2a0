#include "framework/controls/combo_box_place.h"

#include <algorithm>

zRect dropDownRect(const zRect& entry, const zDimension& list, const zDimension& screen) {
  const int left = keptInside(entry.pos(), list, screen).x;
  const int roomBelow = screen.height - entry.bottom;
  const int roomAbove = entry.top;
  const bool goesBelow = list.height <= roomBelow || roomBelow >= roomAbove;
  const int height = std::max(1, std::min(list.height, goesBelow ? roomBelow : roomAbove));
  const int top = goesBelow ? entry.bottom : entry.top - height;
  return zRect(zPoint{left, top}, zDimension{list.width, height});
}
