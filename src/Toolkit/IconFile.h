// Reads picture files from other people.
#pragma once

#include "Ports/Values/Image.h"

#include <QByteArray>
#include <filesystem>

namespace korvane::platform {

// The picture of an icon file, fitted into a transparent square of at most that many pixels. A smaller bitmap keeps its
// size. Null when the file is not a picture, and when it would cost too much to decode: a file above 4 MiB, a bitmap
// above 4096 pixels a side, a drawing that repeats itself without end. Compressed drawings are not read.
ImagePtr loadIconFile(const std::filesystem::path &file, int side);

// Does the same with the file's contents.
ImagePtr decodeIcon(const QByteArray &contents, int side);

}  // namespace korvane::platform
