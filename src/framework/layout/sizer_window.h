#pragma once

#include <cstdint>

/// What a sizer needs of the window that it serves. The window implements this and owns its sizer.
class ziSizerWindow {
 public:
  ziSizerWindow() = default;
  ziSizerWindow(const ziSizerWindow&) = delete;
  ziSizerWindow& operator=(const ziSizerWindow&) = delete;
  virtual ~ziSizerWindow() = default;

  /// Moves and resizes the window; pixels, relative to its parent.
  virtual void moveResize(std::int32_t x, std::int32_t y, std::int32_t width,
                          std::int32_t height) = 0;
  /// True once the window's widget exists; before that a layout leaves the window alone.
  virtual bool hasWidget() const = 0;
  /// Told by replaceBy(): the window now owns `sizer` and must forget, not delete, the old one.
  virtual void sizerReplaced(class zSizer& sizer) = 0;
};
