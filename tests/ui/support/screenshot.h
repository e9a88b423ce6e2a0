#pragma once

#include <filesystem>

namespace ui {

/// Writes a picture of the whole screen as a binary PPM file. False when that failed.
bool writeScreenshot(const std::filesystem::path& file);

/// Makes each failing test leave a picture of the screen at its first failure, in the folder
/// "ui-failures" of the working folder.
void takePicturesOfFailures();

}  // namespace ui
