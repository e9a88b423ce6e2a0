#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "framework/draw/color.h"
#include "framework/draw/xtfwd.h"

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
