// Dialogs. The modal run nests the event loop, so everything may happen in it: other dialogs, a
// second run of the same one, the end of the application, the end of the dialog itself.

#include "framework/core/dialog_frame.h"

#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/interfaces.h"
#include "framework/core/resource_values.h"
#include "framework/core/x_settings.h"
#include "framework/draw/font.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/layout/sizers.h"
#include "resources/dialogs.h"

namespace {

constexpr int kPointTenths = 10;

// Of a dialog resource or of one of its records.
template <class Resource>
zDialogPlace placeOf(const Resource& from) {
  return {static_cast<int>(from.x), static_cast<int>(from.y), static_cast<int>(from.cx),
          static_cast<int>(from.cy)};
}

// What does something of its own on Return.
bool usesReturn(zWindow* window) {
  return window->isA(kClassPushButton) || window->isA(kClassDefPushButton) ||
         (window->isA(kClassEditBase) &&
          (window->style() & (kEditMultiLine | kEditReadOnly)) == kEditMultiLine);
}

}  // namespace

zDialogFrame::zDialogFrame(zWindow* parent, zSizer* sizer, std::uint32_t style)
    : zFrameWin(parent, sizer, style, ""), modality(style & kDialogModalityMask) {
  markClass(kClassDialogFrame);
  setClassName("DialogFrameCL");
  zDialogFrame::createWidgets();
  addHandler(this, toHandler(&zDialogFrame::onKey), kMsgKeyDown);
}

zDialogFrame::zDialogFrame(zWindow* parent, std::uint32_t resourceId, std::uint32_t style)
    : zDialogFrame(parent, new zSizer(0, 0, 1, 1), style) {
  const DialogResource* resource = findDialogResource(resourceId);
  if (resource == nullptr) {
    std::fprintf(stderr, "Error: Unable to find dialog resource for id=%d.\n",
                 static_cast<int>(resourceId));
    return;
  }
  fill(*resource);
}

zRect zDialogFrame::inPixels(const zDialogPlace& place) const {
  const zDialogUnit pos(place.x, place.y, *fontObject());
  const zDialogUnit size(place.width, place.height, *fontObject());
  return {{pos.width(), pos.height()}, size.size()};
}

zSizer* zDialogFrame::sizerAt(const zDialogPlace& place) const {
  const zRect rect = inPixels(place);
  return new zLeafSizer(rect.left, rect.top, rect.width(), rect.height());
}

void zDialogFrame::chooseFont(const DialogResource& resource) {
  const int points = dialogFontPoints(resource.fontSize, g_XSettings.incFontInDialogBy);
  const zPrPoint size(0, points * kPointTenths);
  setFont(zRCFont(zFontSpec(resource.fontName, size, kFontRegular)), 0);
}

void zDialogFrame::fill(const DialogResource& resource) {
  chooseFont(resource);
  const zRect place = inPixels(placeOf(resource));
  moveResize(place.left, place.top, place.width(), place.height());
  if (resource.caption != nullptr) {
    setCaption(resource.caption);
  }
  for (std::size_t i = 0; i < resource.itemCount; ++i) {
    const ControlRecord& record = resource.items[i];
    std::unique_ptr<zSizer> sizer(sizerAt(placeOf(record)));
    const zRecordControlMaker make = recordControlMaker();
    zWindow* control = make == nullptr ? nullptr : make(this, record, sizer.get());
    if (control == nullptr) {
      continue;
    }
    static_cast<void>(sizer.release());
    control->show();
  }
}

void zDialogFrame::setup(int flags) {
  const auto bits = static_cast<std::uint32_t>(flags);
  modality |= bits & kDialogModalityMask;
  if ((bits & ~kDialogModalityMask) != 0) {
    show();
  }
}

void zDialogFrame::show(int state) {
  // On the screen it comes with its run.
  zWindow::show(state);
}

int zDialogFrame::run(int fullModal, const std::function<void()>& onEnd) {
  zApp* app = zApp::instance();
  const zApp::ModalScope scope;
  const ziAlive alive(this);
  show();
  status = 0;
  if (isRunning()) {
    modalShell.raise();
  } else {
    popUp(fullModal);
  }
  Run thisRun{onEnd};
  runs.push_back(&thisRun);
  ++runDepth;
  app->pumpWhile([&] { return alive && !thisRun.isOver; });
  // The outer of two runs of one dialog may sleep.
  app->wake();
  if (!alive) {
    return kDialogGone;
  }
  --runDepth;
  if (!thisRun.isOver) {
    std::erase(runs, &thisRun);
    if (onEnd) {
      onEnd();
    }
  }
  return alive ? thisRun.result : kDialogGone;
}

