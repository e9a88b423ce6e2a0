#include "framework/controls/extra/window_scroll_bars.h"

#include "framework/layout/sizers.h"

namespace {

constexpr int kThickness = 16;

}  // namespace

zScrollBarVert::zScrollBarVert(zWindow* window, int id)
    : zScrollBarBase(window, new zGravSizer(kGravityRight, kThickness, window->sizer()),
                     kStyleHorzScroll | kScrollBarVertical, "", id, Belonging::toParent) {
  markClass(kClassScrollBarVert);
}

zScrollBarHorz::zScrollBarHorz(zWindow* window, int id)
    : zScrollBarBase(window, new zGravSizer(kGravityBottom, kThickness, window->sizer()),
                     kStyleHorzScroll, "", id, Belonging::toParent) {
  markClass(kClassScrollBarHorz);
}
