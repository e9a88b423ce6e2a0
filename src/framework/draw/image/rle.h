#pragma once

#include "framework/draw/image/byte_reader.h"
#include "framework/draw/image/picture.h"

/// The run-length codings RLE4 and RLE8. Ends with the end-of-bitmap escape, with the data, or when
/// the rows leave the picture; runs are cut at its right edge. Pixels that nothing colours stay
/// blank.
void readRunLengthRows(ziByteReader& in, int bitsPerPixel, ziPicture& picture);
