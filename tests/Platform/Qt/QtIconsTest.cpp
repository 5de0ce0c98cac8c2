#include "Platform/Qt/QtIcons.h"

#include "Toolkit/Images.h"
#include "Toolkit/Symbols.h"
#include "tests/Ports/IconsContract.h"

#include <algorithm>

namespace korvane::platform {

INSTANTIATE_TEST_SUITE_P(Qt, IconsContract,
                         testing::Values([]() -> std::unique_ptr<Icons> { return std::make_unique<QtIcons>(); }));

TEST(Symbols, EverySymbolOfTheInterfaceIsDrawn)
{
    for (const char *name : {"app",
                             "arrow.clockwise",
                             "arrow.down",
                             "arrow.up",
                             "chevron.up",
                             "chevron.up.bold",
                             "folder",
                             "gearshape.fill",
                             "heart.fill",
                             "lock.fill",
                             "lock.open",
                             "magnifyingglass",
                             "minus.circle.fill",
                             "power",
                             "speaker.slash.fill",
                             "speaker.wave.1.fill",
                             "speaker.wave.2.fill",
                             "speaker.wave.3.fill",
                             "star.fill",
                             "sun.max",
                             "sun.max.fill",
                             "sun.min.fill",
                             "xmark",
                             "xmark.bold"}) {
        const QImage picture = symbolImage(name, 32, Qt::white);
        ASSERT_FALSE(picture.isNull()) << name;
        int opaque = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                opaque += qAlpha(picture.pixel(x, y)) > 128 ? 1 : 0;
        EXPECT_GT(opaque, 20) << name << " is all but empty";
        EXPECT_LT(opaque, 32 * 32 * 8 / 10) << name << " is a blot";
    }
}

TEST(Symbols, TheColourIsTheOneAskedFor)
{
    const QImage picture = symbolImage("power", 48, QColor(200, 10, 30));
    bool found = false;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qAlpha(picture.pixel(x, y)) == 255) {
                found = true;
                ASSERT_EQ(picture.pixelColor(x, y).rgb(), qRgb(200, 10, 30));
            }
    EXPECT_TRUE(found);
}

TEST(Symbols, SidesThatMakeNoSenseGiveNothing)
{
    EXPECT_TRUE(symbolImage("app", 0, Qt::white).isNull());
    EXPECT_TRUE(symbolImage("app", -3, Qt::white).isNull());
    EXPECT_TRUE(symbolImage("app", 1 << 20, Qt::white).isNull());
}

TEST(Images, APictureComesBackAsItWas)
{
    Image image{3, 2, {}};
    for (int i = 0; i < 6; ++i)
        for (const int channel : {10 * i, 5 * i, i, 10 * i + 50})
            image.pixels.push_back(static_cast<std::uint8_t>(channel));
    const ImagePtr back = fromQImage(toQImage(image));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->width, 3);
    EXPECT_EQ(back->height, 2);
    EXPECT_EQ(back->pixels, image.pixels);
}

TEST(Images, AMalformedImageGivesNothing)
{
    EXPECT_TRUE(toQImage(Image{}).isNull());
    EXPECT_TRUE(toQImage(Image{2, 2, std::vector<std::uint8_t>(15)}).isNull());
    EXPECT_TRUE(toQImage(Image{2, 2, std::vector<std::uint8_t>(17)}).isNull());
    EXPECT_TRUE(toQImage(Image{-2, -2, std::vector<std::uint8_t>(16)}).isNull());
    EXPECT_TRUE(toQImage(Image{1 << 30, 1 << 30, std::vector<std::uint8_t>(16)}).isNull());
    EXPECT_FALSE(fromQImage(QImage()));
}

}  // namespace korvane::platform
