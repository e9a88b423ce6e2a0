#pragma once

#include <string>

#include "framework/draw/image/picture.h"
#include "framework/draw/res_id.h"
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

/// The message that a resource of the kind "icon" for a "zIcon" is not there.
std::string unableToFind(const char* className, const char* kind, const zResId& resource);
