#include "Views/Tasks/CloseGlyph.h"
#include "Views/Tasks/RunningAppButton.h"
#include "Views/Tasks/RunningAppGroupButton.h"
#include "tests/Views/Tasks/ButtonFixture.h"

#include <QAccessible>

namespace korvane {
namespace {

using testing::ButtonFixture;
using testing::Names;
using testing::PaintCounter;
using testing::settle;
using testing::V;

class TaskButtons : public ButtonFixture {
protected:
    // The colour of the fill, away from icon, text, strip and glyph, over black.
    static QColor fillOf(TaskButton &button) { return pixel(button, 180, 20); }
    static QColor pixel(TaskButton &button, int x, int y)
    {
        QImage picture(button.size(), QImage::Format_RGB32);
        picture.fill(Qt::black);
        button.render(&picture, {}, {}, {});
        return picture.pixelColor(x, y);
    }
};

TEST_F(TaskButtons, AnActiveTabIsTheBrighterOneAndInvertedTheDarkerOne)
{
    addApplication(1, "Mail", 2);
    desktop.applications.focusWindow(1, hashOf(1, 0));
    startWith(GroupingMode::never);
    auto *active = add(entry(idOf(1, 0))), *other = add(entry(idOf(1, 1)));
    EXPECT_EQ(fillOf(*active).red(), 33);  // 0.13 of 255
    EXPECT_EQ(fillOf(*other).red(), 9);    // 0.035 of 255
    model->set(&V::invertTaskbarButtonHighlight, true);
    update(*active, idOf(1, 0));
    update(*other, idOf(1, 1));
    EXPECT_EQ(fillOf(*active).red(), 9);
    EXPECT_EQ(fillOf(*other).red(), 33);
}

TEST_F(TaskButtons, AColouredTabShowsTheSameFillActiveOrNotAndOnlyItsStripTells)
{
    addApplication(1, "Mail", 2);
    desktop.applications.focusWindow(1, hashOf(1, 0));
    startWith(GroupingMode::never);
    auto *active = add(entry(idOf(1, 0))), *other = add(entry(idOf(1, 1)));
    model->setLiveTabColorName("Custom:#FF0000", idOf(1, 0));
    model->setLiveTabColorName("Custom:#FF0000", idOf(1, 1));
    update(*active, idOf(1, 0));
    update(*other, idOf(1, 1));
    EXPECT_EQ(fillOf(*active), QColor(128, 0, 0));
    EXPECT_EQ(fillOf(*active), fillOf(*other));
    EXPECT_NE(pixel(*active, 100, 27), pixel(*other, 100, 27));
    model->set(&V::blueStripsEnabled, false);
    update(*active, idOf(1, 0));
    update(*other, idOf(1, 1));
    EXPECT_EQ(pixel(*active, 100, 27), pixel(*other, 100, 27));
}

TEST_F(TaskButtons, TheStripLiesAtTheEdgeThatIsAskedFor)
{
    addApplication(1, "Mail", 1);
    desktop.applications.focusWindow(1, hashOf(1, 0));
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 0)));
    EXPECT_GT(pixel(*button, 190, 27).blue(), 100);
    EXPECT_LT(pixel(*button, 3, 27).blue(), 100);  // it leaves the ends free
    EXPECT_LT(pixel(*button, 150, 0).blue(), 100);
    button->setEntry(entry(idOf(1, 0)), true);
    EXPECT_GT(pixel(*button, 150, 0).blue(), 100);
    EXPECT_LT(pixel(*button, 190, 27).blue(), 100);
}

