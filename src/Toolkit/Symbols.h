// The line drawings on buttons and in menus, drawn by us so that they look alike on every system.
#pragma once

#include <QColor>
#include <QImage>
#include <string_view>

namespace korvane::platform {

// The symbol of that name in one colour, fitted into a square of that many pixels and premultiplied. Null when no
// drawing has that name, and for a side outside 1 to 1024. Each call renders the symbol again, so keep symbols that are
// shown often.
QImage symbolImage(std::string_view name, int side, const QColor &color);

}  // namespace korvane::platform
