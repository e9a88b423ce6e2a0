#pragma once

#include <cstdint>
#include <span>

#include "framework/draw/image/picture.h"

struct ziDecodedBitmap {
  ziPicture picture;  ///< empty when the data were refused
  ziMessages messages;
};

/// Decodes BMP data of any content.
ziDecodedBitmap decodeBmp(std::span<const std::uint8_t> bytes);
