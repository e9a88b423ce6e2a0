#include "framework/controls/static_text.h"

#include "framework/controls/label_xm.h"

namespace {

constexpr Dimension kBorder = 1;

}  // namespace

zStaticText::zStaticText(zWindow* parent, zSizer* sizer, std::uint32_t style,
                         const char* initialText, int id)
    : zControl(parent, sizer, style, initialText, id) {
  markClass(kClassStaticText);
  const unsigned char alignment =
      (style & kStaticCentred) != 0 ? XmALIGNMENT_CENTER : XmALIGNMENT_BEGINNING;
  const Dimension border = (style & kStyleBorder) != 0 ? kBorder : Dimension{0};
  const Boolean isTabStop = (style & kStyleTabStop) != 0 ? True : False;
  Widget label = XtVaCreateWidget("Label", xmLabelWidgetClass, createHolder(), XmNrecomputeSize,
                                  False, XmNalignment, alignment, XmNborderWidth, border,
                                  XmNtraversalOn, isTabStop, XmNmarginHeight, 0, nullptr);
  showLabelText(label, zWindow::text);
  finishCreation(kKindStatic, label);
}

void zStaticText::setText(const char* newText) {
  zControl::setText(newText);
  showLabelText(widget(), zWindow::text);
}

zDimension zStaticText::textSize() const {
  return labelTextSize(widget());
}
