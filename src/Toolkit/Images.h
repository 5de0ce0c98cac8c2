// Converts pictures between the records' form and Qt's.
#pragma once

#include "Ports/Values/Image.h"

#include <QImage>

namespace korvane::platform {

// A copy with its own memory, because a pixmap made from it may live longer than the record. Null for an empty or
// malformed image.
QImage toQImage(const Image &image);
// Null for a null picture.
ImagePtr fromQImage(const QImage &picture);

}  // namespace korvane::platform
