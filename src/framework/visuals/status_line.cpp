// The status line. Fields are visuals; the line itself draws its edges and, where no field is
// named for it, the help text. While help shows (the message mode), fields change without drawing.

#include "framework/visuals/status_line.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "framework/core/frame.h"
#include "framework/core/notify.h"
#include "framework/draw/measure.h"
#include "framework/draw/res_id.h"
#include "framework/draw/x_font_xm.h"
#include "framework/layout/sizers.h"
#include "framework/menus/menu_item.h"
#include "framework/visuals/bevel.h"
#include "framework/visuals/status_item.h"

namespace {

constexpr const char* kDefaultFace = "Helv";
constexpr int kDefaultTenths = 120;  // of a point
constexpr int kEdge = 2;             // the two lines at the top
constexpr int kFieldRoom = 8;        // a field's gaps, edges and air, above and below its text
constexpr int kMessageIndent = 6;
constexpr int kNoId = -1;
constexpr int kSystemMenuItem = 0x2000;  // in `extra` of a selection

zRCFont fontFor(const zFontSpec& spec) {
  if (!(spec == zFontSpec())) {
    return zRCFont(spec);
  }
  const zPrPoint size(0, kDefaultTenths);
  return zRCFont(zFontSpec(kDefaultFace, size.size(), kFontNormal));
}

bool isFrameName(const RWCString& name) {
  constexpr std::array kNames = {"AppFrameCL", "DialogFrameCL", "MDIframeCL",
                                 "MDIchildCL", "MDIdialogCL",   "zChildFrameCL"};
  return std::any_of(kNames.begin(), kNames.end(), [&](const char* frame) {
    return std::strncmp(name.c_str(), frame, std::strlen(frame)) == 0;
  });
}

}  // namespace

zStatusLine::zStatusLine(zWindow* parent, zSizer* sizer, std::uint32_t style, int id,
                         const zFontSpec& spec)
    : ziVisualPane(parent, sizer, style | kStyleChild, id),
      onFrame(isFrameName(parent->className())),
      lineFont(fontFor(spec)) {
  ziVisualPane::setFont(lineFont, 0);
  setBackground(kFaceColour);
  if (this->sizer()->query(kSizerGrav) != nullptr) {
    auto* strip = static_cast<zGravSizer*>(this->sizer());
    if (strip->extent() == zDimension()) {
      strip->setExtent({0, neededHeight()});
    }
  }
  zFrameWin* frame = onFrame ? windowCast<zFrameWin>(parent) : nullptr;
  setHelpMenu(frame == nullptr ? nullptr : frame->menu());
}

zStatusLine::~zStatusLine() {
  setHelpMenu(nullptr);
  // Items take themselves out of the list.
  while (zStatusItem* last = items.popBack()) {
    delete last;
  }
}

int zStatusLine::neededHeight() {
  const ziXFont* loaded = lineFont.font()->xFont();
  return kEdge + kFieldRoom + (loaded == nullptr ? kFallbackCharSize : loaded->height());
}

void zStatusLine::setFont(const zRCFont& /*newFont*/, int /*redraw*/) {}

zRect zStatusLine::visualArea() {
  zRect area = ziVisualPane::visualArea();
  area.top = std::min(area.top + kEdge, area.bottom);
  return area;
}

void zStatusLine::addItem(zStatusItem* item) {
  items.append(item);
  itemsChanged();
}

void zStatusLine::removeItem(const zStatusItem* item) {
  items.remove(item);
  helpItem = helpItem == item ? nullptr : helpItem;
}

bool zStatusLine::keepsForLater(const zStatusItem& item, const RWCString& newText) {
  if (!messageMode || helpItem != &item) {
    return false;
  }
  savedText = newText;
  return true;
}

void zStatusLine::itemsChanged() {
  visuals().sizer()->update(nullptr);
  invalidate(nullptr, 0);
}

zStatusItem* zStatusLine::itemById(int itemId) {
  zStatusItemDList::Iter walk(items);
  while (zStatusItem* item = walk.next()) {
    if (item->id() == itemId) {
      return item;
    }
  }
  return nullptr;
}

zStatusItemText* zStatusLine::textItem(int slot) {
  zStatusItemDList::Iter walk(items);
  while (zStatusItem* item = walk.next()) {
    if (item->takesText() && slot-- == 0) {
      return static_cast<zStatusItemText*>(item);
    }
  }
  return nullptr;
}

