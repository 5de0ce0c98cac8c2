#include "Controllers/FadeEffect.h"

#include <QPainter>

namespace korvane {

void FadeEffect::setOpacity(double opacity)
{
    if (current == opacity)
        return;
    current = opacity;
    setEnabled(current < 1);
    if (current <= 0)
        picture = QPixmap();
    if (current < 1) {
        asked = true;
        update();
        asked = false;
    } else {
        picture = QPixmap();
    }
}

void FadeEffect::draw(QPainter *painter)
{
    if (current <= 0)
        return;
    if (picture.isNull())
        picture = sourcePixmap(Qt::DeviceCoordinates, &offset, NoPad);
    painter->save();
    painter->setWorldTransform(QTransform());
    painter->setOpacity(current);
    painter->drawPixmap(offset, picture);
    painter->restore();
}

// The widget would draw something else now, so the picture is useless.
void FadeEffect::sourceChanged(ChangeFlags)
{
    if (!asked)
        picture = QPixmap();
}

}  // namespace korvane
