#pragma once

#include <cstdint>
#include <string>

struct ControlRecord;
class zSizer;
class zWindow;

/// The class names of controls that a dialog resource may ask for beside the built-in ones.

/// Makes a control in `parent`; the parent owns it. Position and size are given afterwards.
using zControlCreator = zWindow* (*)(zWindow* parent, int id, std::uint32_t style,
                                     const char* text);

/// Makes `name` known; `creator` may be null for a class that is known but cannot be made. A second
/// registration of a name replaces the first.
void registerControlClass(const std::string& name, zControlCreator creator = nullptr);

bool isControlClass(const std::string& name);

/// The creator of `name`; null when there is none or the name is unknown.
zControlCreator controlCreator(const std::string& name);

/// Makes the control that a dialog resource's record tells, in `parent`, which owns it, on `sizer`,
/// which the control takes. Null for a class that is not built in.
using zRecordControlMaker = zWindow* (*)(zWindow* parent, const ControlRecord& record,
                                         zSizer* sizer);

/// The maker that dialogs use; the folder of the controls gives it.
void setRecordControlMaker(zRecordControlMaker maker);
zRecordControlMaker recordControlMaker();
