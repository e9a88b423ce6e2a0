#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace postmaster {

/// Cuts a byte stream into frames at their NULs. Holds at most one unfinished frame of
/// kMaxFrameText bytes besides what was appended last: the rest of a longer one is thrown away up
/// to its NUL, with which the stream is in step again.
class FrameSplitter {
 public:
  enum class Item {
    kNone,       ///< no whole frame is there
    kFrame,      ///< one frame was taken
    kOversized,  ///< the bound was passed with no NUL; told once a frame
  };

  /// Takes the next bytes of the stream. Call `next` until it gives kNone after each.
  void append(std::string_view bytes);

  /// Takes the next frame, without its NUL, into `text`.
  Item next(std::string& text);

  /// Whether the stream stands inside a frame.
  bool isMidFrame() const { return discarding || taken < buffer.size(); }

 private:
  std::string buffer;
  std::size_t taken = 0;  ///< bytes at the front that were handed out
  bool discarding = false;
};

}  // namespace postmaster
