#include "Models/Bar/PanelGeometry.h"

#include <gtest/gtest.h>

namespace korvane::PanelGeometry {
namespace {

TEST(PanelGeometry, WithoutOverflowThePanelIsTheBarAlone)
{
    for (const bool autoHide : {true, false})
        for (const bool expanded : {true, false}) {
            const OverflowGeometry geometry = overflowGeometry({0, 7, 2, autoHide, expanded});
            EXPECT_EQ(geometry, (OverflowGeometry{34, 34}));
        }
}

TEST(PanelGeometry, EveryTuckedRowShowsAtLeastOnePoint)
{
    EXPECT_EQ(overflowGeometry({3, 3, 2, true, false}).collapsedHeight, 37);
    EXPECT_EQ(overflowGeometry({3, 1, 8, true, false}).collapsedHeight, 37);
    EXPECT_EQ(overflowGeometry({3, 7, 2, true, false}).collapsedHeight, 49);
}

TEST(PanelGeometry, ThreeRowsThatOverlapByFourStackToEightyFour)
{
    EXPECT_EQ(overflowGeometry({3, 7, 4, false, true}).normalHeight, 34 + 84);
    EXPECT_EQ(overflowGeometry({3, 7, 4, true, false}).normalHeight, 34 + 84 + 20);
}

TEST(PanelGeometry, RowsThatAreNotExpandedNeedTheCollapsedHeight)
{
    const OverflowGeometry geometry = overflowGeometry({2, 7, 2, false, false});
    EXPECT_EQ(geometry.normalHeight, geometry.collapsedHeight);
}

TEST(PanelGeometry, ATuckedCardShowsItsTopStrip)
{
    EXPECT_EQ(shownHeight(34, 7, true, false, false), 7);
    EXPECT_EQ(shownHeight(34, 7, true, false, true), 34);
    EXPECT_EQ(shownHeight(34, 7, false, true, false), 34);
    EXPECT_EQ(shownHeight(34, 7, false, false, true), 7);
    EXPECT_EQ(shownHeight(34, 50, true, false, false), 34);
}

}  // namespace
}  // namespace korvane::PanelGeometry
