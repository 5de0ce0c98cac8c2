#include "tests/Ports/IconsContract.h"

namespace korvane::platform {
namespace {

void expectWellFormed(const ImagePtr &image)
{
    ASSERT_TRUE(image);
    EXPECT_GT(image->width, 0);
    EXPECT_GT(image->height, 0);
    ASSERT_EQ(image->pixels.size(),
              static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) * 4);
    for (std::size_t i = 0; i < image->pixels.size(); i += 4)
        for (std::size_t channel = 0; channel < 3; ++channel)
            ASSERT_LE(image->pixels[i + channel], image->pixels[i + 3]) << "not premultiplied at byte " << i;
}

}  // namespace

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(IconsContract);

TEST_P(IconsContract, TheProgramHasAnIcon)
{
    expectWellFormed(icons->ownIcon());
}

TEST_P(IconsContract, TheGenericApplicationSymbolExists)
{
    expectWellFormed(icons->symbol("app"));
}

TEST_P(IconsContract, ANameWithoutADrawingGivesNothing)
{
    EXPECT_FALSE(icons->symbol("no.such.symbol"));
    EXPECT_FALSE(icons->symbol(""));
    EXPECT_FALSE(icons->symbol("../korvane"));
}

TEST_P(IconsContract, TheSameSymbolIsSharedAndNotDrawnAgain)
{
    EXPECT_EQ(icons->symbol("app"), icons->symbol("app"));
    EXPECT_EQ(icons->ownIcon(), icons->ownIcon());
}

}  // namespace korvane::platform
