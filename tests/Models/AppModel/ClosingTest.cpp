#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::Names;

class Closing : public ModelFixture {
protected:
    Closing()
    {
        addApplication(1, "Mail", 2);
        addApplication(2, "Notes", 1);
        start();
        desktop.actions.take();
    }
    void setButton(Pid pid, int index, platform::simulated::CloseButton button)
    {
        desktop.applications.changeWindow(pid, hashOf(pid, index),
                                          [&](platform::simulated::Window &changed) { changed.closeButton = button; });
    }
    RunningAppGroup customGroup()
    {
        for (const TaskbarEntry &entry : model->taskbarEntries(false))
            if (entry.group && entry.group->isCustom)
                return *entry.group;
        ADD_FAILURE() << "no custom group";
        return {};
    }
    RunningAppGroup groupOf(Pid pid)
    {
        for (const RunningAppGroup &group : model->runningAppGroups())
            if (group.processIdentifier() == pid)
                return group;
        return {};
    }
};

TEST_F(Closing, APressThatFailsLeavesTheTaskItsOrderAndItsGroup)
{
    model->createCustomGroup({task(idOf(1, 0))});
    model->setTaskPosition("group::" + customGroup().id, false);
    setButton(1, 0, platform::simulated::CloseButton::fails);
    const auto order = model->settings().taskOrder;
    const auto before = ids();
    model->closeFrontWindow(task(idOf(1, 0)));
    advance(1);
    EXPECT_EQ(ids(), before);
    EXPECT_EQ(model->settings().taskOrder, order);
    EXPECT_EQ(model->settings().customGroupMembers.size(), 1U);
}

TEST_F(Closing, TheLastMemberClosedTakesItsCustomGroupAlong)
{
    model->createCustomGroup({task(idOf(2, 0))});
    model->closeFrontWindow(task(idOf(2, 0)));
    EXPECT_TRUE(model->settings().customGroupNames.empty());
    EXPECT_TRUE(desktop.defaults.dictionary("customGroupNames")->empty());
}

TEST_F(Closing, AGroupsWindowWithoutAButtonIsGoneForAMomentAndComesBack)
{
    setButton(1, 1, platform::simulated::CloseButton::none);
    model->closeWindows(groupOf(1));
    EXPECT_EQ(names(), Names{"Notes 1"});
    advance(0.2);
    EXPECT_EQ(names(), (Names{"Notes 1", "Mail 2"}));
}

TEST_F(Closing, AGroupThatIsNotCustomIsNotDissolved)
{
    auto published = countPublished(ModelProperty::modelChanged);
    model->closeAndRemoveCustomGroup(groupOf(1));
    advance(1);
    EXPECT_EQ(model->runningApps().size(), 3U);
    EXPECT_EQ(published->value, 0);
    EXPECT_TRUE(takeActions().empty());
}

TEST_F(Closing, ACustomGroupWhoseWindowsRefuseIsDissolvedAllTheSame)
{
    setButton(1, 0, platform::simulated::CloseButton::fails);
    model->createCustomGroup({task(idOf(1, 0))});
    model->closeAndRemoveCustomGroup(customGroup());
    EXPECT_TRUE(model->settings().customGroupMembers.empty());
    EXPECT_TRUE(model->settings().customGroupNames.empty());
    EXPECT_EQ(model->runningApps().size(), 3U);
}

TEST_F(Closing, EverythingClosesButTheDesktopAndWhatIsNoOrdinaryApplication)
{
    platform::simulated::Process files;
    files.application.pid = 3;
    files.application.localizedName = "Files";
    files.application.bundleIdentifier = "com.apple.finder";
    files.windows = {window(300, std::nullopt), window(301, "Documents")};
    desktop.applications.put(files);
    platform::simulated::Process agent;
    agent.application.pid = 4;
    agent.application.policy = platform::ActivationPolicy::accessory;
    agent.windows = {window(400, "Agent")};
    desktop.applications.put(agent);
    model->closeAllWindows();
    EXPECT_EQ(desktop.applications.windowCount(1), 0U);
    EXPECT_EQ(desktop.applications.windowCount(3), 1U);
    EXPECT_TRUE(desktop.applications.window(3, 300));
    EXPECT_EQ(desktop.applications.windowCount(4), 1U);
}

TEST_F(Closing, HidingEverythingMinimisesTheFileManagersWindowsAndHidesTheOthers)
{
    platform::simulated::Process files;
    files.application.pid = 3;
    files.application.bundleIdentifier = "com.apple.finder";
    files.windows = {window(300, std::nullopt), window(301, "Documents")};
    desktop.applications.put(files);
    desktop.applications.setMinimized(2, hashOf(2, 0), true);
    platform::simulated::Process self;
    self.application.pid = platform.applications.self();
    self.windows = {window(500, "Settings")};
    desktop.applications.put(self);
    desktop.actions.take();
    model->hideVisibleWindows();
    EXPECT_TRUE(desktop.applications.find(1)->hidden);
    EXPECT_FALSE(desktop.applications.find(2)->hidden);  // nothing of it was to be seen
    EXPECT_FALSE(desktop.applications.find(3)->hidden);
    EXPECT_TRUE(*desktop.applications.window(3, 301)->minimized);
    EXPECT_FALSE(*desktop.applications.window(3, 300)->minimized);
    EXPECT_FALSE(desktop.applications.find(platform.applications.self())->hidden);
}

TEST_F(Closing, WithoutThePermissionClosingAsksForItAndHidingDoesNot)
{
    const auto item = task(idOf(1, 0));
    const auto group = groupOf(1);
    desktop.accessibility.setTrusted(false);
    model->refreshForStartMenuShow();
    desktop.actions.take();
    model->closeFrontWindow(item);
    model->closeWindows(group);
    model->closeAllWindows();
    model->minimizeAllWindows(group);
    EXPECT_EQ(takeActions(), Names(4, "promptForAccessibility"));
    model->hideVisibleWindows();
    EXPECT_EQ(takeActions(), (Names{"hide", "hide"}));
}

TEST_F(Closing, NothingIsQuitOrClosedWithoutTheFirstButton)
{
    desktop.dialogs.setResponse(1001);
    model->confirmQuitApplication(task(idOf(1, 0)));
    model->confirmCloseGroup(groupOf(1));
    model->confirmCloseAllWindows();
    EXPECT_EQ(model->runningApps().size(), 3U);
    const auto &shown = desktop.dialogs.shown();
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_EQ(shown[0].alert.message,
              "Mail will be terminated and all windows in this group will be closed. Continue?");
    EXPECT_EQ(shown[0].alert.buttons, (Names{"Continue", "Cancel"}));
    EXPECT_EQ(shown[0].horizontalCenterFraction, 0.5);
    desktop.dialogs.setResponse(1000);
    model->confirmCloseGroup(groupOf(1));
    EXPECT_EQ(names(), Names{"Notes 1"});
}

}  // namespace
}  // namespace korvane
