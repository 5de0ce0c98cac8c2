#include "Views/Kit/Painting.h"

#include <QImage>
#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>

namespace korvane {
namespace {

QImage roundedFill(double ratio, const QRect &place, int radius, const QColor &color)
{
    QImage image(QSize(60, 40) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintRoundedFill(painter, place, radius, color);
    return image;
}

// Without seams, on whole pixels, its corners cut.
void check(double ratio, const QRect &place, int radius, const QColor &color)
{
    SCOPED_TRACE(::testing::Message() << "scale " << ratio << ", at " << place.left() << ", radius " << radius);
    const QImage image = roundedFill(ratio, place, radius, color);
    const int left = static_cast<int>(std::lround(place.left() * ratio));
    const int top = static_cast<int>(std::lround(place.top() * ratio));
    const int right = static_cast<int>(std::lround((place.left() + place.width()) * ratio)) - 1;
    const int bottom = static_cast<int>(std::lround((place.top() + place.height()) * ratio)) - 1;
    const int corner = static_cast<int>(std::ceil(radius * ratio));
    for (int y = top; y <= bottom; ++y) {
        for (int x = left; x <= right; ++x) {
            const bool inCornerColumn = x < left + corner || x > right - corner;
            const bool inCornerRow = y < top + corner || y > bottom - corner;
            if (!(inCornerColumn && inCornerRow)) {
                ASSERT_EQ(qAlpha(image.pixel(x, y)), color.alpha()) << x << "," << y;
            }
        }
    }
    for (const QPoint at : {QPoint(left, top), QPoint(right, top), QPoint(left, bottom), QPoint(right, bottom)})
        EXPECT_LT(qAlpha(image.pixel(at)), color.alpha() / 2);
    for (const QPoint at : {QPoint(left + corner, top - 1), QPoint(left + corner, bottom + 1),
                            QPoint(left - 1, top + corner), QPoint(right + 1, top + corner)})
        EXPECT_EQ(qAlpha(image.pixel(at)), 0);
}

class RoundedFill : public ::testing::TestWithParam<double> {};

TEST_P(RoundedFill, StandsOnWholePixelsWithRoundCorners)
{
    const double ratio = GetParam();
    const QColor color(255, 255, 255, 33);
    for (const int radius : {4, 5, 6}) {
        for (int offset = 0; offset < 4; ++offset)
            check(ratio, QRect(4 + offset, 3 + offset, 40, 28), radius, color);
    }
}

TEST(Ground, AnOpacityIsThatOfTheWholeAndNotOfEachLayer)
{
    const auto topAlpha = [](double opacity) {
        QImage image(40, 34, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paintTaskbarBackground(painter, QRectF(0, 0, 40, 34), opacity, true);
        return qAlpha(image.pixel(20, 0));
    };
    EXPECT_NEAR(topAlpha(0.5), topAlpha(1) * 0.5, 1.5);
}

INSTANTIATE_TEST_SUITE_P(AtEachScale, RoundedFill, ::testing::Values(1.0, 1.25, 1.5, 1.75, 2.0));

}  // namespace
}  // namespace korvane
