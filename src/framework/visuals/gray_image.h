#pragma once

#include <memory>

class zBitmap;

/// The greyed form of an image for a disabled button: its dark parts, or all that differs from its
/// first pixel when it has none, embossed on the face colour. Null when there is no picture.
std::unique_ptr<zBitmap> makeGrayImage(const zBitmap& image);
