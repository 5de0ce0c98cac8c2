#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::Names;

class Activation : public ModelFixture {
protected:
    Activation()
    {
        addApplication(1, "Mail", 2);
        addApplication(2, "Notes", 1);
        desktop.applications.focusWindow(1, hashOf(1, 0));
        start();
        desktop.actions.take();
    }
    bool minimized(Pid pid, int index) { return *desktop.applications.window(pid, hashOf(pid, index))->minimized; }
    std::vector<std::string> recents() { return model->settings().recentWindowIDs; }
};

TEST_F(Activation, ATaskWhoseProcessHasEndedDoesNothing)
{
    const auto gone = task(idOf(2, 0));
    desktop.applications.remove(2);
    model->activate(gone);
    EXPECT_TRUE(takeActions().empty());
    EXPECT_TRUE(recents().empty());
}

TEST_F(Activation, AClickOnTheActiveTaskMinimisesItAndTheNextOneRestoresIt)
{
    const auto active = task(idOf(1, 0));
    ASSERT_TRUE(active.isActive);
    model->activate(active);
    EXPECT_TRUE(minimized(1, 0));
    EXPECT_TRUE(recents().empty());
    model->activate(active);
    EXPECT_FALSE(minimized(1, 0));
}

TEST_F(Activation, AClickOnAnotherTaskBringsItsApplicationForwardAndThenItsWindow)
{
    model->activate(task(idOf(2, 0)));
    EXPECT_EQ(takeActions(), (Names{"unhide", "activate", "perform", "setApplication"}));
    advance(0.2);
    EXPECT_TRUE(task(idOf(2, 0)).isActive);
    EXPECT_EQ(recents(), Names{idOf(2, 0)});
}

TEST_F(Activation, AMinimisedWindowIsRaisedBeforeItsApplicationComesForward)
{
    desktop.applications.setMinimized(2, hashOf(2, 0), true);
    model->activate(task(idOf(2, 0)));
    EXPECT_EQ(takeActions(), (Names{"set", "perform", "setApplication", "unhide", "activate"}));
    EXPECT_FALSE(minimized(2, 0));
}

TEST_F(Activation, ARetitledWindowIsFoundByItsIdentifier)
{
    const auto before = task(idOf(1, 1));
    desktop.applications.setTitle(1, hashOf(1, 1), "Other");
    EXPECT_EQ(platform.accessibility.hash(model->resolveWindow(before)), hashOf(1, 1));
}

TEST_F(Activation, ARetitledWindowWithoutIdentifierGivesTheApplicationInstead)
{
    auto item = task(idOf(1, 1));
    item.id = "cg:1:5";
    desktop.applications.setTitle(1, hashOf(1, 1), "Other");
    EXPECT_EQ(model->resolveWindow(item), nullptr);
    model->activate(item);
    EXPECT_EQ(takeActions(), (Names{"unhide", "activate"}));
}

TEST_F(Activation, OfTwoWindowsOfOneTitleTheOneAtTheIndexWinsElseTheFirst)
{
    desktop.applications.setTitle(1, hashOf(1, 0), "Same");
    desktop.applications.setTitle(1, hashOf(1, 1), "Same");
    RunningAppItem item = task(idOf(1, 1));
    item.id = "x";
    item.name = "Same";
    item.windowIndex = 1;
    EXPECT_EQ(platform.accessibility.hash(model->resolveWindow(item)), hashOf(1, 1));
    item.windowIndex = 0;
    EXPECT_EQ(platform.accessibility.hash(model->resolveWindow(item)), hashOf(1, 0));
    desktop.applications.openWindow(1, window(hashOf(1, 9), "Different"));
    item.windowIndex = 2;
    EXPECT_EQ(platform.accessibility.hash(model->resolveWindow(item)), hashOf(1, 0));
}

TEST_F(Activation, AnIndexBeyondTheWindowsIsPassedOver)
{
    RunningAppItem item = task(idOf(1, 1));
    item.id = "x";
    for (const std::int64_t index : {std::int64_t{2}, std::int64_t{1000000}, std::int64_t{-1}}) {
        item.windowIndex = index;
        EXPECT_EQ(platform.accessibility.hash(model->resolveWindow(item)), hashOf(1, 1));
    }
}

TEST_F(Activation, WithoutThePermissionTheActiveTaskIsNotMinimised)
{
    const auto active = task(idOf(1, 0));
    desktop.accessibility.setTrusted(false);
    model->refreshForStartMenuShow();
    desktop.actions.take();
    model->activate(active);
    EXPECT_EQ(takeActions(), (Names{"unhide", "activate"}));
    EXPECT_FALSE(minimized(1, 0));
}

