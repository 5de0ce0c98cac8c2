#include "Views/Tray/LevelControlView.h"

#include "Views/Bar/OverflowRowCard.h"
#include "Views/Bar/TaskbarView.h"
#include "Views/Kit/Popover.h"
#include "Views/Kit/ViewServices.h"
#include "tests/Views/Tray/TrayFixture.h"

#include <QLabel>
#include <QSlider>
#include <QWheelEvent>

namespace korvane {
namespace {

using testing::PaintCounter;
using testing::settle;
using testing::V;

class LevelControls : public testing::TrayFixture {
protected:
    static bool turnWheel(QWidget &over, int eighths)
    {
        const QPointF middle(over.rect().center());
        QWheelEvent event(middle, over.mapToGlobal(middle), {}, {0, eighths}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        event.ignore();
        QApplication::sendEvent(&over, &event);
        settle();
        return event.isAccepted();
    }

    ViewServices services;
};

TEST_F(LevelControls, TheWheelSetsTheVolumeAndShowsTheSliderForAWhile)
{
    desktop.audio.output = 7;
    desktop.audio.volumes = {{{7, 0}, 0.5F}};
    auto *volume = add<VolumeControlView>(*model, platform);
    EXPECT_EQ(volume->toolTip(), "Volume");
    EXPECT_EQ(volume->size(), QSize(18, 28));
    EXPECT_EQ(volume->currentLook().symbol, "speaker.wave.2.fill");
    EXPECT_TRUE(turnWheel(*volume, 120));
    EXPECT_FLOAT_EQ((desktop.audio.volumes[{7, 0}]), 0.55F);
    ASSERT_TRUE(volume->slider());
    EXPECT_TRUE(volume->slider()->isVisible());
    EXPECT_EQ(volume->slider()->width(), 150);
    EXPECT_EQ(volume->slider()->value(), 550);
    advance(1.5);
    EXPECT_FALSE(volume->slider()->isVisible());
    EXPECT_FALSE(Popover::anyOpen());
}

TEST_F(LevelControls, TheSliderSetsTheLevelAndSaysItInPercent)
{
    desktop.audio.output = 7;
    desktop.audio.volumes = {{{7, 0}, 0.5F}};
    auto *volume = add<VolumeControlView>(*model, platform);
    QTest::mouseClick(volume, Qt::LeftButton);
    ASSERT_TRUE(volume->slider());
    volume->slider()->setValue(125);
    EXPECT_FLOAT_EQ((desktop.audio.volumes[{7, 0}]), 0.125F);
    EXPECT_EQ(volume->accessibleDescription(), "13%");
    EXPECT_EQ(volume->currentLook().symbol, "speaker.wave.1.fill");
    advance(60);
    EXPECT_TRUE(volume->slider()->isVisible());
    QTest::mouseClick(volume, Qt::LeftButton);
    EXPECT_FALSE(volume->slider()->isVisible());
}

TEST_F(LevelControls, AVolumeChangedByOthersIsShown)
{
    desktop.audio.output = 7;
    desktop.audio.volumes = {{{7, 0}, 0.5F}};
    auto *volume = add<VolumeControlView>(*model, platform);
    desktop.audio.volumes = {{{7, 0}, 0.0F}};
    desktop.audio.announceChange();
    desktop.loop.runPosted();
    EXPECT_EQ(volume->currentLook().symbol, "speaker.slash.fill");
}

TEST_F(LevelControls, WithoutABacklightTheWheelIsForOthers)
{
    auto *brightness = add<BrightnessControlView>(*model, platform);
    EXPECT_EQ(brightness->toolTip(), "Screen Brightness");
    EXPECT_FALSE(turnWheel(*brightness, 120));
    EXPECT_FALSE(Popover::anyOpen());
    desktop.brightness.level = 0.9F;
    EXPECT_TRUE(turnWheel(*brightness, 120));
    EXPECT_FLOAT_EQ(*desktop.brightness.level, 0.95F);
}

TEST_F(LevelControls, TheButtonsFollowTheSettingAndNobodyListensWithoutThem)
{
    desktop.audio.output = 7;
    desktop.audio.volumes = {{{7, 0}, 0.5F}};
    model->set(&V::mediaSliderDisplay, MediaSliderDisplay::never);
    start();
    TaskbarView view(*model, services, platform);
    view.resize(1280, 200);
    const auto display = [&](MediaSliderDisplay where) {
        model->set(&V::mediaSliderDisplay, where);
        view.updateFromModel();
        settle();
        return view.findChild<VolumeControlView *>();
    };
    view.show();
    EXPECT_FALSE(display(MediaSliderDisplay::never));
    EXPECT_EQ(desktop.audio.observing(), 0U);
    auto *onBar = display(MediaSliderDisplay::taskbar);
    ASSERT_TRUE(onBar);
    EXPECT_TRUE(onBar->isVisible());
    EXPECT_EQ(desktop.audio.observing(), 1U);
    EXPECT_EQ(onBar->mapTo(&view, QPoint()).y(), 200 - 34 + 3);
    auto *onRow = display(MediaSliderDisplay::overflow);
    ASSERT_TRUE(onRow);
    EXPECT_TRUE(onRow->isVisible());
    EXPECT_TRUE(qobject_cast<OverflowRowCard *>(onRow->parentWidget()));
    QTest::mouseClick(onRow, Qt::LeftButton);
    EXPECT_TRUE(Popover::anyOpen());
    EXPECT_FALSE(display(MediaSliderDisplay::never));
    EXPECT_FALSE(view.findChild<BrightnessControlView *>());
    EXPECT_FALSE(Popover::anyOpen());
    EXPECT_EQ(desktop.audio.observing(), 0U);
}

TEST_F(LevelControls, AnOpenSliderGoesWithItsButton)
{
    auto *volume = add<VolumeControlView>(*model, platform);
    QTest::mouseClick(volume, Qt::LeftButton);
    EXPECT_TRUE(Popover::anyOpen());
    delete volume;
    EXPECT_FALSE(Popover::anyOpen());
}

TEST_F(LevelControls, APressElsewhereClosesTheSlider)
{
    auto *volume = add<VolumeControlView>(*model, platform);
    QTest::mouseClick(volume, Qt::LeftButton);
    QCursor::setPos(5, 5);
    desktop.events.press();
    desktop.loop.runPosted();
    EXPECT_FALSE(Popover::anyOpen());
    EXPECT_FALSE(volume->control().showingSlider());
}

TEST_F(LevelControls, OfASliderOnlyWhatChangesIsDrawn)
{
    desktop.audio.output = 7;
    desktop.audio.volumes = {{{7, 0}, 0.5F}};
    auto *volume = add<VolumeControlView>(*model, platform);
    QTest::mouseClick(volume, Qt::LeftButton);
    settle();
    PaintCounter paints;
    desktop.audio.announceChange();
    desktop.loop.runPosted();
    settle();
    EXPECT_EQ(paints.count(), 0);
    // Still two arcs: the button and the symbol beside the slider stay as they are.
    volume->slider()->setValue(510);
    settle();
    EXPECT_EQ(paints.countOf<VolumeControlView>(), 0);
    EXPECT_EQ(paints.countOf<QLabel>(), 1);
}

}  // namespace
}  // namespace korvane
