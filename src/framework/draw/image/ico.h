#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "framework/draw/image/picture.h"
#include "support/geometry.h"

/// An image of an icon or a cursor: a picture, and where it lets the ground through.
struct ziMaskedPicture {
  ziPicture picture;  ///< empty when the data hold no image that can be used
  ziPicture mask;     ///< of the same size; 1 where the ground shows
  zPoint hotSpot;     ///< of a cursor; inside the picture
  ziMessages messages;

  bool isTransparent(int x, int y) const { return mask.at(x, y) == 1; }
  /// The RGB word of a pixel; black for a blank one.
  std::uint32_t colourAt(int x, int y) const;
};

/// Decodes ICO data of any content: its image of 32 by 32 with 16 colours, or else with 2. Data
/// without an image of this size get the message `noImage`.
ziMaskedPicture decodeIcon(std::span<const std::uint8_t> bytes, const std::string& noImage);

/// Decodes CUR data of any content: its image of 32 by 32 with 2 colours, or else with 16.
ziMaskedPicture decodeCursor(std::span<const std::uint8_t> bytes, const std::string& noImage);

/// The picture as the property _NET_WM_ICON takes it: width, height, then ARGB words row by row.
/// Empty for an empty picture.
std::vector<unsigned long> windowManagerIcon(const ziMaskedPicture& icon);

/// One bit a pixel, rows padded to bytes, lowest bit first, as X's bitmap data are.
struct ziBitRows {
  std::vector<std::uint8_t> bits;
  int width = 0;
  int height = 0;
};

/// Where the picture covers the ground.
ziBitRows opaqueBits(const ziMaskedPicture& image);
/// The light pixels of a picture that is to be shown in two colours.
ziBitRows lightBits(const ziMaskedPicture& image);
