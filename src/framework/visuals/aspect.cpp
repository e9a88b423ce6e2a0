#include "framework/visuals/extra/more_visuals.h"

#include "framework/draw/display.h"

void ziPenAspect::apply(zDisplay& display) {
  display.pushPen(&pen);
}
void ziPenAspect::undo(zDisplay& display) {
  display.popPen();
}

void ziBrushAspect::apply(zDisplay& display) {
  display.setBrush(&brush);
}
void ziBrushAspect::undo(zDisplay& display) {
  display.popBrush();
}

void ziFontAspect::apply(zDisplay& display) {
  display.pushFont(spec);
}
void ziFontAspect::undo(zDisplay& display) {
  display.popFont();
}

void ziTextBackcolorAspect::apply(zDisplay& display) {
  before = display.setBackColour(backColour);
}
void ziTextBackcolorAspect::undo(zDisplay& display) {
  display.setBackColour(before);
}