void zDialogFrame::endRuns() {
  const ziAlive alive(this);
  // What is told of the end may run the dialog anew.
  const std::vector<Run*> ended = std::exchange(runs, {});
  for (Run* run : ended) {
    run->isOver = true;
    run->result = status;
  }
  for (const Run* run : ended) {
    if (alive && run->onEnd) {
      run->onEnd();
    }
  }
}

void zDialogFrame::endDialog() {
  const ziAlive alive(this);
  zEvent event = zEvent::of(kMsgClose);
  if (zDispatchHandlers(event, this) != 0 || !alive || close(&event) != 0 || !alive) {
    return;
  }
  closeOpenDropDown();
  if (!alive) {
    return;
  }
  popDown();
  zApp* app = zApp::instance();
  app->wake();
  const bool endsApplication = isMainWindow();
  endRuns();
  if (alive && hasState(kDeleteOnUnmap)) {
    delete this;
  }
  if (endsApplication) {
    app->stop();
  }
}

int zDialogFrame::endWith(int result) {
  status = result;
  endDialog();
  return 1;
}

void zDialogFrame::centre(bool overParent) {
  zRect own;
  getExterior(own);
  // A window without a frame yet will get one like that of the window that it belongs to.
  const zDimension frame = own.size() == clientSize(*this) ? decorationOfOwner() : zDimension{};
  const zDimension whole = {own.width() + frame.width, own.height() + frame.height};
  const zDimension screen = theScreen().size();
  zRect outer({}, screen);
  if (overParent && parent() != nullptr) {
    parent()->getExterior(outer);
  }
  const zPoint middle = {outer.left + (outer.width() - whole.width) / 2,
                         outer.top + (outer.height() - whole.height) / 2};
  const zPoint pos = keptInside(middle, whole, screen);
  moveResize(pos.x, pos.y, own.width(), own.height());
}

int zDialogFrame::press(zWindow* button) {
  if (button == nullptr || !button->isEnabled()) {
    return 0;
  }
  zEvent event = zEvent::of(kMsgCommand, button->id(), button);
  event.lparam = 0;
  zDispatch(event, this);
  return 1;
}

zWindow* zDialogFrame::buttonForReturn(zWindow* focused) {
  if (focused != nullptr && usesReturn(focused)) {
    return nullptr;
  }
  zWindow* byDefault = defaultButton();
  return byDefault != nullptr ? byDefault : childById(kDialogOk);
}

int zDialogFrame::onKey(zEvent* event) {
  if (event->wparam == kKeyReturn) {
    return press(buttonForReturn(event->window));
  }
  if (event->wparam != kKeyEscape) {
    return 0;
  }
  if (press(childById(kDialogCancel)) == 0) {
    endDialog();
  }
  return 1;
}

zFormDialog::zFormDialog(zWindow* parent, zSizer* sizer, std::uint32_t style)
    : zDialogFrame(parent, sizer, style) {
  markClass(kClassFormDialog);
}

zFormDialog::zFormDialog(zWindow* parent, std::uint32_t resourceId, std::uint32_t style)
    : zDialogFrame(parent, resourceId, style) {
  markClass(kClassFormDialog);
}

void zFormDialog::setup(int flags) {
  constexpr int kClicked = 0;
  if (zWindow* ok = childById(kDialogOk)) {
    ok->addCtrlHandler(this, toHandler(&zFormDialog::onOkClicked), kClicked);
  }
  if (zWindow* cancel = childById(kDialogCancel)) {
    cancel->addCtrlHandler(this, toHandler(&zFormDialog::onCancelClicked), kClicked);
  }
  zDialogFrame::setup(flags);
}

int zFormDialog::storeData() {
  status = storeChildren() != 0 ? 1 : 0;
  return status;
}

int zFormDialog::onOkClicked(zEvent* /*event*/) {
  if (storeData() != 0) {
    endDialog();
  }
  return 1;
}

int zFormDialog::onCancelClicked(zEvent* /*event*/) {
  return endWith(0);
}
