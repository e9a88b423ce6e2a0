#pragma once

#include <filesystem>
#include <string>

namespace tester_link {

/// Whether a window that is told of the folder finds a button set there; otherwise it asks for one.
bool hasButtons(const std::filesystem::path& folder);

/// The folder with the shipped button set of that name, for systems that have none: a copy in the
/// user's own files, since the window works where its buttons are, and saves them there. Empty
/// where there is no such set.
std::string usualButtonFolder(const std::string& set);

/// Keeps in `own` a copy of the set in `shipped`, as it is now unless the user has changed the
/// copy. The folder to use: `shipped` where there can be no copy, none where there is no set.
std::filesystem::path copiedButtons(const std::filesystem::path& shipped,
                                    const std::filesystem::path& own);

}  // namespace tester_link
