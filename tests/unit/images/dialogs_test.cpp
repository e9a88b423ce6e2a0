// The dialogs of the button set as data.

#include "resources/dialogs.h"

#include <gtest/gtest.h>

#include <span>

namespace {

TEST(DialogResource, HasItsControlsInTheAgreedPlaces) {
  std::string places = "\n";
  for (std::uint32_t id = 0; id < 3000; ++id) {
    const DialogResource* dialog = findDialogResource(id);
    if (dialog == nullptr) {
      continue;
    }
    const auto tell = [&places](std::initializer_list<std::uint32_t> numbers, char end) {
      for (const std::uint32_t number : numbers) {
        places += std::to_string(number) + ' ';
      }
      places.back() = end;
    };
    tell({id, dialog->cx, dialog->cy, dialog->fontSize}, ':');
    for (const ControlRecord& item : std::span(dialog->items, dialog->itemCount)) {
      tell({item.x, item.y, item.cx, item.cy}, ';');
    }
    places.back() = '\n';
  }
  EXPECT_EQ(places, R"(
503 152 166 11:17 143 50 15;84 143 50 15;17 9 81 8;17 25 115 100
504 202 82 11:51 9 137 12;51 28 137 12;40 59 50 15;112 59 50 15;11 9 26 12;11 29 35 10
505 204 81 11:51 9 138 12;51 28 138 12;12 59 50 15;75 59 50 15;139 59 50 15;11 9 26 12;11 29 35 10
506 178 63 11:59 10 104 12;24 41 50 15;100 41 50 15;10 11 47 12
507 218 65 11:59 10 143 12;17 41 50 15;81 41 50 15;145 41 50 15;10 11 47 12
517 153 164 11:17 140 50 15;82 140 50 15;17 9 91 8;17 25 115 100
519 205 65 11:14 41 51 15;78 41 50 15;140 41 50 15;44 9 117 8
2304 200 64 11:40 41 50 15;110 41 50 15;90 10 98 12;10 11 78 12
)");
}

}  // namespace
