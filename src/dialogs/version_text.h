#pragma once

/// "version patch-level " of the product, in one buffer of the process.
///
/// The patch level is read from a file that the reading itself empties, so it is always empty; a
/// file of that name is made or emptied if it can be. Intended.
const char* VersionText();

/// Writes the version line to standard output.
void PrintVersion();
