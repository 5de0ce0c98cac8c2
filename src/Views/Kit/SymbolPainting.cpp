#include "Views/Kit/SymbolPainting.h"

#include "Toolkit/Symbols.h"

#include <QPaintDevice>
#include <QPainter>
#include <QPixmapCache>
#include <cmath>

namespace korvane {

QPixmap symbolPixmap(const QString &name, double size, double devicePixelRatio)
{
    const int side = static_cast<int>(std::ceil(size * devicePixelRatio));
    const QString key = QStringLiteral("korvane %1 %2 %3").arg(name).arg(side).arg(devicePixelRatio);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap::fromImage(platform::symbolImage(name.toStdString(), side, Qt::white));
        pixmap.setDevicePixelRatio(devicePixelRatio);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

void paintSymbol(QPainter &painter, const QString &name, const QRectF &place)
{
    const double ratio = painter.device()->devicePixelRatioF();
    const QPixmap symbol = symbolPixmap(name, place.width(), ratio);
    if (symbol.isNull())
        return;
    if (place.width() == place.height()) {
        // The toolkit puts a picture onto whole pixels when it need not scale it.
        painter.drawPixmap(place.topLeft(), symbol);
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, symbol, QRectF(symbol.rect()));
    painter.restore();
}

}  // namespace korvane
