#include "framework/visuals/toolbar.h"

#include "framework/layout/grav_sizer.h"
#include "framework/visuals/bevel.h"

namespace {

constexpr const char* kButtonWidgetName = "BmpButton";
constexpr int kSpaceKey = ' ';

std::unique_ptr<zSizer> fill() {
  return std::make_unique<zGravSizer>(kGravityFill, 0);
}

}  // namespace

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

int ziVCBCtrlButton::keyArrived(zEvent& event, bool typed) {
  if (event.wparam == kSpaceKey) {
    button().press();
    return 1;
  }
  return ziCtrlBase::keyArrived(event, typed);
}

int ziVCBCtrlButton::keyReleased(zEvent* event) {
  if (event->wparam != kSpaceKey) {
    return 0;
  }
  button().click();
  return 1;
}

zToolButton::zToolButton(zWindow* parent, zSizer* sizer, int style, int id, zBitmap* bitmap)
    : ziVCBCtrlButton(parent, sizer, kStyleChild, static_cast<std::uint32_t>(style) | kBmpTool, "",
                      id, bitmap) {}

bool zToolButton::isEnabled() const {
  return ziVCBCtrlButton::isEnabled() && visualState() != kVisualDisabled;
}

zBitmapButton::zBitmapButton(zWindow* parent, zSizer* sizer, int style, const char* captionText,
                             int id, zBitmap* bitmap)
    : ziVCBCtrlButton(parent, sizer, kStyleChild | kStyleTabStop, static_cast<std::uint32_t>(style),
                      captionText, id, bitmap) {}
