// Makes controls from the records of dialog resources.

#include "framework/controls/button.h"
#include "framework/controls/combo_box.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/controls/scroll_bar.h"
#include "framework/core/interfaces.h"
#include "resources/dialogs.h"

namespace {

// These kinds take part in keyboard traversal whether the record says so or not.
bool isAlwaysTabStop(std::uint32_t kind) {
  constexpr std::uint32_t kUnnamedKind = 13;
  return kind == kButtonRadio || kind == kButtonAutoRadio || kind == kUnnamedKind;
}

zWindow* makeButton(zWindow* parent, const ControlRecord& record, zSizer* sizer,
                    std::uint32_t style) {
  const int id = static_cast<int>(record.id);
  const std::uint32_t kind = style & kStyleSubtypeMask;
  if (isAlwaysTabStop(kind)) {
    style |= kStyleTabStop;
  }
  switch (kind) {
    case kButtonDefault:
      return new zDefPushButton(parent, sizer, style, record.text, id);
    case kButtonCheck:
    case kButtonAutoCheck:
      return new zCheckBox(parent, sizer, style, record.text, id);
    case kButtonGroup:
      return new zGroupBox(parent, sizer, style, record.text, id);
    case kButtonRadio:
    case kButtonAutoRadio:
      return new zRadioButton(parent, sizer, style, record.text, id);
    default:
      return new zPushButton(parent, sizer, style, record.text, id);
  }
}

zWindow* makeEdit(zWindow* parent, const ControlRecord& record, zSizer* sizer) {
  const int id = static_cast<int>(record.id);
  if ((record.style & kEditMultiLine) != 0) {
    return new zEditBox(parent, sizer, record.style, record.text, id);
  }
  return new zEditLine(parent, sizer, record.style, record.text, id);
}

zWindow* makeList(zWindow* parent, const ControlRecord& record, zSizer* sizer) {
  const int id = static_cast<int>(record.id);
  if ((record.style & kListMultiple) != 0) {
    return new zMultiList(parent, sizer, record.style, id);
  }
  if ((record.style & kListSorted) != 0) {
    return new zListBox(parent, sizer, record.style, id);
  }
  return new zListBoxUnsorted(parent, sizer, record.style, id);
}

zWindow* makeCombo(zWindow* parent, const ControlRecord& record, zSizer* sizer) {
  const int id = static_cast<int>(record.id);
  switch (record.style & kStyleSubtypeMask) {
    case kComboSimple:
      return new zComboBox(parent, sizer, record.style, id);
    case kComboDropDownStatic:
      return new zComboBoxStatic(parent, sizer, record.style, id);
    default:
      return new zComboBoxFull(parent, sizer, record.style, id);
  }
}

zWindow* makeRegistered(zWindow* parent, const ControlRecord& record, zSizer* sizer) {
  const zRecordControlMaker maker = registeredControlMaker(record.controlClass);
  return maker == nullptr ? nullptr : maker(parent, record, sizer);
}

zWindow* makeControl(zWindow* parent, const ControlRecord& record, zSizer* sizer) {
  switch (record.controlClass) {
    case kControlButton:
      return makeButton(parent, record, sizer, record.style);
    case kControlImageButton:
      return makeButton(parent, record, sizer, record.style | kButtonImage);
    case kControlEdit:
      return makeEdit(parent, record, sizer);
    case kControlStaticText:
      return new zStaticText(parent, sizer, record.style, record.text, static_cast<int>(record.id));
    case kControlListBox:
      return makeList(parent, record, sizer);
    case kControlScrollBar:
      return new zScrollBarCtrl(parent, sizer, record.style, record.text,
                                static_cast<int>(record.id));
    case kControlComboBox:
      return makeCombo(parent, record, sizer);
    default:
      return makeRegistered(parent, record, sizer);
  }
}

}  // namespace

void registerRecordControls() {
  setRecordControlMaker(makeControl);
}