void zStatusLine::setText(int slot, const RWCString& newText) {
  if (zStatusItemText* item = textItem(slot); item != nullptr) {
    item->setText(newText);
  }
}

RWCString zStatusLine::textAt(int slot) {
  const zStatusItemText* item = textItem(slot);
  return item == nullptr ? RWCString() : item->text();
}

int zStatusLine::draw(zEvent* event) {
  display()->lock();
  zRect interior;
  getInterior(interior);
  fillArea(*display(), interior, backgroundColour());
  drawEdges();
  if (messageMode && helpTarget == kHelpWholeLine) {
    zDimension size;
    display()->textSize(size, message.c_str());
    drawText(*display(), {kMessageIndent, centredIn(visualArea(), size).y}, message);
  } else {
    ziVisualPane::draw(event);
  }
  display()->unlock();
  return 0;
}

void zStatusLine::drawEdges() {
  zRect area;
  getInterior(area);
  int y = area.top;
  for (const zColor& colour : {kColorBlack, kColorWhite}) {
    drawLines(*display(), colour, {{area.left, y}, {area.right - 1, y}});
    ++y;
  }
}

void zStatusLine::setHelpMenu(zDevice* menu) {
  const zHandler handler = toHandler(&zStatusLine::menuSelected);
  if (helpMenu != nullptr && !helpMenuLife.expired()) {
    helpMenu->removeHandler(this, handler, kMsgMenuSelect, 0);
  }
  helpMenu = menu;
  if (helpMenu != nullptr) {
    helpMenuLife = helpMenu->life();
    helpMenu->addHandler(this, handler, kMsgMenuSelect);
  }
}

void zStatusLine::setHelpTable(int itemId, const zHelpText* table) {
  menuClosed();
  helpTable = table;
  zStatusItem* item = itemById(itemId);
  helpItem = item != nullptr && item->takesText() ? static_cast<zStatusItemText*>(item) : nullptr;
  helpTarget = kHelpItem;
}

int zStatusLine::menuSelected(zEvent* event) {
  constexpr int kNotExplained = kItemSeparator | kItemSubMenu | kSystemMenuItem;
  if (event->lparam == kMenuClosed) {
    menuClosed();
    return 0;
  }
  if ((event->extra & kNotExplained) != 0) {
    return 0;
  }
  if (!messageMode) {
    messageMode = true;
    savedText = helpItem == nullptr ? RWCString() : helpItem->text();
  }
  showHelp(helpFor(static_cast<int>(event->wparam)));
  return 0;
}

void zStatusLine::menuClosed() {
  if (!messageMode) {
    return;
  }
  messageMode = false;
  if (helpTarget == kHelpItem && helpItem != nullptr) {
    helpItem->setText(savedText);
  }
  // What changed under the help, such as the time, was not drawn.
  invalidate(nullptr, 0);
}

RWCString zStatusLine::helpFor(int commandId) const {
  if (helpTable == nullptr || helpTable->text == nullptr) {
    const ziResource help(zResId(static_cast<std::uint32_t>(helpBase + commandId)),
                          kResourceString);
    return help ? RWCString(static_cast<const char*>(help.data())) : RWCString();
  }
  const zHelpText* row = helpTable;
  while (row->text != nullptr && row->id != commandId) {
    ++row;
  }
  return row->text;
}

void zStatusLine::showHelp(const RWCString& help) {
  if (helpTarget == kHelpWholeLine) {
    message = help;
    invalidate(nullptr, 0);
  } else if (helpItem != nullptr) {
    // Out of the message mode for a moment, so that the item draws.
    messageMode = false;
    helpItem->setText(help);
    messageMode = true;
  }
}

zStatusLineEZ::zStatusLineEZ(zWindow* parent, zSizer* sizer, std::uint32_t style, int id,
                             const zFontSpec& spec)
    : zStatusLine(parent, sizer, style, id, spec) {
  // The first one stands at the right edge, the next ones before it.
  const auto strip = [] { return new zGravSizer(kGravityRight, 0); };
  if ((style & kClock) != 0) {
    new zStatusClock(*this, strip(), kNoId);
  }
  if ((style & kCapsLock) != 0) {
    new zStatusCapsLock(*this, strip(), kNoId);
  }
  if ((style & kNumLock) != 0) {
    new zStatusNumLock(*this, strip(), kNoId);
  }
}
