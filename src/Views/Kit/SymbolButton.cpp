#include "Views/Kit/SymbolButton.h"

#include "Toolkit/Symbols.h"
#include "Views/Kit/Painting.h"
#include "Views/Kit/TitleText.h"

#include <QEnterEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>

namespace korvane {

SymbolButton::SymbolButton(const QSize &size, QWidget *parent) : QAbstractButton(parent), fixedSize(size)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    resize(size);
}

void SymbolButton::setLook(const Look &newLook)
{
    if (look == newLook)
        return;
    if (look.symbol != newLook.symbol || look.size != newLook.size)
        pixmap = QPixmap();
    look = newLook;
    update();
}

void SymbolButton::setTip(const QString &tip)
{
    if (toolTip() == tip)
        return;
    setToolTip(tip);
    setAccessibleName(tip);
}

void SymbolButton::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    Q_EMIT hoverChanged(true);
}

void SymbolButton::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    Q_EMIT hoverChanged(false);
}

bool SymbolButton::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainToolTip(toolTip()), this);
        return true;
    }
    return QAbstractButton::event(event);
}

const QPixmap &SymbolButton::symbolPixmap()
{
    const double ratio = devicePixelRatioF();
    if (pixmap.isNull() || pixmap.devicePixelRatio() != ratio) {
        const int side = static_cast<int>(std::ceil(look.size * ratio));
        pixmap = QPixmap::fromImage(platform::symbolImage(look.symbol.toStdString(), side, Qt::white));
        pixmap.setDevicePixelRatio(ratio);
    }
    return pixmap;
}

void SymbolButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setOpacity(look.opacity);
    if (look.symbol.isEmpty()) {
        painter.setPen(Qt::white);
        painter.setFont(systemFont(std::lround(look.size)));
        painter.drawText(rect(), Qt::AlignCenter, look.text);
        return;
    }
    const QPixmap &symbol = symbolPixmap();
    if (symbol.isNull())
        return;
    const QSizeF size(look.size, look.size * look.stretchY);
    const QPointF corner((width() - size.width()) / 2, (height() - size.height()) / 2);
    if (look.stretchY == 1) {
        // On whole pixels, so that the lines stay sharp.
        const double ratio = symbol.devicePixelRatio();
        painter.drawPixmap(QPointF(std::round(corner.x() * ratio) / ratio, std::round(corner.y() * ratio) / ratio),
                           symbol);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRectF(corner, size), symbol, QRectF(symbol.rect()));
}

}  // namespace korvane
