#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// The resources that are part of the program; all of them are constants.

/// The data of a resource, or null: picture data for bitmaps and icons, a DialogResource, or
/// AcceleratorRow records.
const void* builtInResource(int type, std::uint32_t id);

/// The bytes of a built-in bitmap (kResourceBitmap) or icon (kResourceIcon); empty for others.
std::span<const std::uint8_t> builtInPicture(int type, std::uint32_t id);
