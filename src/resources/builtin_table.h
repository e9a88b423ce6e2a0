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

/// How a row of an accelerator table names its key.
enum AcceleratorKind : int {
  kAccelCharacter = 0,   ///< the first character of the name
  kAccelKeysym = 1,      ///< the key word
  kAccelVirtualKey = 2,  ///< a virtual key name such as "VK_F1"
  kAccelEnd = 100,       ///< ends the table
};

/// Modifiers of a row. Bit 1 stands in all rows with modifiers or virtual keys and means nothing.
enum AcceleratorFlag : int {
  kAccelControl = 2,
  kAccelAlt = 4,
  kAccelShift = 8,
};

struct AcceleratorRow {
  int key;
  int command;
  const char* name;
  int kind;
  int flags;
};

/// The rows of an accelerator resource, ended by one of kind kAccelEnd; null for an unknown id.
const AcceleratorRow* acceleratorResource(int id);
