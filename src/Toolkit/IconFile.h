// Reads a picture file that somebody else has made.
#pragma once

#include "Ports/Values/Image.h"

#include <QByteArray>
#include <filesystem>

namespace korvane::platform {

// The picture of an icon file, fitted into a transparent square of at most that many pixels; a smaller bitmap keeps its
// size. Null for what is no picture, and for what would cost too much to decode: files above 4 MiB, bitmaps above
// 4096 pixels a side, drawings that repeat themselves without end. Compressed drawings are not read.
ImagePtr loadIconFile(const std::filesystem::path &file, int side);

// The same from the file's contents.
ImagePtr decodeIcon(const QByteArray &contents, int side);

}  // namespace korvane::platform
