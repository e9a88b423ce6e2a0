#include "framework/draw/draw_obj.h"

#include "framework/draw/screen.h"

unsigned long zDrawObj::pixel() const {
  if (!known && theScreen().display != nullptr) {
    value = lookUpPixel();
    known = true;
  }
  return value;
}
