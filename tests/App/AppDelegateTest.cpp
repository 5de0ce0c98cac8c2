#include "App/AppDelegate.h"

#include "App/Startup.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Platform/Linux/TemporaryDirectory.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <sstream>

namespace korvane {
namespace {

using platform::simulated::SimulatedDesktop;
using testing::V;

// A start menu that only notes what is asked of it.
struct NotedStartMenu final : StartMenu {
    bool isVisible() const override { return visible; }
    void show(const platform::Rect &above) override
    {
        visible = true;
        ++shows;
        shownAbove = above;
    }
    void fadeOut() override
    {
        visible = false;
        ++fades;
    }
    bool containsMouse() const override { return false; }
    void setTaskbarFadeProgress(double) override {}

    bool visible = false;
    int shows = 0, fades = 0;
    platform::Rect shownAbove;
};

struct NotedSettings final : SettingsWindow {
    void show() override { ++shows; }
    int shows = 0;
};

class Delegate : public ::testing::Test {
protected:
    Delegate() : platform(desktop.platform()) {}

    void launch()
    {
        AppDelegate::Windows windows;
        windows.makeStartMenu = [this](AppModel &, std::function<void()>) {
            auto made = std::make_unique<NotedStartMenu>();
            menu = made.get();
            return made;
        };
        windows.makeSettings = [this](AppModel &) {
            auto made = std::make_unique<NotedSettings>();
            settings = made.get();
            return made;
        };
        delegate = std::make_unique<AppDelegate>(platform, std::move(windows));
        delegate->applicationDidFinishLaunching();
    }

