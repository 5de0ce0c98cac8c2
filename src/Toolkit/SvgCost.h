// Estimates how much work it is to render a drawing, before it is rendered. A few nested references can stand for
// billions of elements.
#pragma once

#include <QByteArray>

namespace korvane::platform {

// The number of elements that rendering would visit, but no more than the limit. It is also the limit for a drawing
// that refers to itself, that nests too deeply or that is not well-formed XML.
int svgCost(const QByteArray &drawing, int limit);

}  // namespace korvane::platform
