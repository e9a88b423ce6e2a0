// The dialogs of the button set as data.

#include "resources/dialogs.h"

#include <gtest/gtest.h>

#include <span>
#include <sstream>

namespace {

TEST(DialogResource, HasItsControlsInTheAgreedPlaces) {
  std::ostringstream places;
  for (std::uint32_t id = 0; id < 3000; ++id) {
    if (const DialogResource* dialog = findDialogResource(id)) {
      places << '\n' << id << ' ' << dialog->cx << 'x' << dialog->cy << ':';
      for (const ControlRecord& item : std::span(dialog->items, dialog->itemCount)) {
        places << ' ' << item.x << ',' << item.y << ' ' << item.cx << 'x' << item.cy;
      }
    }
  }
  EXPECT_EQ(places.str(), R"(
503 152x166: 17,143 50x15 84,143 50x15 17,9 81x8 17,25 115x100
504 202x82: 51,9 137x12 51,28 137x12 40,59 50x15 112,59 50x15 11,9 26x12 11,29 35x10
505 204x81: 51,9 138x12 51,28 138x12 12,59 50x15 75,59 50x15 139,59 50x15 11,9 26x12 11,29 35x10
506 178x63: 59,10 104x12 24,41 50x15 100,41 50x15 10,11 47x12
507 218x65: 59,10 143x12 17,41 50x15 81,41 50x15 145,41 50x15 10,11 47x12
517 153x164: 17,140 50x15 82,140 50x15 17,9 91x8 17,25 115x100
519 205x65: 14,41 51x15 78,41 50x15 140,41 50x15 44,9 117x8
2304 200x64: 40,41 50x15 110,41 50x15 90,10 98x12 10,11 78x12)");
}

}  // namespace
