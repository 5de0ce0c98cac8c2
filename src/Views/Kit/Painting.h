// Shapes that several views draw.
#pragma once

#include "Models/Tasks/NotificationMark.h"
#include "Models/Tasks/TabColors.h"
#include "Ports/Values/Image.h"
#include "Views/Kit/GroundLook.h"

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QRectF>
#include <map>
#include <utility>

class QPainter;

class QWidget;

namespace korvane {

QColor toColor(const Rgb &color, double opacity = 1);
// The system's font at that many points. A point is one device-independent pixel.
QFont systemFont(int size, bool bold = false);

// The bar's dark background. It is opaque when the desktop can't shine through.
void paintTaskbarBackground(QPainter &painter, const QRectF &rectangle, double opacity, bool translucent);
// The same background with rounded upper corners, a hairline around it, and the cap at its end.
void paintCard(QPainter &painter, const QRect &rectangle, const GroundLook &look);
// A rectangle with rounded corners, on whole points. It is made of plain fills and four small pictures. This is far
// cheaper than an outline; a full bar would need hundreds of outlines.
void paintRoundedFill(QPainter &painter, const QRect &rectangle, int radius, const QColor &color);
// A capsule.
void paintStrip(QPainter &painter, const QRectF &rectangle, const QColor &color);

// Paints a group's icon: its glyph as text if it has one, otherwise its picture.
class IconPixmaps;
void paintIcon(QPainter &painter, const QRectF &square, const platform::ImagePtr &icon, const std::string &glyph,
               IconPixmaps &icons);

void paintNotificationMark(QPainter &painter, const NotificationMark &mark);

// Pictures, scaled once for each size at which they are drawn. They are forgotten with the last record that holds them.
class IconPixmaps {
public:
    // `size` in points. A null pixmap for a null picture.
    QPixmap pixmap(const platform::ImagePtr &image, int size, double devicePixelRatio);

private:
    void forgetUnused();

    using Key = std::pair<const platform::Image *, int>;  // the picture and its side in pixels
    struct Entry {
        platform::ImagePtr image;
        QPixmap pixmap;
    };
    std::map<Key, Entry> entries;
    std::size_t forgetAt = 64;
};

// The widget as it stands on a bar, on the bar's ground, which the widget itself leaves to its row.
QPixmap pictureOnBar(QWidget &widget);

}  // namespace korvane
