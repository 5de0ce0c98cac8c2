// The model on a real X server: closing, hiding and quitting with programs that obey, refuse, ask and hang.
#include "Models/AppModel/AppModel.h"
#include "Platform/Icu/IcuText.h"
#include "Platform/Linux/PropertyListDefaults.h"
#include "Platform/Simulated/SimulatedSurroundings.h"
#include "tests/Platform/Linux/TemporaryDirectory.h"
#include "tests/Platform/X11/X11Test.h"
#include "tests/support/SampleClient.h"

#include <algorithm>
#include <csignal>

namespace korvane {
namespace {

using platform::X11Test;
using testing::SampleClient;

// Windows, time and the settings file are real; dialogs are of the test.
class ModelOnX11 : public X11Test, public ::testing::WithParamInterface<const char *> {
protected:
    ModelOnX11()
        : simulatedApplications(platform::simulated::Behaviour::passive, virtualLoop, actions),
          launching(simulatedApplications, actions), audio(virtualLoop), dialogs(actions)
    {}

    void start()
    {
        whole = std::make_unique<platform::Platform>(platform::Platform{
            loop, platform->applications(), platform->accessibility(), platform->windowList(), platform->screens(),
            platform->pointer(), platform->events(), platform->panels(), platform->hotKeys(), loginItem, defaults,
            launching, text, icons, audio, brightness, dialogs});
        model = std::make_unique<AppModel>(*whole);
        model->start();
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        for (const RunningAppItem &item : model->runningApps())
            result.push_back(item.name);
        std::sort(result.begin(), result.end());
        return result;
    }
    bool become(std::vector<std::string> expected)
    {
        std::sort(expected.begin(), expected.end());
        return loop.turnUntil([&] { return names() == expected; });
    }
    RunningAppItem task(const std::string &name) const
    {
        for (const RunningAppItem &item : model->runningApps())
            if (item.name == name)
                return item;
        ADD_FAILURE() << "no task " << name;
        return {};
    }
    RunningAppGroup groupOf(const std::vector<std::string> &members) const
    {
        RunningAppGroup group;
        for (const std::string &name : members)
            group.windows.push_back(task(name));
        return group;
    }
    bool isMinimized(SampleClient &client, int window) { return minimized(client.pid(), client.identifier(window)); }

