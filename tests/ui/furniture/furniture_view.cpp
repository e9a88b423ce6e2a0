#include "tests/ui/furniture/window_furniture.h"

#include <X11/Xlib.h>

zBitmap* FurnitureTest::blueSquare() {
  auto* image = new zBitmap(16, 16);
  zBitmapDisplay canvas(*image);
  canvas.lock();
  zBrush grey(kColorLightGrey);
  zBrush blue(kBlue);
  canvas.fillRect(zRect({}, image->size()), &grey);
  canvas.fillRect(zRect(4, 4, 12, 12), &blue);
  canvas.unlock();
  return image;
}

Window FurnitureTest::rootWindow() {
  return DefaultRootWindow(ui::display());
}
