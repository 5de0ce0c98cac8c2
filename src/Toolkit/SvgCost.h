// How much a drawing would cost to render, told before it is rendered: a few references that nest can stand for
// billions of elements.
#pragma once

#include <QByteArray>

namespace korvane::platform {

// The number of elements that rendering would visit, but no more than the limit. The limit also for a drawing that
// refers to itself, nests too deeply or is no well-formed XML.
int svgCost(const QByteArray &drawing, int limit);

}  // namespace korvane::platform