TEST_F(TaskButtons, TheCloseGlyphStandsInTheUpperRightCornerWhileTheSettingAsksForIt)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 0)));
    auto *glyph = button->findChild<CloseGlyph *>();
    ASSERT_TRUE(glyph);
    EXPECT_EQ(glyph->geometry(), QRect(200 - 11, 0, 11, 11));
    EXPECT_EQ(glyph->toolTip(), "Close");
    EXPECT_EQ(glyph->accessibleName(), "Close");
    button->resize(120, 28);
    EXPECT_EQ(glyph->geometry(), QRect(120 - 11, 0, 11, 11));
    model->set(&V::showCloseGlyph, false);
    update(*button, idOf(1, 0));
    EXPECT_FALSE(button->findChild<CloseGlyph *>());
}

TEST_F(TaskButtons, TheCloseGlyphClosesTheWindowAndIsNoClickOnTheTab)
{
    addApplication(1, "Mail", 2);
    addApplication(2, "Notes", 1);
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 1)));
    QTest::mouseClick(button->findChild<CloseGlyph *>(), Qt::LeftButton);
    settle();
    EXPECT_EQ(desktop.applications.windowCount(1), 1U);
    EXPECT_EQ(ids(), (Names{idOf(1, 0), idOf(2, 0)}));
}

TEST_F(TaskButtons, AButtonRepaintsOnlyWhenItsLookChanges)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 0)));
    PaintCounter paints;
    update(*button, idOf(1, 0));
    EXPECT_EQ(paints.count(), 0);
    desktop.applications.setTitle(1, hashOf(1, 0), "Other");
    update(*button, idOf(1, 0));
    EXPECT_EQ(paints.countOf<RunningAppButton>(), 1);
}

TEST_F(TaskButtons, TheTreeOffersThePressAndTheMenu)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::asNeeded);
    auto *button = add(entry(idOf(1, 0)));
    QAccessibleInterface *tree = QAccessible::queryAccessibleInterface(button);
    ASSERT_TRUE(tree && tree->actionInterface());
    EXPECT_EQ(tree->role(), QAccessible::Button);
    EXPECT_TRUE(tree->state().hasPopup);
    EXPECT_EQ(tree->childCount(), 1);  // the glyph
    tree->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    settle();
    ASSERT_TRUE(openedMenu());
    openedMenu()->close();
}

TEST_F(TaskButtons, APressThatMovesFarEnoughIsADragAndNoClick)
{
    addApplication(1, "Mail", 1);
    addApplication(2, "Notes", 2);
    startWith(GroupingMode::always);
    auto *single = add(TaskbarEntry::ofItem(task(idOf(1, 0))));
    desktop.actions.take();
    press(*single, QApplication::startDragDistance() - 1);
    EXPECT_TRUE(takeCalls().empty());
    EXPECT_FALSE(desktop.actions.take().empty());  // a click
    press(*single, QApplication::startDragDistance());
    EXPECT_EQ(takeCalls(), (Names{"drag " + idOf(1, 0) + " of 1"}));
    EXPECT_TRUE(desktop.actions.take().empty());
    auto *group = add<RunningAppGroupButton>(entry("auto:2"));
    press(*group, 50);
    EXPECT_EQ(takeCalls(), (Names{"drag group::auto:2 of 2"}));
    EXPECT_FALSE(group->listIsOpen());
}

TEST_F(TaskButtons, AButtonMayGoWhileItIsDragged)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    QPointer<TaskButton> button = add(entry(idOf(1, 0)));
    whileDragging = [&] { delete button.data(); };
    press(*button, 50);
    EXPECT_FALSE(button);
}

TEST_F(TaskButtons, WhatIsCarriedByADragIsTheTabOnTheBarsOwnGround)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 0)));
    const QImage picture = pictureOnBar(*button).toImage();
    ASSERT_EQ(picture.size(), button->size() * button->devicePixelRatioF());
    int light = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            ASSERT_EQ(picture.pixelColor(x, y).alpha(), 255);
            light += picture.pixelColor(x, y).lightness() > 128 ? 1 : 0;
        }
    EXPECT_GT(light, 20);  // the title
    EXPECT_LT(light, picture.width() * picture.height() / 4);
}

}  // namespace
}  // namespace korvane
