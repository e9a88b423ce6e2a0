#include "dialogs/icon_pane.h"

#include <utility>

void IconPane::setIcon(std::unique_ptr<zIcon> newIcon) {
  icon = std::move(newIcon);
  invalidate(nullptr, 1);
}

int IconPane::draw(zEvent* /*event*/) {
  display()->lock();
  if (icon != nullptr) {
    display()->copyIcon(icon->pixmap(), icon->mask(), icon->size(), {0, 0});
  }
  display()->unlock();
  return 1;
}
