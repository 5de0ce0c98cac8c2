// The symbols on buttons and rows, in white.
#pragma once

#include <QPixmap>
#include <QRectF>
#include <QString>

class QPainter;

namespace korvane {

// In a square of that many points. It is made once and kept for a while; null for a name that has no drawing.
QPixmap symbolPixmap(const QString &name, double size, double devicePixelRatio);
// Fills the rectangle with the symbol. A square one is moved onto whole pixels, so that the lines stay sharp. Nothing
// for a name that has no drawing.
void paintSymbol(QPainter &painter, const QString &name, const QRectF &place);

}  // namespace korvane
