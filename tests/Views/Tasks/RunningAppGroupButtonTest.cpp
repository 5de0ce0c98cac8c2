#include "Views/Tasks/RunningAppGroupButton.h"
#include "Views/Kit/Metrics.h"
#include "Views/Tasks/CloseGlyph.h"
#include "tests/Views/Tasks/ButtonFixture.h"

#include <algorithm>

namespace korvane {
namespace {

using testing::settle;

class RunningAppGroupButtons : public testing::ButtonFixture {};

TEST_F(RunningAppGroupButtons, TheChevronFollowsTheTextOfAGroup)
{
    addApplication(1, "Mail", 2);
    startWith(GroupingMode::always);
    auto *button = add(entry("auto:1"));
    EXPECT_EQ(button->accessibleName(), "Mail Tabs");
    EXPECT_TRUE(button->currentLook().chevron);
    const int end =
        7 + 25 + 7 + static_cast<int>(QFontMetricsF(systemFont(Metrics::buttonFontSize)).horizontalAdvance("Mail Tabs"))
        + 7;
    QImage picture(button->size(), QImage::Format_RGB32);
    picture.fill(Qt::black);
    button->render(&picture, {}, {}, {});
    int brightest = 0, beyond = 0;
    for (int y = 8; y < 20; ++y) {
        for (int x = end; x < end + 9; ++x)
            brightest = std::max(brightest, picture.pixelColor(x, y).red());
        for (int x = end + 10; x < 185; ++x)
            beyond = std::max(beyond, picture.pixelColor(x, y).red());
    }
    EXPECT_GT(brightest, 100);
    EXPECT_LT(beyond, 40);
}

TEST_F(RunningAppGroupButtons, AGroupOfOneWindowIsClickedAndClosedLikeATask)
{
    addApplication(1, "Mail", 1);
    addApplication(2, "Notes", 1);
    startWith(GroupingMode::always);
    auto *button = add<RunningAppGroupButton>(entry("auto:2"));
    EXPECT_FALSE(button->currentLook().chevron);
    EXPECT_EQ(button->accessibleName(), "Notes 1");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(desktop.applications.active(), 2);
    EXPECT_FALSE(button->listIsOpen());
    QTest::mouseClick(button->findChild<CloseGlyph *>(), Qt::LeftButton);
    settle();
    EXPECT_TRUE(desktop.dialogs.shown().empty());
    EXPECT_EQ(desktop.applications.windowCount(2), 0U);
}

TEST_F(RunningAppGroupButtons, ACustomGroupOfOneWindowOpensItsListAndItsGlyphAsks)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    model->createCustomGroup({task(idOf(1, 0))});
    const std::string id = model->taskbarEntries(false).front().id;
    auto *button = add<RunningAppGroupButton>(entry(id));
    EXPECT_TRUE(button->currentLook().chevron);
    EXPECT_EQ(button->currentLook().glyph, "📁");
    desktop.dialogs.setResponse(1001);
    QTest::mouseClick(button->findChild<CloseGlyph *>(), Qt::LeftButton);
    settle();
    EXPECT_EQ(desktop.dialogs.shown().back().alert.message, "All windows in New Group will be closed. Continue?");
    EXPECT_EQ(desktop.applications.windowCount(1), 1U);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(button->listIsOpen());
}

}  // namespace
}  // namespace korvane
