#include "framework/visuals/status_item.h"

#include <algorithm>

#include "framework/draw/display.h"
#include "framework/layout/grav_sizer.h"
#include "framework/visuals/bevel.h"
#include "framework/visuals/status_line.h"

namespace {

constexpr int kFieldGap = 1;    // between fields
constexpr int kTextIndent = 4;  // from the field's edge
constexpr int kWidthMargin = 8;

}  // namespace

zStatusItem::zStatusItem(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style)
    : ziVisual(&line.visuals(), std::unique_ptr<zSizer>(sizer), style),
      statusLine(line),
      itemId(id) {
  line.addItem(this);
}

zStatusItem::~zStatusItem() {
  statusLine.removeItem(this);
}

zRect zStatusItem::field() const {
  return insetRect(rect(), kFieldGap);
}

void zStatusItem::redraw() {
  if (!statusLine.inMessageMode()) {
    paint();
  }
}

void zStatusItem::draw(zDisplay& display) {
  fillArea(display, rect(), kFaceColour);
  if ((style() & kStatusSunken) != 0) {
    drawBevel(display, field(), zBevel::kSunken);
  }
}

zStatusItemText::zStatusItemText(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style)
    : zStatusItem(line, sizer, id, style) {}

void zStatusItemText::setText(const RWCString& newText) {
  if (line().keepsForLater(*this, newText) || newText == string) {
    return;
  }
  string = newText;
  redraw();
}

void zStatusItemText::draw(zDisplay& display) {
  zStatusItem::draw(display);
  if (string.isEmpty()) {
    return;
  }
  zDimension size;
  display.textSize(size, string.c_str());
  const zRect inner = insetRect(field(), 1);
  const zPoint middle = centredIn(inner, size);
  const bool isCentred = (style() & kStatusCentred) != 0 && size.width <= inner.width();
  // A text that is too long is cut at the field's edge.
  display.intersectClip(inner);
  display.setTextMode(kTextTransparent);
  display.text(isCentred ? middle.x : inner.left + kTextIndent, middle.y, string.c_str());
  display.setTextMode(kTextOpaque);
  display.setClipRegion(nullptr);
}

void zStatusItemText::fitWidth(const std::vector<RWCString>& texts) {
  zDisplay* on = display();
  int widest = 0;
  on->lock();
  for (const RWCString& candidate : texts) {
    zDimension size;
    on->textSize(size, candidate.c_str());
    widest = std::max(widest, size.width);
  }
  on->unlock();
  if (sizer()->query(kSizerGrav) != nullptr) {
    static_cast<zGravSizer*>(sizer())->setExtent({widest + kWidthMargin, 0});
  }
}
