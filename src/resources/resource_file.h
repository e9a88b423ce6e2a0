#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <vector>

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
