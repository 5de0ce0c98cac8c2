#include "Views/Kit/Painting.h"

#include "Toolkit/Images.h"
#include "Views/Kit/Metrics.h"
#include "Views/Kit/TitleText.h"

#include <QFontDatabase>
#include <QLinearGradient>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <tuple>

namespace korvane {
namespace {

QColor white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity));
}

// The colour with black of that opacity over it.
QColor darkened(const QColor &color, double black)
{
    const double alpha = color.alphaF() + black - color.alphaF() * black;
    const double kept = alpha > 0 ? color.alphaF() * (1 - black) / alpha : 0;
    return QColor::fromRgbF(static_cast<float>(color.redF() * kept), static_cast<float>(color.greenF() * kept),
                            static_cast<float>(color.blueF() * kept), static_cast<float>(alpha));
}

void paintGround(QPainter &painter, const QRectF &rectangle, const QPainterPath &shape, double opacity,
                 bool translucent)
{
    // Without a compositor, pixels that are not drawn are black. A translucent background would only look darker.
    const double shown = translucent ? std::clamp(opacity, 0.0, 1.0) : 1.0;
    painter.save();
    painter.setOpacity(painter.opacity() * shown);
    // Black and the material are mixed into one colour. As two translucent layers they would be more opaque together
    // than the opacity says.
    QLinearGradient gradient(rectangle.topLeft(), rectangle.bottomLeft());
    const QColor &material = translucent ? Metrics::material : Metrics::opaqueMaterial;
    gradient.setColorAt(0, darkened(material, Metrics::gradientTopOpacity));
    gradient.setColorAt(1, darkened(material, Metrics::gradientBottomOpacity));
    painter.fillPath(shape, gradient);
    painter.restore();
}

void drawEndCap(QPainter &painter, const QRectF &rectangle)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(white(Metrics::endCapStroke), Metrics::cardStrokeWidth));
    painter.setBrush(white(Metrics::endCapFill));
    painter.drawRoundedRect(rectangle, Metrics::endCapRadius, Metrics::endCapRadius);
    painter.setPen(white(Metrics::endCapTextOpacity));
    painter.setFont(systemFont(Metrics::endCapFontSize));
    painter.drawText(rectangle, Qt::AlignCenter, QStringLiteral("_"));
    painter.restore();
}

void drawCard(QPainter &painter, const QRectF &rectangle, const GroundLook &look)
{
    // The rounded rectangle reaches below the card, and its lower corners are cut off there. So the card's lower
    // corners are square.
    const QRectF outline = rectangle.adjusted(0, 0, 0, Metrics::cardRadius);
    QPainterPath rounded;
    rounded.addRoundedRect(outline, Metrics::cardRadius, Metrics::cardRadius);
    QPainterPath card;
    card.addRect(rectangle);
    card = card.intersected(rounded);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paintGround(painter, rectangle, card, look.opacity, look.translucent);
    painter.strokePath(card, QPen(Metrics::cardStroke, Metrics::cardStrokeWidth));
    painter.restore();
    const QRectF cap(rectangle.right() - Metrics::endCapWidth,
                     rectangle.top() + (rectangle.height() - Metrics::endCapHeight) / 2, Metrics::endCapWidth,
                     Metrics::endCapHeight);
    drawEndCap(painter, cap.adjusted(0.5, 0.5, -0.5, -0.5));
}

}  // namespace

QColor toColor(const Rgb &color, double opacity)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
}

QFont systemFont(int size, bool bold)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(size);
    font.setBold(bold);
    return font;
}

void paintTaskbarBackground(QPainter &painter, const QRectF &rectangle, double opacity, bool translucent)
{
    QPainterPath shape;
    shape.addRect(rectangle);
    paintGround(painter, rectangle, shape, opacity, translucent);
}

void paintCard(QPainter &painter, const QRect &rectangle, const GroundLook &look)
{
    const double ratio = painter.deviceTransform().m11();
    constexpr int edge = Metrics::endCapWidth + 2, middle = 2;
    static_assert(edge > Metrics::cardRadius);
    if (ratio != std::floor(ratio) || rectangle.width() < 2 * edge + middle) {
        drawCard(painter, rectangle, look);
        return;
    }
    // One card is drawn once. Each card is put together from the two ends of that picture and its middle, which is the
    // same everywhere.
    const QSize size(2 * edge + middle, rectangle.height());
    const QString key = QStringLiteral("korvane card %1 %2 %3 %4")
                            .arg(size.height())
                            .arg(look.opacity)
                            .arg(look.translucent)
                            .arg(ratio);
    QPixmap card;
    if (!QPixmapCache::find(key, &card)) {
        card = QPixmap(size * ratio);
        card.setDevicePixelRatio(ratio);
        card.fill(Qt::transparent);
        QPainter once(&card);
        drawCard(once, QRectF(QPointF(), size), look);
        QPixmapCache::insert(key, card);
    }
    const auto piece = [&](int left, int width, int from, int fromWidth) {
        painter.drawPixmap(QRectF(left, rectangle.top(), width, size.height()), card,
                           QRectF(from * ratio, 0, fromWidth * ratio, size.height() * ratio));
    };
    const int right = rectangle.left() + rectangle.width() - edge;
    piece(rectangle.left(), edge, 0, edge);
    piece(rectangle.left() + edge, right - rectangle.left() - edge, edge, middle);
    piece(right, edge, edge + middle, edge);
}

