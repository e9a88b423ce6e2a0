#pragma once

/// Root of the value classes that a stream could carry. This program streams none of them, so only
/// the common, virtual destructor is left.
class zStorable {
 public:
  zStorable() = default;
  zStorable(const zStorable&) = default;
  zStorable& operator=(const zStorable&) = default;
  virtual ~zStorable() = default;
};
