#pragma once

#include <cstdint>
#include <string>

struct ControlRecord;
class zSizer;
class zWindow;

/// How dialogs make the controls that their resources tell: the built-in classes, and further ones
/// that are registered by name.

/// Makes the control of a dialog resource's record in `parent`, which owns it, on `sizer`, which
/// the control takes. Null, with `sizer` untouched, for a class that it does not make.
using zRecordControlMaker = zWindow* (*)(zWindow* parent, const ControlRecord& record,
                                         zSizer* sizer);

/// Makes the class `name` known; the result is the number by which records ask for it. `maker` may
/// be null for a class that is known but cannot be made. A second registration of a name gives it
/// another maker.
std::uint32_t registerControlClass(const std::string& name, zRecordControlMaker maker = nullptr);

/// The maker of a registered class, by its number; null when there is none.
zRecordControlMaker registeredControlMaker(std::uint32_t controlClass);

/// The maker that dialogs use for all records; the folder of the controls gives it.
void setRecordControlMaker(zRecordControlMaker maker);
zRecordControlMaker recordControlMaker();
