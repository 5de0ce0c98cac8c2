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

TEST(SymbolPainting, ASquareSymbolIsDrawnAlikeWhereverItFallsBetweenPixels)
{
    const QString name = QStringLiteral("arrow.down");
    for (const double ratio : {1.0, 2.0}) {
        const QImage whole = painted(ratio, name, {8, 6, 16, 16});
        ASSERT_FALSE(inked(whole).isEmpty());
        EXPECT_EQ(painted(ratio, name, {8 + 0.4 / ratio, 6 - 0.4 / ratio, 16, 16}), whole) << ratio;
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
