#include "Views/Bar/OverflowRowCard.h"
#include "Views/Bar/TaskbarView.h"
#include "Views/Kit/ListButton.h"
#include "Views/Kit/Popover.h"
#include "Views/Kit/ViewServices.h"
#include "Views/Tray/AttentionControlView.h"
#include "Views/Tray/ClockView.h"
#include "Views/Tray/LevelControlView.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <QLabel>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::PaintCounter;
using testing::settle;
using testing::V;

class Tray : public ModelFixture {
protected:
    Tray()
    {
        qputenv("TZ", "UTC");
        bar.resize(400, 34);
        bar.move(0, 500);
        makeModel();
    }
    template <typename View, typename... Arguments> View *add(Arguments &&...arguments)
    {
        auto *view = new View(std::forward<Arguments>(arguments)..., &bar);
        bar.show();
        view->show();
        settle();
        return view;
    }
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
    void badge(Pid pid, const std::string &name)
    {
        addApplication(pid, name, 1);
        platform::simulated::DockItem item;
        item.title = name;
        item.subrole = std::string("AXApplicationDockItem");
        item.statusLabel = std::string("1");
        if (!dock.children)
            dock.children.emplace();
        dock.children->push_back(item);
        desktop.applications.setDock(dock);
    }

    QWidget bar;
    ViewServices services;
    platform::simulated::DockItem dock;
};

TEST_F(Tray, TheWheelSetsTheVolumeAndShowsTheSliderForAWhile)
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

TEST_F(Tray, TheSliderSetsTheLevelAndSaysItInPercent)
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

TEST_F(Tray, AVolumeChangedByOthersIsShown)
{
    desktop.audio.output = 7;
    desktop.audio.volumes = {{{7, 0}, 0.5F}};
    auto *volume = add<VolumeControlView>(*model, platform);
    desktop.audio.volumes = {{{7, 0}, 0.0F}};
    desktop.audio.announceChange();
    desktop.loop.runPosted();
    EXPECT_EQ(volume->currentLook().symbol, "speaker.slash.fill");
}

TEST_F(Tray, WithoutABacklightTheWheelIsForOthers)
{
    auto *brightness = add<BrightnessControlView>(*model, platform);
    EXPECT_EQ(brightness->toolTip(), "Screen Brightness");
    EXPECT_FALSE(turnWheel(*brightness, 120));
    EXPECT_FALSE(Popover::anyOpen());
    desktop.brightness.level = 0.9F;
    EXPECT_TRUE(turnWheel(*brightness, 120));
    EXPECT_FLOAT_EQ(*desktop.brightness.level, 0.95F);
}

TEST_F(Tray, TheButtonsFollowTheSettingAndNobodyListensWithoutThem)
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

TEST_F(Tray, AnOpenSliderGoesWithItsButton)
{
    auto *volume = add<VolumeControlView>(*model, platform);
    QTest::mouseClick(volume, Qt::LeftButton);
    EXPECT_TRUE(Popover::anyOpen());
    delete volume;
    EXPECT_FALSE(Popover::anyOpen());
}

TEST_F(Tray, APressElsewhereClosesTheSlider)
{
    auto *volume = add<VolumeControlView>(*model, platform);
    QTest::mouseClick(volume, Qt::LeftButton);
    QCursor::setPos(5, 5);
    desktop.events.press();
    desktop.loop.runPosted();
    EXPECT_FALSE(Popover::anyOpen());
    EXPECT_FALSE(volume->control().showingSlider());
}

TEST_F(Tray, OfASliderOnlyWhatChangesIsDrawn)
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

// ---------------------------------------------------------------------------------------------------- clock

class Clock : public Tray {
protected:
    // A moment in UTC on 3 February 2026, a Tuesday.
    void setTime(int hour, int minute, int second)
    {
        desktop.loop.setWallNow(platform::Seconds(1770076800.0 + hour * 3600 + minute * 60 + second));
        desktop.loop.runPosted();
    }
};

TEST_F(Clock, ShowsTheTimeAndTheDate)
{
    setTime(15, 4, 10);
    auto *clock = add<ClockView>(platform);
    EXPECT_EQ(clock->time(), "3:04 PM");
    EXPECT_EQ(clock->date(), "Tue 02/03/26");
}

TEST_F(Clock, TurnsWithTheMinuteAndSleepsBetween)
{
    setTime(15, 4, 10);
    auto *clock = add<ClockView>(platform);
    PaintCounter paints;
    EXPECT_EQ(desktop.loop.pendingTimers(), 1U);
    advance(49.9);
    settle();
    EXPECT_EQ(paints.count(), 0);
    EXPECT_EQ(clock->time(), "3:04 PM");
    advance(0.1);
    EXPECT_EQ(clock->time(), "3:05 PM");
    settle();
    EXPECT_EQ(paints.countOf<ClockLine>(), 1);
}

TEST_F(Clock, IsRightAtOnceWhenTheClockIsSet)
{
    setTime(15, 4, 10);
    auto *clock = add<ClockView>(platform);
    setTime(9, 30, 0);
    EXPECT_EQ(clock->time(), "9:30 AM");
}

