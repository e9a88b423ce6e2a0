#pragma once

#include <string_view>
#include <vector>

#include "support/rwc_string.h"

/// The order of sorted lists, shared by list boxes and combo boxes: by the upper-case forms of the
/// texts, and between texts that are equal in these by the bytes of the texts themselves.

/// Whether the rows are known to stand in the order of sorted lists.
enum class ziRowOrder { kUnknown, kSorted };

/// True if `other` comes behind `text` in a sorted list.
bool sortsBefore(std::string_view text, std::string_view other);

/// The row at which `text` enters a list: that of the first row that is greater, else one behind
/// the last. Rows that are known to be sorted are halved, others are walked from the start; for
/// sorted rows both give the same.
int sortedPosition(std::string_view text, const std::vector<RWCString>& rows, ziRowOrder order);
