#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "framework/draw/xtfwd.h"

/// The components of a colour as X counts them.
struct ziXColour {
  std::uint16_t red = 0;
  std::uint16_t green = 0;
  std::uint16_t blue = 0;

  bool operator==(const ziXColour&) const = default;
};

/// An RGB value, and the colour that X made of it once it has been looked up.
class zColor {
 public:
  constexpr zColor() = default;
  /// `rgb` is a 24-bit word with red in the top byte.
  constexpr explicit zColor(std::uint32_t rgb) : word(rgb & kMask) {}
  /// A colour that X reported.
  static zColor fromX(const ziXColour& x);

  constexpr std::uint32_t rgb() const { return word; }
  std::uint8_t red() const { return static_cast<std::uint8_t>(word >> kRedShift); }
  std::uint8_t green() const { return static_cast<std::uint8_t>(word >> kGreenShift); }
  std::uint8_t blue() const { return static_cast<std::uint8_t>(word); }

  /// True once the X colour is known.
  bool hasX() const { return looked; }
  /// The X colour; before it is known, the RGB value stretched to 16 bits.
  ziXColour x() const;
  void setX(const ziXColour& colour);

  /// By the RGB value alone.
  bool operator==(const zColor& other) const { return word == other.word; }

 private:
  static constexpr std::uint32_t kMask = 0xFFFFFF;
  static constexpr int kRedShift = 16;
  static constexpr int kGreenShift = 8;

  std::uint32_t word = 0;
  bool looked = false;
  ziXColour found;
};

inline constexpr zColor kColorWhite{0xFFFFFF};
inline constexpr zColor kColorLightGrey{0xC0C0C0};
inline constexpr zColor kColorGrey{0x808080};
inline constexpr zColor kColorDarkGrey{0x404040};
inline constexpr zColor kColorBlack{0x000000};

/// Turns colours into X pixels. Each colour is asked for once; it bounds what the program takes
/// from a colour map, and colours are never given back.
class zColorCache {
 public:
  /// What the server made of a colour.
  struct Allocated {
    unsigned long pixel = 0;
    ziXColour x;
  };
  /// Asks the server for a colour; nothing when it has none left.
  using Allocator = std::function<std::optional<Allocated>(const ziXColour&)>;

  /// How many colours are taken from the server; later ones become the nearest of these.
  static constexpr std::size_t kLimit = 251;

  /// Allocates in the default colour map of theScreen().
  zColorCache();
  explicit zColorCache(Allocator allocator) : allocate(std::move(allocator)) {}

  /// The pixel of `colour`, which learns its X colour. With no colour to be had, the pixel of the
  /// nearest one that is known.
  unsigned long pixel(zColor& colour);
  /// The colour that a pixel of the default colour map shows; asks the server when unknown.
  zColor colourOf(unsigned long pixel) const;

  /// What the server would answer for the default colour map; nothing where only it can tell.
  static std::optional<Allocated> computed(Display* display, const ziXColour& wanted);

  std::size_t count() const { return entries.size(); }

 private:
  struct Entry {
    zColor colour;
    Allocated x;
  };

  const Entry* find(const zColor& colour) const;
  const Entry* nearest(const ziXColour& wanted) const;

  std::vector<Entry> entries;
  Allocator allocate;
};
