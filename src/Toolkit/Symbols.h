// The line drawings on buttons and in menus, drawn by us so that they look alike on every system.
#pragma once

#include <QColor>
#include <QImage>
#include <string_view>

namespace korvane::platform {

// The symbol of that name in one colour, fitted into a square of that many pixels and premultiplied. Null for a name
// that has no drawing and for a side outside 1 to 1024. Renders anew at each call: keep what is shown often.
QImage symbolImage(std::string_view name, int side, const QColor &color);

}  // namespace korvane::platform