    platform::simulated::VirtualLoop virtualLoop;
    platform::simulated::ActionLog actions;
    platform::simulated::SimulatedApplications simulatedApplications;
    platform::simulated::SimulatedLoginItem loginItem;
    platform::TemporaryDirectory directory;
    platform::PropertyListDefaults defaults{loop, directory.path() / "defaults.plist"};
    platform::simulated::SimulatedLaunching launching;
    platform::IcuText text;
    platform::simulated::SimulatedIcons icons;
    platform::simulated::SimulatedAudio audio;
    platform::simulated::SimulatedBrightness brightness;
    platform::simulated::SimulatedDialogs dialogs;
    std::unique_ptr<platform::Platform> whole;
    std::unique_ptr<AppModel> model;
};

class Closing : public ModelOnX11 {
protected:
    void SetUp() override
    {
        openDesktop(GetParam());
        openPlatform();
        mail = std::make_unique<SampleClient>(server, "Mail");
        notes = std::make_unique<SampleClient>(server, "Notes");
        mail->open(1, "inbox");
        mail->open(2, "draft");
        notes->open(3, "list");
        start();
        ASSERT_TRUE(become({"inbox", "draft", "list"}));
    }
    std::unique_ptr<SampleClient> mail, notes;
};

INSTANTIATE_TEST_SUITE_P(Managers, Closing, ::testing::Values("openbox --sm-disable", "icewm"), [](const auto &tested) {
    const std::string command = tested.param;
    return command.substr(0, command.find(' '));
});

TEST_P(Closing, TakesTheTabAtOnceAndTheWindowFollows)
{
    model->closeFrontWindow(task("draft"));
    EXPECT_EQ(names(), (std::vector<std::string>{"inbox", "list"}));
    loop.turnFor(platform::Seconds(0.4));
    EXPECT_EQ(names(), (std::vector<std::string>{"inbox", "list"}));
    EXPECT_TRUE(mail->running());
}

TEST_P(Closing, AWindowThatRefusesComesBack)
{
    mail->refuseToClose(2);
    model->closeFrontWindow(task("draft"));
    EXPECT_EQ(names().size(), 2U);
    EXPECT_TRUE(become({"inbox", "draft", "list"}));
}

TEST_P(Closing, AWindowThatAsksFirstStandsThereWithItsQuestion)
{
    mail->askBeforeClosing(2);
    model->closeFrontWindow(task("draft"));
    EXPECT_TRUE(become({"inbox", "draft", "Save changes?", "list"}));
}

TEST_P(Closing, AProgramThatHangsKeepsItsWindowAndHoldsNobodyUp)
{
    mail->signal(SIGSTOP);
    const auto before = loop.monotonicNow();
    model->closeFrontWindow(task("draft"));
    EXPECT_LT((loop.monotonicNow() - before).count(), 1.0);
    EXPECT_TRUE(become({"inbox", "draft", "list"}));
    mail->signal(SIGCONT);
    EXPECT_TRUE(become({"inbox", "list"}));
}

TEST_P(Closing, AWindowThatIsGoneIsClosedWithoutAWord)
{
    const auto gone = task("draft");
    mail->destroy(2);
    ASSERT_TRUE(become({"inbox", "list"}));
    model->closeFrontWindow(gone);
    EXPECT_EQ(names(), (std::vector<std::string>{"inbox", "list"}));
}

TEST_P(Closing, AWindowWithoutACloseButtonKeepsItsTask)
{
    notes->remove(3, "WM_PROTOCOLS");
    ASSERT_TRUE(loop.turnUntil([&] {
        platform::Value button;
        return accessibility().copy(elementOf(notes->pid(), notes->identifier(3)), "AXCloseButton", button)
               != platform::AxStatus::success;
    }));
    model->closeFrontWindow(task("list"));
    EXPECT_EQ(names().size(), 3U);
}

TEST_P(Closing, AGroupClosesAllOfItsWindows)
{
    model->closeWindows(groupOf({"inbox", "draft"}));
    EXPECT_EQ(names(), std::vector<std::string>{"list"});
    loop.turnFor(platform::Seconds(0.4));
    EXPECT_EQ(names(), std::vector<std::string>{"list"});
}

TEST_P(Closing, TheLastMemberOfACustomGroupTakesTheGroupOutOfTheSettings)
{
    model->createCustomGroup({task("draft"), task("list")});
    EXPECT_EQ(defaults.dictionary("customGroupNames")->size(), 1U);
    model->closeFrontWindow(task("draft"));
    EXPECT_EQ(defaults.dictionary("customGroupNames")->size(), 1U);
    model->closeFrontWindow(task("list"));
    defaults.synchronize();
    platform::PropertyListDefaults stored(loop, directory.path() / "defaults.plist");
    EXPECT_TRUE(stored.dictionary("customGroupNames")->empty());
    EXPECT_TRUE(stored.dictionary("customGroupMembers")->empty());
    EXPECT_TRUE(become({"inbox"}));
}

TEST_P(Closing, EverythingClosesButWhatRefuses)
{
    notes->refuseToClose(3);
    model->closeAllWindows();
    EXPECT_TRUE(become({"list"}));
}

TEST_P(Closing, HidingEverythingMinimisesItAndATabBringsItBack)
{
    model->hideVisibleWindows();
    EXPECT_TRUE(
        loop.turnUntil([&] { return isMinimized(*mail, 1) && isMinimized(*mail, 2) && isMinimized(*notes, 3); }));
    EXPECT_EQ(names().size(), 3U);
    model->activate(task("list"));
    EXPECT_TRUE(loop.turnUntil([&] { return !isMinimized(*notes, 3); }));
}

TEST_P(Closing, AGroupIsMinimisedWithAllOfItsWindows)
{
    model->minimizeAllWindows(groupOf({"inbox", "draft"}));
    EXPECT_TRUE(loop.turnUntil([&] { return isMinimized(*mail, 1) && isMinimized(*mail, 2); }));
    EXPECT_FALSE(isMinimized(*notes, 3));
}

TEST_P(Closing, QuittingAsksEveryWindowAndKillsNoneThatStays)
{
    mail->refuseToClose(1);
    model->quit(task("inbox"));
    EXPECT_TRUE(become({"inbox", "list"}));
    EXPECT_TRUE(mail->running());
}

TEST_P(Closing, ABadgedProgramWithoutWindowsStandsInTheAttentionListUntilItsBadgeGoes)
{
    platform::Application chat;
    chat.pid = 4711;
    chat.localizedName = "Chat";
    chat.bundlePath = "/apps/chat.desktop";
    platform->setBadgedPrograms({{{"chat.desktop", "2"}}, {{chat, ""}}});
    model->refresh(true);
    ASSERT_EQ(model->attentionApps().size(), 1U);
    EXPECT_EQ(model->attentionApps()[0].name, "Chat");
    EXPECT_EQ(names().size(), 3U);
    platform->setBadgedPrograms({});
    model->refresh(true);
    EXPECT_TRUE(model->attentionApps().empty());
    EXPECT_FALSE(applications().find(4711));
}

}  // namespace
}  // namespace korvane