void paintRoundedFill(QPainter &painter, const QRect &rectangle, int radius, const QColor &color)
{
    if (rectangle.width() < 2 * radius || rectangle.height() < 2 * radius) {
        painter.fillRect(rectangle, color);
        return;
    }
    const QTransform toPixels = painter.deviceTransform();
    const double ratio = toPixels.m11();
    if (ratio != std::floor(ratio)) {
        // Whole points are not whole pixels here, and separate pieces would overlap visibly. So it is one outline,
        // moved onto the pixels.
        const QRectF pixels(toPixels.mapRect(QRectF(rectangle)));
        const QPointF topLeft(std::round(pixels.left()), std::round(pixels.top()));
        const QPointF bottomRight(std::round(pixels.right()), std::round(pixels.bottom()));
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRoundedRect(toPixels.inverted().mapRect(QRectF(topLeft, bottomRight)), radius, radius);
        painter.restore();
        return;
    }
    static QPixmap disc;
    static std::tuple<int, QRgb, double> drawn;
    const std::tuple wanted(radius, color.rgba(), ratio);
    if (disc.isNull() || drawn != wanted) {
        drawn = wanted;
        disc = QPixmap(QSize(2 * radius, 2 * radius) * ratio);
        disc.setDevicePixelRatio(ratio);
        disc.fill(Qt::transparent);
        QPainter round(&disc);
        round.setRenderHint(QPainter::Antialiasing);
        round.setPen(Qt::NoPen);
        round.setBrush(color);
        round.drawEllipse(0, 0, 2 * radius, 2 * radius);
    }
    const int side = static_cast<int>(radius * ratio);
    const int right = rectangle.right() + 1 - radius, bottom = rectangle.bottom() + 1 - radius;
    painter.drawPixmap(rectangle.topLeft(), disc, QRect(0, 0, side, side));
    painter.drawPixmap(QPoint(right, rectangle.top()), disc, QRect(side, 0, side, side));
    painter.drawPixmap(QPoint(rectangle.left(), bottom), disc, QRect(0, side, side, side));
    painter.drawPixmap(QPoint(right, bottom), disc, QRect(side, side, side, side));
    const int inner = rectangle.width() - 2 * radius;
    painter.fillRect(rectangle.left() + radius, rectangle.top(), inner, radius, color);
    painter.fillRect(rectangle.left(), rectangle.top() + radius, rectangle.width(), rectangle.height() - 2 * radius,
                     color);
    painter.fillRect(rectangle.left() + radius, bottom, inner, radius, color);
}

void paintStrip(QPainter &painter, const QRectF &rectangle, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rectangle, rectangle.height() / 2, rectangle.height() / 2);
    painter.restore();
}

void paintIcon(QPainter &painter, const QRectF &square, const platform::ImagePtr &icon, const std::string &glyph,
               IconPixmaps &icons)
{
    if (!glyph.empty()) {
        painter.setFont(systemFont(static_cast<int>(square.width() * Metrics::glyphFontScale)));
        painter.drawText(square, Qt::AlignCenter, displayText(glyph));
        return;
    }
    const QPixmap pixmap = icons.pixmap(icon, static_cast<int>(square.width()), painter.device()->devicePixelRatioF());
    if (pixmap.isNull())
        return;
    const QSizeF size = pixmap.deviceIndependentSize();
    painter.drawPixmap(QPointF(square.center().x() - size.width() / 2, square.center().y() - size.height() / 2),
                       pixmap);
}

void paintNotificationMark(QPainter &painter, const NotificationMark &mark)
{
    const QColor red = toColor(*TabColors::storedTabColor("Red"), mark.opacity);
    const QRectF frame(mark.frame.x, mark.frame.y, mark.frame.width, mark.frame.height);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(red);
    switch (mark.shape) {
    case NotificationMark::Shape::corner: {
        QPainterPath corner(QPointF(frame.left() + mark.cornerRadius, frame.top()));
        corner.quadTo(frame.topLeft(), QPointF(frame.left(), frame.top() + mark.cornerRadius));
        corner.lineTo(frame.bottomLeft());
        corner.lineTo(frame.topRight());
        corner.closeSubpath();
        painter.drawPath(corner);
        break;
    }
    case NotificationMark::Shape::circle:
        painter.drawEllipse(frame);
        break;
    case NotificationMark::Shape::roundedRectangle:
        painter.drawRoundedRect(frame, mark.cornerRadius, mark.cornerRadius);
        break;
    case NotificationMark::Shape::line:
        painter.setPen(QPen(red, mark.lineWidth, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, mark.lineLength), QPointF(mark.lineLength, 0));
        break;
    }
    painter.restore();
}

QPixmap IconPixmaps::pixmap(const platform::ImagePtr &image, int size, double devicePixelRatio)
{
    if (!image)
        return {};
    const int side = static_cast<int>(std::lround(size * devicePixelRatio));
    const auto [entry, isNew] = entries.try_emplace(Key(image.get(), side));
    if (isNew) {
        const QImage picture = platform::toQImage(*image);
        entry->second.image = image;
        if (!picture.isNull()) {
            entry->second.pixmap =
                QPixmap::fromImage(picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
            entry->second.pixmap.setDevicePixelRatio(devicePixelRatio);
        }
        QPixmap made = entry->second.pixmap;
        if (entries.size() > forgetAt)
            forgetUnused();
        return made;
    }
    return entry->second.pixmap;
}

void IconPixmaps::forgetUnused()
{
    std::erase_if(entries, [](const auto &entry) { return entry.second.image.use_count() == 1; });
    forgetAt = std::max<std::size_t>(64, entries.size() * 2);
}

QPixmap pictureOnBar(QWidget &widget)
{
    const double ratio = widget.devicePixelRatioF();
    QPixmap picture(widget.size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Metrics::opaqueMaterial);
    QPainter painter(&picture);
    // Without the window's own ground, which is light.
    widget.render(&painter, {}, {}, QWidget::DrawChildren);
    return picture;
}

}  // namespace korvane
