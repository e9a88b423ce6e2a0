#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "resources/accelerators.h"
#include "resources/dialogs.h"

/// Builds from the records of a resource file what the built-in table holds ready-made. Words are
/// four bytes, big-endian; a text is a byte that tells whether there is one, a word for its length,
/// and its bytes. Data of any content can be read.

/// A string: one text, without its first and its last character. Nothing if there is no text.
std::optional<std::string> readStringResource(std::span<const std::uint8_t> bytes);

/// An accelerator table with the texts that its rows point to.
struct LoadedAccelerators {
  std::vector<AcceleratorRow> rows;  ///< ended by a row of kind kAccelEnd
  std::vector<std::unique_ptr<const std::string>> names;
};

/// Rows of key, command, name (a text), kind and flags, up to one of kind kAccelEnd or one that the
/// data do not hold whole.
std::unique_ptr<LoadedAccelerators> readAcceleratorResource(std::span<const std::uint8_t> bytes);

/// A dialog with the controls and texts that it points to.
struct LoadedDialog {
  DialogResource dialog{};
  std::vector<ControlRecord> items;
  std::vector<std::unique_ptr<const std::string>> texts;
};

/// The number of controls, then id, style, x, y, cx, cy, caption (a text), font name (a text), font
/// size and icon; then the controls: class, reserved, id, text, style, x, y, cx, cy. Null if the
/// data do not hold all of it.
std::unique_ptr<LoadedDialog> readDialogResource(std::span<const std::uint8_t> bytes);
