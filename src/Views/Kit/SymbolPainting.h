// The symbols on buttons and rows, in white.
#pragma once

#include <QPixmap>
#include <QRectF>
#include <QString>

class QPainter;

namespace korvane {

// The symbol in a square of that many points. The picture is made once and kept for a while. Null when no drawing has
// that name.
QPixmap symbolPixmap(const QString &name, double size, double devicePixelRatio);
// Fills the rectangle with the symbol. A square symbol is moved onto whole pixels, so that its lines stay sharp. Does
// nothing when no drawing has that name.
void paintSymbol(QPainter &painter, const QString &name, const QRectF &place);

}  // namespace korvane