    SimulatedDesktop desktop;
    platform::Platform platform;
    NotedStartMenu *menu = nullptr;
    NotedSettings *settings = nullptr;
    std::unique_ptr<AppDelegate> delegate;
};

TEST_F(Delegate, ThePanelsStandEmptyBeforeTheModelStarts)
{
    desktop.defaults.put("NSInitialToolTipDelay", std::int64_t{100});
    launch();
    EXPECT_FALSE(desktop.defaults.has("NSInitialToolTipDelay"));
    EXPECT_TRUE(desktop.applications.isAccessory());
    ASSERT_EQ(delegate->taskbarController()->panels().size(), 1U);
    EXPECT_TRUE(delegate->appModel().inspect().refreshTimerInterval);
    EXPECT_TRUE(desktop.hotKeys.holds(AppDelegate::startMenuKey));
    EXPECT_TRUE(desktop.hotKeys.holds(AppDelegate::activityMonitorKey));
}

TEST_F(Delegate, AtTheEndKeysObserversAndTimersAreGivenBack)
{
    launch();
    desktop.loop.advance(platform::Seconds(1));
    delegate->applicationWillTerminate();
    EXPECT_FALSE(desktop.hotKeys.holds(AppDelegate::startMenuKey));
    EXPECT_FALSE(desktop.hotKeys.holds(AppDelegate::activityMonitorKey));
    EXPECT_EQ(desktop.applications.observerCount(), 0U);
    EXPECT_FALSE(delegate->appModel().inspect().refreshTimerInterval);
}

TEST_F(Delegate, AClickOnTheStartButtonLeavesALockedMenuOpen)
{
    launch();
    const platform::Rect button{0, 0, 50, 34};
    delegate->onStart(button);
    EXPECT_TRUE(menu->visible);
    delegate->appModel().set(&V::lockApplicationsContainerToTaskbar, true);
    delegate->onStart(button);
    EXPECT_TRUE(menu->visible);
    delegate->appModel().set(&V::lockApplicationsContainerToTaskbar, false);
    delegate->onStart(button);
    EXPECT_FALSE(menu->visible);
}

TEST_F(Delegate, HoveringTheStartButtonOfAnOpenMenuDoesNothing)
{
    launch();
    delegate->onStartHover({});
    EXPECT_EQ(menu->shows, 1);
    delegate->onStartHover({});
    EXPECT_EQ(menu->shows, 1);
    EXPECT_EQ(menu->fades, 0);
}

TEST_F(Delegate, TheKeyMovesThePointerAndOpensNothingNewWhileTheMenuIsOpen)
{
    desktop.screens.set({{1, {0, 0, 1440, 900}, 1}});
    launch();
    desktop.hotKeys.press(AppDelegate::startMenuKey);
    desktop.loop.runPosted();
    EXPECT_EQ(menu->shows, 1);
    EXPECT_EQ(desktop.pointer.location(), (platform::Point{8, 8}));
    desktop.pointer.moveTo({700, 700});
    desktop.hotKeys.press(AppDelegate::startMenuKey);
    desktop.loop.runPosted();
    EXPECT_EQ(menu->shows, 1);
    EXPECT_EQ(desktop.pointer.location(), (platform::Point{8, 8}));
}

TEST_F(Delegate, AKeyOfAnyOtherNumberOpensTheStartMenu)
{
    launch();
    const auto other = desktop.hotKeys.add({53, 0, 7});
    desktop.hotKeys.press(7);
    desktop.loop.runPosted();
    EXPECT_EQ(menu->shows, 1);
}

TEST_F(Delegate, TheSecondKeyOpensTheSystemMonitor)
{
    desktop.launching.install("com.apple.ActivityMonitor", "/apps/monitor.desktop");
    launch();
    desktop.actions.take();
    desktop.hotKeys.press(AppDelegate::activityMonitorKey);
    desktop.loop.runPosted();
    ASSERT_FALSE(desktop.actions.all().empty());
    EXPECT_EQ(desktop.actions.all()[0].name, "openApplicationAtURL");
    EXPECT_EQ(menu->shows, 0);
}

TEST_F(Delegate, OpeningTheSettingsFadesTheMenu)
{
    launch();
    delegate->onStart({});
    delegate->showSettings();
    EXPECT_EQ(menu->fades, 1);
    EXPECT_EQ(settings->shows, 1);
}

TEST(LoginItem, ASecondStartSaysNothing)
{
    platform::simulated::SimulatedLoginItem item;
    std::ostringstream output;
    enrolAsLoginItem(item, output);
    EXPECT_EQ(output.str(), "Launch at login enabled.\n");
    output.str("");
    enrolAsLoginItem(item, output);
    EXPECT_EQ(output.str(), "");
}

TEST(LoginItem, AFailureIsSaidAndTheProgramGoesOn)
{
    platform::simulated::SimulatedLoginItem item;
    item.setError("no room");
    std::ostringstream output;
    enrolAsLoginItem(item, output);
    EXPECT_EQ(output.str(), "Launch at login registration failed: no room\n");
}

TEST(Startup, EachReasonNotToStartIsOneLine)
{
    EXPECT_FALSE(refusalBeforeStart(1, ":0", nullptr));
    EXPECT_FALSE(refusalBeforeStart(1, ":0", "wayland-0"));
    for (const auto &refusal : {refusalBeforeStart(2, ":0", nullptr), refusalBeforeStart(1, nullptr, nullptr),
                                refusalBeforeStart(1, "", "wayland-0")}) {
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->line.find('\n'), std::string::npos);
        EXPECT_NE(refusal->status, 0);
    }
    EXPECT_NE(refusalBeforeStart(1, nullptr, "wayland-0")->line, refusalBeforeStart(1, nullptr, nullptr)->line);
}

TEST(Startup, ASecondProgramOnTheSameDisplayFindsTheFirst)
{
    const platform::TemporaryDirectory directory;
    const std::vector folders{directory.path() / "korvane"};
    SingleInstance second(":4711.0"), other(":4712"), third(":4711");
    {
        SingleInstance first(":4711");
        EXPECT_FALSE(first.claim(folders));
        const auto refusal = second.claim(folders);
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->status, 0);
        EXPECT_FALSE(other.claim(folders));
    }
    EXPECT_FALSE(third.claim(folders));
}

TEST(Startup, WhatBlocksTheLockIsReportedInOneLine)
{
    const platform::TemporaryDirectory directory;
    platform::writeFile(directory.path() / "korvane", "no folder");
    SingleInstance blocked(":4711");
    const auto refusal = blocked.claim({directory.path() / "korvane"});
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->status, 1);
    EXPECT_NE(refusal->line.find((directory.path() / "korvane").string()), std::string::npos);
    EXPECT_EQ(refusal->line.find('\n'), std::string::npos);
}

}  // namespace
}  // namespace korvane
