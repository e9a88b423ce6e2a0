#include "framework/visuals/toolbar.h"

#include "framework/core/frame.h"
#include "framework/core/notify.h"
#include "framework/layout/sizers.h"
#include "framework/visuals/bevel.h"
#include "framework/visuals/extra/more_visuals.h"

namespace {

constexpr std::uint32_t kBarBorderStyle = ziVisPanelInternal::kRaisedEdge;

// The line falls on the side that faces the frame's inside.
std::uint32_t edgeFor(int gravity) {
  switch (gravity) {
    case kGravityLeft:
      return kToolbarLineRight;
    case kGravityRight:
      return kToolbarLineLeft;
    case kGravityTop:
      return kToolbarLineBottom;
    case kGravityBottom:
      return kToolbarLineTop;
    default:
      return 0;
  }
}

zFrameWin* frameAbove(zWindow* window) {
  while (window != nullptr && !window->isA(kClassFrameWin)) {
    window = window->parent();
  }
  return windowCast<zFrameWin>(window);
}

constexpr const char* kButtonWidgetName = "BmpButton";

std::unique_ptr<zSizer> fill() {
  return std::make_unique<zGravSizer>(kGravityFill, 0);
}

}  // namespace

zToolbar::zToolbar(zWindow* parent, zSizer* sizer, int style, zMenuLink* link)
    : ziVisualPane(parent, sizer, kStyleChild, -1),
      layout(std::make_unique<zSlotLayout>()),
      menuLink(link),
      barStyle(static_cast<std::uint32_t>(style)) {
  this->sizer()->setLayout(layout.get());
  if (has(kToolbarBorder)) {
    border = std::make_unique<ziVisPanelInternal>(
        nullptr, std::make_unique<zSizer>(zPoint{}, this->sizer()->size()), kBarBorderStyle);
  }
  setBackground(kFaceColour);
  if (has(kToolbarEdgeByGravity)) {
    barStyle |= edgeFor(this->sizer()->gravity());
  }
}

zToolbar::~zToolbar() {
  border.reset();
  menuLink.reset();
  // The sizer outlives the layout.
  sizer()->setLayout(nullptr);
}

int zToolbar::draw(zEvent* event) {
  display()->lock();
  zRect interior;
  getInterior(interior);
  // Lines that stood at the edges before a change of the size go.
  fillArea(*display(), interior, backgroundColour());
  if (border != nullptr) {
    border->draw(*display());
  } else {
    drawLines(*display());
  }
  ziVisualPane::draw(event);
  display()->unlock();
  return 0;
}

void zToolbar::drawLines(zDisplay& on) {
  zPen pen(kStockBlackPen);
  on.pushPen(&pen);
  zRect area;
  getInterior(area);
  const int right = area.right - 1;
  const int bottom = area.bottom - 1;
  if (has(kToolbarLineBottom)) {
    on.polyline({{area.left, bottom}, {right, bottom}});
  }
  if (has(kToolbarLineTop)) {
    on.polyline({{area.left, area.top}, {right, area.top}});
  }
  if (has(kToolbarLineRight)) {
    on.polyline({{right, area.top}, {right, bottom}});
  }
  if (has(kToolbarLineLeft)) {
    on.polyline({{area.left, area.top}, {area.left, bottom}});
  }
  on.popPen();
}

int zToolbar::handle(zEvent* event) {
  const ziAlive alive(this);
  if (event->message == kMsgCommand && forwardCommand(*event) != 0) {
    return 1;
  }
  return alive ? ziVisualPane::handle(event) : 1;
}

int zToolbar::forwardCommand(zEvent& event) {
  zFrameWin* frame = frameAbove(parent());
  if (frame == nullptr) {
    return 0;
  }
  const ziAlive alive(frame);
  if (frame->menu() != nullptr && frame->menu()->dispatch(&event) != 0) {
    return 1;
  }
  return alive ? zDispatch(event, frame) : 1;
}

int zToolbar::size(zEvent* event) {
  if (border != nullptr) {
    border->sizer()->setSize(sizer()->size());
  }
  return ziVisualPane::size(event);
}

ziCtrlBase::ziCtrlBase(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* captionText,
                       int id)
    : ziVisualCtrlPane(parent, sizer, style, captionText, id, kButtonWidgetName) {
  setBackground(kFaceColour);
}

void ziCtrlBase::createVisuals(std::uint32_t buttonStyle, zBitmap* bitmap,
                               const char* captionText) {
  visual = new ziVisBmpButtonInternal(&visuals(), fill(), buttonStyle, id(), bitmap,
                                      ziVisBmpButtonInternal::Ownership::kOwned);
  visual->setCaption(new ziVisText3dBmp(&visuals(), fill(), captionText, buttonStyle));
}

int ziCtrlBase::enable() {
  visual->setEnabled(true);
  return ziVisualCtrlPane::enable();
}

int ziCtrlBase::disable() {
  visual->setEnabled(false);
  return ziVisualCtrlPane::disable();
}

ziVCBCtrlButton::ziVCBCtrlButton(zWindow* parent, zSizer* sizer, std::uint32_t style,
                                 std::uint32_t buttonStyle, const char* captionText, int id,
                                 zBitmap* bitmap)
    : ziCtrlBase(parent, sizer, style, captionText, id) {
  createVisuals(buttonStyle, bitmap, captionText);
  addPlainHandler(this, toHandler(&ziVCBCtrlButton::keyReleased), kMsgKeyUp);
}

zToolButton::zToolButton(zWindow* parent, zSizer* sizer, int style, int id, zBitmap* bitmap)
    : ziVCBCtrlButton(parent, sizer, kStyleChild, static_cast<std::uint32_t>(style) | kBmpTool, "",
                      id, bitmap) {}

bool zToolButton::isEnabled() const {
  return ziVCBCtrlButton::isEnabled() && visualState() != kVisualDisabled;
}
