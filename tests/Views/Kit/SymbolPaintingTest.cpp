#include "Views/Kit/SymbolPainting.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace korvane {
namespace {

QImage painted(double ratio, const QString &name, const QRectF &place)
{
    QImage image(QSize(40, 40) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintSymbol(painter, name, place);
    return image;
}

// The pixels that are not empty.
QRect inked(const QImage &image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0)
                area |= QRect(x, y, 1, 1);
    return area;
}

// The pixels of the symbol itself, at the nearest whole ones.
QImage sharp(double ratio, const QString &name, const QRectF &place)
{
    QImage symbol = symbolPixmap(name, place.width(), ratio).toImage();
    symbol.setDevicePixelRatio(1);
    QImage image(QSize(40, 40) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter(&image).drawImage(QPointF(place.topLeft() * ratio).toPoint(), symbol);
    image.setDevicePixelRatio(ratio);
    return image;
}

TEST(SymbolPainting, ASquareSymbolStaysSharpAtEveryScaleAndPlace)
{
    const QString name = QStringLiteral("arrow.down");
    for (const double ratio : {1.0, 1.25, 1.5, 2.0})
        for (const double size : {8.0, 11.0, 13.0})
            for (const double offset : {0.0, 0.2, 0.4, 0.6, 0.8}) {
                const QRectF place(8 + offset, 6 - offset, size, size);
                const QImage image = painted(ratio, name, place);
                ASSERT_FALSE(inked(image).isEmpty());
                EXPECT_EQ(image, sharp(ratio, name, place)) << ratio << " " << size << " " << offset;
            }
}

TEST(SymbolPainting, AnotherShapeThanASquareIsFilled)
{
    const QString name = QStringLiteral("arrow.down");
    const QRect square = inked(painted(1, name, {4, 4, 16, 16})), tall = inked(painted(1, name, {4, 4, 16, 32}));
    EXPECT_GT(tall.height(), square.height() * 3 / 2);
    EXPECT_NEAR(tall.width(), square.width(), 1);
}

TEST(SymbolPainting, AnUnknownNameDrawsNothing)
{
    EXPECT_TRUE(inked(painted(1, QStringLiteral("no.such.symbol"), {4, 4, 16, 16})).isEmpty());
    EXPECT_TRUE(symbolPixmap(QStringLiteral("no.such.symbol"), 16, 1).isNull());
}

}  // namespace
}  // namespace korvane
