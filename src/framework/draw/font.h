#pragma once

#include <cstdint>
#include <memory>

#include "framework/draw/draw_obj.h"
#include "framework/draw/x_handles.h"
#include "support/geometry.h"
#include "support/rwc_string.h"

enum zFontWeight : int { kFontRegular = 400, kFontNormal = 500, kFontBold = 700 };
enum zFontPitch : std::uint8_t { kPitchFixed = 1, kPitchVariable = 2 };
enum zFontCharSet : std::uint8_t { kCharSetLatin1 = 0, kCharSetOther = 0xFF };

inline constexpr const char* kAnyFoundry = "*";

/// A request for a font: the fields of a logical font.
struct ziLogFont {
  std::int32_t height = 0;  ///< pixels
  std::int32_t width = 0;   ///< average, pixels; 0 for any
  std::int32_t escapement = 0;
  std::int32_t orientation = 0;
  std::int32_t weight = kFontBold;  ///< 100 to 900
  std::uint8_t italic = 0;
  std::uint8_t underline = 0;
  std::uint8_t strikeOut = 0;
  std::uint8_t charSet = kCharSetLatin1;
  std::uint8_t outPrecision = 0;
  std::uint8_t clipPrecision = 0;
  std::uint8_t quality = 0;
  std::uint8_t pitchAndFamily = kPitchVariable;
  RWCString faceName;
  RWCString foundry = kAnyFoundry;

  static constexpr std::uint8_t kPitchMask = 3;
  int pitch() const { return pitchAndFamily & kPitchMask; }

  friend bool operator==(const ziLogFont&, const ziLogFont&) = default;
};

/// A font as it is asked for.
class zFontSpec : public zStorable {
 public:
  zFontSpec() = default;
  /// `size` in pixels, such as a zPrPoint gives; a width of 0 is any width.
  zFontSpec(const RWCString& faceName, const zDimension& size, int weight = kFontBold,
            zFontPitch pitch = kPitchVariable, bool italic = false);
  /// A stock font: bold, 11 points; 12 to 14 the variable "System" face, all others a fixed one.
  static zFontSpec stock(int stockNumber);
  /// What a full X font name says, and that very font.
  static zFontSpec fromFullName(const RWCString& name);

  ziLogFont& log() { return record; }
  const ziLogFont& log() const { return record; }
  /// The X name asked for; empty when any font that fits will do.
  const RWCString& fullName() const { return exactName; }

  friend bool operator==(const zFontSpec& a, const zFontSpec& b) {
    return a.record == b.record && a.exactName == b.exactName;
  }

 private:
  ziLogFont record;
  RWCString exactName;
};

/// The X family for a face name; an unknown face stays as it is. Case doesn't matter.
RWCString mapFaceName(const RWCString& faceName);

struct ziFontCacheEntry;

/// A font to draw with. The loaded X font is shared and belongs to the font dictionary; a request
/// that nothing fits gives a font that measures by kFallbackCharSize and draws nothing.
class zFont : public zDrawObj {
 public:
  /// See zFontSpec::stock.
  explicit zFont(int stockNumber);
  /// The face name goes through mapFaceName.
  explicit zFont(const zFontSpec& spec);
  zFont(const zFont&) = delete;
  zFont& operator=(const zFont&) = delete;
  ~zFont() override;

  const zFontSpec& spec() const { return request; }
  /// 0 when it is no stock font.
  int stockNumber() const { return number; }
  /// The loaded font, or null. Include x_font_xm.h for its XFontStruct.
  const ziXFont* xFont() const;
  const ziFontCacheEntry* cacheEntry() const { return entry; }

  /// Size of the first `length` bytes of `text`, pixels.
  zDimension measure(const char* text, int length) const;

 protected:
  unsigned long lookUpPixel() const override;

 private:
  void realize();

  zFontSpec request;
  int number = 0;
  ziFontCacheEntry* entry = nullptr;
};

/// The shared body of a zRCFont.
struct ziRCFontImp {
  explicit ziRCFontImp(int stockNumber) : font(stockNumber) {}
  explicit ziRCFontImp(const zFontSpec& spec) : font(spec) {}

  zFont font;
};

/// Handle on a font that windows and displays share. A copy shares the font; the last one deletes
/// it. An empty handle means no font.
class zRCFont {
 public:
  zRCFont() = default;
  explicit zRCFont(int stockNumber) : body(std::make_shared<ziRCFontImp>(stockNumber)) {}
  explicit zRCFont(const zFontSpec& spec) : body(std::make_shared<ziRCFontImp>(spec)) {}

  bool isEmpty() const { return body == nullptr; }
  /// The font, or null. It lives as long as any copy of this handle.
  zFont* font() const { return body == nullptr ? nullptr : &body->font; }

  /// Two handles are equal when they share the font.
  friend bool operator==(const zRCFont& a, const zRCFont& b) { return a.body == b.body; }

 private:
  std::shared_ptr<ziRCFontImp> body;
};
