#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace frames {

/// One line of a file, without its line end.
struct Line {
  std::string text;        ///< at most LineSplitter::kMaxLine bytes of it
  std::size_t number = 0;  ///< from 1
  bool isCut = false;      ///< longer than that
};

/// Cuts a byte stream into lines. Of a line of any length it holds no more than kMaxLine bytes.
class LineSplitter {
 public:
  static constexpr std::size_t kMaxLine = std::size_t{256} * 1024;

  /// Takes the next bytes of the stream. Call `next` until it gives false after each.
  void append(std::string_view bytes);

  /// Takes the next line that has its end.
  bool next(Line& line);

  /// Whether a line that has no end yet is cut already.
  bool isInOverlong() const { return current.isCut; }

  /// Takes what stands behind the last line end once the stream has ended; false for nothing.
  bool rest(Line& line);

 private:
  void collect(std::string_view piece);
  void take(Line& line);

  std::string pending;  ///< bytes that are not looked at yet, from `at`
  std::size_t at = 0;
  Line current;
};

}  // namespace frames
