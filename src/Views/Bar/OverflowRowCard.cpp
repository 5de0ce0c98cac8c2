#include "Views/Bar/OverflowRowCard.h"

#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"
#include "Views/Kit/SymbolButton.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace korvane {

OverflowRowCard::OverflowRowCard(bool withControls, QWidget *parent) : QWidget(parent), tabs(new QWidget(this))
{
    tabs->setAccessibleName(QStringLiteral("Tasks"));
    if (!withControls)
        return;
    constexpr QSize size(Metrics::trayButtonWidth, Metrics::buttonHeight);
    refresh = new SymbolButton(size, this);
    refresh->setLook({.symbol = QStringLiteral("arrow.clockwise"), .text = {}, .size = Metrics::refreshSize});
    refresh->setTip(QStringLiteral("Refresh Tasks"));
    lock = new SymbolButton(size, this);
    setLocked(false);
}

void OverflowRowCard::setLocked(bool locked)
{
    if (!lock)
        return;
    lock->setLook({.symbol = locked ? QStringLiteral("lock.fill") : QStringLiteral("lock.open"),
                   .text = {},
                   .size = Metrics::lockSize});
    lock->setTip(locked ? QStringLiteral("Unlock overflow return") : QStringLiteral("Lock overflow return"));
}

void OverflowRowCard::setLook(const GroundLook &newLook)
{
    if (look == newLook)
        return;
    look = newLook;
    update();
}

void OverflowRowCard::arrange(const CardPlace &place, int mediaWidth)
{
    if (geometry() != place.shown)
        setGeometry(place.shown);
    if (rowHeight != place.rowHeight) {
        rowHeight = place.rowHeight;
        update();
    }
    if (const QRect area(0, 0, std::max(0, place.buffer.left()), static_cast<int>(std::lround(rowHeight)));
        tabs->geometry() != area)
        tabs->setGeometry(area);
    int right = place.buffer.right() + 1 - Metrics::bufferTrailingPadding;
    const auto take = [&](int width) {
        right -= width;
        return QRect(right, place.buffer.top(), width, place.buffer.height());
    };
    media = mediaWidth > 0 ? take(mediaWidth) : QRect();
    for (SymbolButton *control : {lock, refresh})
        if (control)
            if (const QRect rectangle = take(Metrics::trayButtonWidth); control->geometry() != rectangle)
                control->setGeometry(rectangle);
}

void OverflowRowCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintCard(painter, QRect(0, 0, width(), static_cast<int>(std::lround(rowHeight))), look);
}

}  // namespace korvane
