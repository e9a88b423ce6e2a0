#pragma once

#include <vector>

#include "support/rwc_string.h"

struct StringListNode;

/// The items that a question brings along.
using PromptItems = std::vector<RWCString>;

/// Copies of the texts from `head` on; null gives none.
PromptItems promptItems(const StringListNode* head);