TEST_F(Activation, AWindowWithABlankTitleIsFoundByItsIdentifierOnly)
{
    desktop.applications.setTitle(2, hashOf(2, 0), "  ");
    model->refresh();
    RunningAppItem item = task(idOf(2, 0));
    EXPECT_EQ(item.name, "Notes");
    EXPECT_NE(model->resolveWindow(item), nullptr);
    item.id = "x";
    EXPECT_EQ(model->resolveWindow(item), nullptr);
}

TEST_F(Activation, TheWholeApplicationComesForwardWithEveryWindowRestored)
{
    desktop.applications.setMinimized(1, hashOf(1, 0), true);
    desktop.applications.setMinimized(1, hashOf(1, 1), true);
    model->activateApplication(1);
    EXPECT_FALSE(minimized(1, 0));
    EXPECT_FALSE(minimized(1, 1));
}

TEST_F(Activation, AnApplicationOpenedThatAlreadyRunsComesForwardAMomentLater)
{
    desktop.launching.install("org.example.Notes", "/apps/notes.desktop");
    model->launch("org.example.Notes");
    EXPECT_EQ(takeActions(), Names{"openApplicationAtURL"});
    advance(0.1);
    EXPECT_EQ(takeActions(), Names{"activate"});
    model->launch("org.example.Nothing");
    advance(1);
    EXPECT_TRUE(takeActions().empty());
}

class Permission : public ModelFixture {};

TEST_F(Permission, AGrantMadeMeanwhileIsSeenAtTheNextReading)
{
    addApplication(1, "Mail", 1);
    start();
    desktop.accessibility.setTrusted(false);
    model->setSettingsWindowVisible(true);
    EXPECT_FALSE(model->accessibilityTrusted());
    desktop.accessibility.setTrusted(true);
    EXPECT_FALSE(model->accessibilityTrusted());
    model->setTaskbarHidden(true);
    model->setTaskbarHidden(false);
    EXPECT_TRUE(model->accessibilityTrusted());
}

TEST_F(Permission, ARefusedResetChangesNothing)
{
    start();
    desktop.actions.take();
    desktop.dialogs.setResponse(1001);
    model->resetAccessibilityPermission();
    advance(5);
    ASSERT_EQ(desktop.dialogs.shown().size(), 1U);
    EXPECT_EQ(desktop.dialogs.shown()[0].alert.message, "Reset Accessibility Permission?");
    EXPECT_FALSE(desktop.loop.terminated());
    EXPECT_TRUE(model->accessibilityTrusted());
}

TEST_F(Permission, AResetThatSucceedsOpensTheSettingsAndEndsTheProgram)
{
    start();
    model->resetAccessibilityPermission();
    advance(0.349);
    EXPECT_FALSE(desktop.loop.terminated());
    advance(0.001);
    EXPECT_TRUE(desktop.loop.terminated());
    const auto actions = takeActions();
    EXPECT_EQ(std::count(actions.begin(), actions.end(), "openURL"), 1);
}

TEST_F(Permission, AResetThatFailsSaysSoAndTheProgramGoesOn)
{
    start();
    desktop.accessibility.setResetResult({false, -1, "no such tool"});
    model->resetAccessibilityPermission();
    desktop.accessibility.setResetResult({true, 1, ""});
    model->resetAccessibilityPermission();
    advance(5);
    const auto &shown = desktop.dialogs.shown();
    ASSERT_EQ(shown.size(), 4U);
    EXPECT_EQ(shown[1].alert.message, "Accessibility Reset Failed");
    EXPECT_EQ(shown[1].alert.informative, "no such tool");
    EXPECT_EQ(shown[3].alert.informative, "macOS did not reset the Accessibility permission.");
    EXPECT_FALSE(desktop.loop.terminated());
}

TEST_F(Permission, ResetNamesOneFixedProgramAndUninstallNamesTheRunningOne)
{
    platform::simulated::Process self;
    self.application.pid = 500;
    self.application.bundleIdentifier = "org.other.Copy";
    desktop.applications.put(self);
    start();
    desktop.actions.take();
    model->resetAccessibilityPermission();
    model->clearAccessibilityPermissionForUninstall();
    std::vector<std::string> cleared;
    for (const auto &action : desktop.actions.take())
        if (action.name == "resetGrant")
            cleared.push_back(std::get<std::string>(action.arguments.at(0)));
    EXPECT_EQ(cleared, (Names{"com.example.Korvane", "org.other.Copy"}));
    EXPECT_FALSE(model->accessibilityTrusted());
}

}  // namespace
}  // namespace korvane
