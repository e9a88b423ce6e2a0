#pragma once

// Part of the interface of resources that this program does not use: it has all of its own in the
// built-in table. Compiled, its behaviour is not under test, but that any bytes can be read is.

#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "resources/builtin_table.h"
#include "resources/dialogs.h"

/// Resource files: a header block of 100 bytes, records anywhere, and an index of them. Numbers are
/// big-endian.
///
///   0   "zSig448822" and a NUL; the format version, 1 and 0, in bytes 12 and 13
///   96  offset of the index, less kOffsetBias
///
/// An index record is four words: type, id, offset of the data less kOffsetBias, size of the data.
/// A record of type 99, or with the data offset 0, ends the index.
class ResourceFile {
 public:
  static constexpr std::uint64_t kOffsetBias = 5;

  /// Reads header and index of a file.
  explicit ResourceFile(std::unique_ptr<std::istream> source);

  /// Whether the file begins as a resource file does; nothing is found in any other.
  bool isValid() const { return valid; }

  /// The bytes of the first record of this type and id. Nothing if there is none, or if its data do
  /// not lie within the file.
  std::optional<std::vector<std::uint8_t>> find(std::uint32_t type, std::uint32_t id);

 private:
  struct IndexRecord {
    std::uint32_t type = 0;
    std::uint32_t id = 0;
    std::uint32_t offset = 0;
    std::uint32_t size = 0;
  };

  std::vector<std::uint8_t> bytesAt(std::uint64_t offset, std::uint64_t count);
  bool readHeader();
  void readIndex();

  std::unique_ptr<std::istream> stream;
  std::uint64_t fileSize = 0;
  std::uint64_t indexOffset = 0;
  bool valid = false;
  std::vector<IndexRecord> index;
};

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
