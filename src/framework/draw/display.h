#pragma once

#include <memory>
#include <vector>

#include "framework/draw/draw_obj.h"
#include "framework/draw/font.h"
#include "framework/draw/x_handles.h"

/// Results of the drawing operations.
enum zDrawResult : int { kDrawn = 0, kNotReady = 1 };

/// How far a display is.
enum zDrawState : int { kDrawStateMade = 1, kDrawStateReady = 2 };

/// Whether a text fills its background.
enum zTextMode : int { kTextOpaque = 1, kTextTransparent = 2 };

enum zArcKind : int { kArcLine = 0, kArcPie = 1, kArcChord = 2 };

/// A length that means: up to the terminating NUL. 0 means the same.
inline constexpr int kWholeText = 0xFFFF;

/// Bytes of `string` that `length` stands for.
int textLength(const char* string, int length);

/// A drawing surface: current pen, brush and font, clipping, and three X graphics contexts.
///
/// Every drawing sequence is bracketed by lock() and unlock(); the contexts come with the first
/// lock. Until the display is ready (a window: after its first expose) all drawing operations do
/// nothing and return kNotReady; before the first lock texts measure by kFallbackCharSize.
/// Coordinates are pixels, to which the origin is added. Pens and brushes stay the caller's and
/// must live until they are popped.
class zDisplay {
 public:
  zDisplay();
  zDisplay(const zDisplay&) = delete;
  zDisplay& operator=(const zDisplay&) = delete;
  virtual ~zDisplay();

  /// Nesting.
  void lock();
  void unlock();
  bool isReady() const { return state == kDrawStateReady; }

  // Shapes.
  /// Angles in degrees, anticlockwise from three o'clock. A pie or a chord is filled, then drawn.
  virtual int arcs(const zRect& box, int startAngle, int sweep, zArcKind kind);
  virtual int ellipse(const zRect& box);
  /// Where the next lineTo starts.
  void moveTo(int x, int y) { currentPoint = {x, y}; }
  virtual int lineTo(int x, int y);
  virtual int polyline(const std::vector<zPoint>& points);
  virtual int polygon(const std::vector<zPoint>& points);
  /// 0 even-odd, 1 winding; for polygon.
  virtual int setFillRule(int rule);
  virtual int rectangle(int left, int top, int right, int bottom);
  virtual int roundRect(const zRect& rect, const zDimension& corner);
  /// Fills the whole rectangle with `brush`, or with the current one.
  virtual int fillRect(const zRect& rect, zBrush* brush = nullptr);
  /// Outlines with the brush, one pixel outside the right and bottom edges.
  virtual int frameRect(const zRect& rect, zBrush* brush = nullptr);
  virtual int patternFill(const zRect& rect) { return fillRect(rect); }
  virtual int setPixel(int x, int y, const zColor& colour);
  /// kNotReady also where pixels cannot be read.
  virtual int getPixel(int x, int y, zColor& colour);
  /// Copies a part of a pixmap of the screen's depth.
  virtual int drawBitmap(Pixmap pixmap, const zRect& source, const zPoint& to);
  /// Copies a pixmap where `mask` (one bit deep; 0 for none) is set.
  virtual int copyIcon(Pixmap pixmap, Pixmap mask, const zDimension& size, const zPoint& to);

  // Text.
  /// (x, y) is the top left corner of the text.
  virtual int text(int x, int y, const char* string, int length = kWholeText);
  int centerText(const zRect& rect, const char* string, int length = kWholeText);
  virtual void textSize(zDimension& size, const char* string, int length = kWholeText);
  /// Both return the colour that was in force.
  virtual zColor setBackColour(const zColor& colour);
  zColor setTextColour(const zColor& colour);
  void setTextMode(zTextMode mode) { textMode = mode; }

  // Pen, brush, font.
  virtual void pushPen(zPen* pen);
  virtual void popPen();
  /// Pushes a brush, as pushPen does a pen.
  virtual void setBrush(zBrush* brush);
  virtual void popBrush();
  virtual void pushFont(const zFontSpec& spec);
  virtual void popFont();
  /// The font under all pushed ones; an empty handle gives stock font 14.
  void setFont(const zRCFont& font);
  virtual const zFontSpec& fontSpec() { return fontObject()->spec(); }
  /// The font in force, never null; the display's or its handle's.
  virtual zFont* fontObject();
  zPen* pen() { return penStack.isEmpty() ? &basePen : penStack.top(); }
  zBrush* brush() { return brushStack.isEmpty() ? &baseBrush : brushStack.top(); }
  /// X's raster operation; returns the one that was in force.
  virtual int setRop(int mode);
  virtual void setOrigin(const zPoint& newOrigin) { origin = newOrigin; }
  const zPoint& currentOrigin() const { return origin; }
  virtual void setStippleFrom(const zBrush& brush);

  // Clipping and extent, in pixels of the drawable.
  /// Takes a copy, cut to what is being painted; null removes the region. Result 0.
  virtual int setClipRegion(const zRegion* region);
  virtual int intersectClip(const zRect& rect);
  virtual void setClipOrigin(const zPoint& clipOrigin);
  /// What can be drawn on now.
  virtual void clipBounds(zRect& rect) { getInterior(rect); }
  /// The whole surface, from (0, 0).
  virtual void getInterior(zRect& rect) = 0;
  virtual void displayInterior(zRect& rect) { getInterior(rect); }

  virtual void flush();
  /// The context for copies within the drawable, the pen's; null before the first lock.
  GC copyContext() const { return currentGC; }
  virtual int reservedDisplayHook() { return 0; }
  /// Asks for a repaint, with the area cleared first if `erase` is not 0. Only windows have one. A
  /// null rectangle is the whole window.
  virtual void invalidate(const zRect* rect, int erase);
  virtual void invalidateRegion(const zRegion* region, int erase);

 protected:
  /// Makes the contexts, and whatever else a locked display needs. Called by the outermost lock.
  virtual void lockAttach() = 0;
  virtual void unlockDetach() {}

  /// Makes the contexts for `drawable`, whose background is `background`.
  void makeContexts(Display* display, XID drawable, unsigned long background);
  bool hasContexts() const { return currentGC != nullptr; }
  bool canDraw() const { return hasContexts() && state == kDrawStateReady; }
  /// Clips the three contexts; null for no clip.
  void clipContexts(const zRegion* region);
  void forgetClip();

  Display* xDisplay = nullptr;
  XID xWindow = 0;  ///< the drawable; 0 until known
  zDrawState state = kDrawStateMade;
  GC currentGC = nullptr;
  std::unique_ptr<zRegion> paintRegion;  ///< while a paint runs
  zColor backColour = kColorWhite;

 private:
  enum class WithDashes { kNo, kYes };

  void sendPen(WithDashes withDashes);
  void sendBrush();
  void sendFont();

  ziGcHandle penGC;
  ziGcHandle brushGC;
  ziGcHandle textGC;
  int lockCount = 0;
  zColor textColour = kColorBlack;
  zBrush baseBrush{kColorWhite};
  zBrushStack brushStack;
  zPen basePen{kColorBlack};
  zPenStack penStack;
  zRCFont baseFont;
  zFontStack fontObjects;  ///< pushed ones, owned
  int ropMode;
  zTextMode textMode = kTextOpaque;
  zPoint origin;
  zPoint currentPoint;
  int penWidthCache;
  int penStyleCache = kPenSolid;
  std::unique_ptr<zRegion> clipRegion;  ///< the user's
};
