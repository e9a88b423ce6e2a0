#pragma once

// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.

#include <optional>

#include "framework/draw/res_id.h"

/// What resourceGet() and resourceSize() ask when a resource is not looked for in the built-in
/// table.

bool usesResourceFile(const zResId& resource);
/// Null if the file is none or does not hold it.
const void* resourceFromFile(const zResId& resource, int type);
/// Nothing for data that are not from a file.
std::optional<std::size_t> sizeFromFile(const void* data);
