// The widgets of a combo box and their places: board > row column > form > entry and arrow; the
// list is in a popup shell of its own or, in the simple kind, below the form.

#include <algorithm>

#include "framework/controls/combo_box.h"
#include "framework/controls/widgets_xm.h"
#include "framework/core/window_events_xm.h"

namespace {

constexpr zDimension kUnknownSize{100, 100};
constexpr int kArrowWidth = 20;
constexpr int kEntryMargin = 1;
// Room for the left half of the I-beam before the first letter.
constexpr int kEntrySideMargin = 4;
constexpr int kRowSpacing = 1;
// The entry's leftmost column of pixels, a half of its highlight. Before a window that is seen as a
// whole the toolkit looks for others, which takes it several questions to the server: at each step
// of a resize, and whenever the focus moves.
constexpr int kCutOff = 1;

int preferredHeight(Widget widget) {
  XtWidgetGeometry wanted;
  XtQueryGeometry(widget, nullptr, &wanted);
  return wanted.height;
}

}  // namespace

void zComboBoxBase::createParts() {
  Widget board = createHolder(HolderClass::board, kUnknownSize);
  rowColumn = XtVaCreateManagedWidget("RowColumn", xmRowColumnWidgetClass, board, XmNwidth,
                                      toWidgetExtent(sizer()->size().width), XmNresizeWidth, False,
                                      XmNresizeHeight, True, XmNmarginWidth, 0, XmNmarginHeight, 0,
                                      XmNspacing, kRowSpacing, nullptr);
  form = XtVaCreateManagedWidget("Form", xmFormWidgetClass, rowColumn, nullptr);
  if (!isSimple()) {
    createArrow();
  }
  createEntry();
  if (isSimple()) {
    createList(rowColumn);
  } else {
    createDropDown();
  }
  layOut();
  finishCreation(kKindCombo, inner, rowColumn);
}

void zComboBoxBase::createArrow() {
  arrow = XtVaCreateManagedWidget("ArrowButton", xmArrowButtonWidgetClass, form, XmNarrowDirection,
                                  XmARROW_DOWN, XmNtopAttachment, XmATTACH_FORM, XmNrightAttachment,
                                  XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM, XmNwidth,
                                  kArrowWidth, XmNnavigationType, XmEXCLUSIVE_TAB_GROUP,
                                  XmNtraversalOn, False, nullptr);
}

void zComboBoxBase::createEntry() {
  const bool isEditable = entryKind == Entry::editable;
  inner = XtVaCreateWidget(
      "Text", xmTextWidgetClass, form, XmNleftAttachment, XmATTACH_FORM, XmNleftOffset, -kCutOff,
      XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM, XmNrightAttachment,
      arrow != nullptr ? XmATTACH_WIDGET : XmATTACH_FORM, XmNrightWidget, arrow, XmNmarginWidth,
      kEntrySideMargin, XmNmarginHeight, kEntryMargin, XmNnavigationType, XmEXCLUSIVE_TAB_GROUP,
      XmNtraversalOn, isTabStop(style()), XmNeditable, isEditable, XmNcursorPositionVisible,
      isEditable, XmNverifyBell, False, nullptr);
}

void zComboBoxBase::createDropDown() {
  shell =
      XtVaCreatePopupShell("zAppComboShell", vendorShellWidgetClass, outerForm, XmNoverrideRedirect,
                           True, XmNsaveUnder, True, XmNallowShellResize, True, nullptr);
  listHolder = XtVaCreateWidget("BulletinBoard", xmBulletinBoardWidgetClass, shell, XmNmarginWidth,
                                0, XmNmarginHeight, 0, nullptr);
  createList(listHolder);
}

void zComboBoxBase::createList(Widget listParent) {
  Arg settings[] = {
      {xmText(XmNlistSizePolicy), XmCONSTANT},
      {xmText(XmNselectionPolicy), XmBROWSE_SELECT},
      {xmText(XmNtraversalOn), False},
  };
  listWidget =
      XmCreateScrolledList(listParent, xmText("ScrolledList"), settings, XtNumber(settings));
  // Managed from now on, though its holder is not, so that it knows how many rows it can show.
  XtManageChild(listWidget);
  rows.attach(listWidget);
}

// From the outside to the inside: each widget finds its room settled and asks for no other.
void zComboBoxBase::layOut() {
  textHeight = preferredHeight(inner);
  const zPoint pos = sizer()->pos();
  const int width = sizer()->size().width;
  const int listHeight = std::max(1, sizer()->size().height - textHeight);
  const int height = isSimple() ? textHeight + listHeight : textHeight;
  configureWidget(outerForm, pos.x, pos.y, width, height);
  configureWidget(rowColumn, 0, 0, width, height);
  configureWidget(form, 0, 0, width, textHeight);
  if (isSimple()) {
    configureWidget(XtParent(listWidget), 0, textHeight + kRowSpacing, width,
                    listHeight - kRowSpacing);
  } else {
    sizeList({width, listHeight});
  }
}

void zComboBoxBase::sizeList(const zDimension& size) {
  configureWidget(listHolder, 0, 0, size.width, size.height);
  configureWidget(XtParent(listWidget), 0, 0, size.width, size.height);
}

void zComboBoxBase::moveResize(int x, int y, int width, int height) {
  const zRect wanted(zPoint{x, y}, zDimension{width, height});
  if (wanted != sizer()->rect()) {
    const ziAlive alive(this);
    hideDropDown();
    if (!alive) {
      return;
    }
  }
  sizer()->setPos(wanted.pos());
  sizer()->setSize(wanted.size());
  layOut();
}

void zComboBoxBase::sizeChildren(zEvent* /*event*/) {
  // The sizer keeps the height of entry and list; the holder's own says nothing about it.
}

int zComboBoxBase::size(zEvent* /*event*/) {
  return 0;
}

void zComboBoxBase::setShowState(int state) {
  const ziAlive alive(this);
  if (state == kShowHide) {
    hideDropDown();
  }
  if (alive) {
    zControl::setShowState(state);
  }
}

void zComboBoxBase::applyFontToWidget() {
  zControl::applyFontToWidget();
  showFont(listWidget, fontObject());
  layOut();
}

void zComboBoxBase::applySensitivity(bool on) {
  XtSetSensitive(inner, on ? True : False);
  XtSetSensitive(isSimple() ? listWidget : arrow, on ? True : False);
  if (!on) {
    hideDropDown();
  }
}