TEST_F(Clock, WhereNobodyTellsThatItWasSetItLooksEverySecondOrTwo)
{
    setTime(15, 4, 10);
    desktop.loop.keepClockChangesSecret();
    auto *clock = add<ClockView>(platform);
    clock->setRefreshSeconds(60);
    advance(2);
    setTime(9, 30, 0);
    EXPECT_EQ(clock->time(), "3:04 PM");
    advance(1.9);
    EXPECT_EQ(clock->time(), "3:04 PM");
    advance(0.1);
    EXPECT_EQ(clock->time(), "9:30 AM");
    clock->setRefreshSeconds(0);
    advance(2);
    setTime(18, 0, 0);
    advance(1);
    EXPECT_EQ(clock->time(), "6:00 PM");
    settle();
    PaintCounter paints;
    advance(10);
    settle();
    EXPECT_EQ(paints.count(), 0);
}

TEST_F(Clock, StandsStillWhilePausedAndCatchesUp)
{
    setTime(15, 4, 10);
    auto *clock = add<ClockView>(platform);
    clock->setPaused(true);
    advance(200);
    EXPECT_EQ(clock->time(), "3:04 PM");
    clock->setPaused(false);
    EXPECT_EQ(clock->time(), "3:07 PM");
}

TEST_F(Clock, OpensItsApplications)
{
    desktop.launching.install("com.apple.iCal", "/Applications/Calendar");
    auto *clock = add<ClockView>(platform);
    const auto lines = clock->findChildren<ClockLine *>();
    ASSERT_EQ(lines.size(), 2);
    desktop.actions.take();
    QTest::mouseClick(lines[0], Qt::LeftButton);
    EXPECT_TRUE(desktop.actions.take().empty());
    QTest::mouseClick(lines[1], Qt::LeftButton);
    EXPECT_EQ(desktop.actions.take().size(), 1U);
    EXPECT_EQ(lines[0]->toolTip(), "Open Clock");
    EXPECT_EQ(lines[1]->toolTip(), "Open Calendar");
}

// ---------------------------------------------------------------------------------------------------- attention

class Attention : public Tray {
protected:
    AttentionControlView *makeList()
    {
        model->set(&V::showAttentionApps, true);
        start();
        return add<AttentionControlView>(*model, services, platform, true);
    }
    static QStringList texts(const Popover &list)
    {
        QStringList result;
        for (const auto *label : list.findChildren<QLabel *>())
            result << label->text();
        for (const auto *row : list.findChildren<ListButton *>())
            result << row->accessibleName();
        return result;
    }
};

TEST_F(Attention, AClickListsTheApplicationsThatWantIt)
{
    badge(1, "Mail");
    badge(2, "Chat");
    auto *control = makeList();
    EXPECT_EQ(control->toolTip(), "Notifications");
    QTest::mouseClick(control, Qt::LeftButton);
    ASSERT_TRUE(control->openList());
    EXPECT_EQ(texts(*control->openList()), (QStringList{"Notifications", "Mail", "Chat"}));
    QTest::mouseClick(control, Qt::LeftButton);
    EXPECT_FALSE(control->openList());
}

TEST_F(Attention, WithNoneItSaysSo)
{
    auto *control = makeList();
    EXPECT_EQ(control->toolTip(), "No apps need attention");
    QTest::mouseClick(control, Qt::LeftButton);
    ASSERT_TRUE(control->openList());
    EXPECT_EQ(texts(*control->openList()), (QStringList{"Notifications", "No apps need attention"}));
}

TEST_F(Attention, ALongNameWidensItsRow)
{
    badge(1, "Mail");
    badge(2, "An application whose name is much longer than names of applications are");
    auto *control = makeList();
    QTest::mouseClick(control, Qt::LeftButton);
    settle();
    const auto rows = control->openList()->findChildren<ListButton *>();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_GT(rows[0]->width(), 400);
    EXPECT_EQ(rows[0]->width(), rows[1]->width());
}

TEST_F(Attention, ARowActivatesItsApplicationAndClosesTheList)
{
    badge(1, "Mail");
    badge(2, "Chat");
    auto *control = makeList();
    QTest::mouseClick(control, Qt::LeftButton);
    auto *row = control->openList()->findChildren<ListButton *>().last();
    EXPECT_EQ(row->height(), 28);
    EXPECT_GE(row->width(), 210);
    QTest::mouseClick(row, Qt::LeftButton);
    EXPECT_FALSE(control->openList());
    EXPECT_EQ(desktop.applications.active(), 2);
}

TEST_F(Attention, TheOpenListFollowsTheModel)
{
    badge(1, "Mail");
    auto *control = makeList();
    QTest::mouseClick(control, Qt::LeftButton);
    badge(2, "Chat");
    model->refresh(true);
    control->updateFromModel();
    settle();
    EXPECT_EQ(texts(*control->openList()), (QStringList{"Notifications", "Mail", "Chat"}));
}

TEST_F(Attention, TheListGoesWithItsButton)
{
    badge(1, "Mail");
    auto *control = makeList();
    QTest::mouseClick(control, Qt::LeftButton);
    ASSERT_TRUE(control->openList());
    control->hide();
    EXPECT_FALSE(control->openList());
    EXPECT_FALSE(Popover::anyOpen());
    control->show();
    QTest::mouseClick(control, Qt::LeftButton);
    EXPECT_TRUE(control->openList());
}

TEST_F(Attention, AButtonThatGoesUnderAPointerOpensNothing)
{
    badge(1, "Mail");
    auto *control = makeList();
    const QPointF middle(control->rect().center());
    QEnterEvent enter(middle, middle, control->mapToGlobal(middle));
    QApplication::sendEvent(control, &enter);
    advance(1);
    control->hide();
    advance(10);
    EXPECT_FALSE(Popover::anyOpen());
    control->show();
    QApplication::sendEvent(control, &enter);
    advance(1.2);
    EXPECT_TRUE(Popover::anyOpen());
}

}  // namespace
}  // namespace korvane
