#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "framework/draw/image/ico.h"
#include "framework/draw/image/picture.h"
#include "framework/draw/x_handles.h"

/// From decoded pictures to the X server.

/// The picture in a pixmap of the screen's depth; empty without a display or a picture. Only
/// colours that pixels use are asked for; blank pixels are 0.
ziPixmapHandle pixmapOf(const ziPicture& picture);

/// A pixmap of the screen's depth and of undefined contents; empty without a display or for a size
/// that is not acceptable.
ziPixmapHandle blankPixmap(int width, int height);

/// A pixmap one bit deep; empty without a display or a picture.
ziPixmapHandle bitPixmapOf(const ziBitRows& rows);

/// Passes each message on to drawMessage().
void reportMessages(const ziMessages& messages);

/// Reads a picture's file. Nothing, with a message that begins with `reader` ("zIcon::zIcon"), if
/// it cannot be. What lies beyond 64 MiB is left out.
std::optional<std::vector<std::uint8_t>> readPictureFile(const char* reader, const char* fileName);
