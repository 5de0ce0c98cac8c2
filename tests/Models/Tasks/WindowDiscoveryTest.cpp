#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::Names;

class Discovery : public ModelFixture {
protected:
    void addUntitled(Pid pid, const std::string &name)
    {
        addApplication(pid, name, 1);
        desktop.applications.openWindow(pid, window(hashOf(pid, 50), std::nullopt));
    }
    std::vector<std::string> blacklist() const { return model->settings().blacklist; }
};

TEST_F(Discovery, AWindowWithABlankTitleIsNamedAfterItsApplication)
{
    addApplication(1, "Mail", 0);
    desktop.applications.openWindow(1, window(5, " \t\n\u00a0"));
    start();
    EXPECT_EQ(names(), Names{"Mail"});
}

TEST_F(Discovery, TheFileManagersDesktopIsHiddenByItsNameAndSoIsAWindowOfThatTitle)
{
    addUntitled(1, "Finder");
    desktop.applications.openWindow(1, window(hashOf(1, 51), "Finder"));
    start();
    EXPECT_EQ(names(), Names{"Finder 1"});
    model->removeFromBlacklist("finder");
    EXPECT_EQ(names(), (Names{"Finder 1", "Finder", "Finder"}));
}

TEST_F(Discovery, TheBlacklistDoesNotCareForCase)
{
    addUntitled(1, "Finder");
    desktop.defaults.put("taskbarBlacklist", std::vector<std::string>{"FINDER"});
    start();
    EXPECT_EQ(names(), Names{"Finder 1"});
    model->addToBlacklist("finder");
    EXPECT_EQ(blacklist(), Names{"FINDER"});
}

TEST_F(Discovery, NamesAreStoredTrimmedOnceAndRemovedWhateverTheirCase)
{
    makeModel();
    model->addToBlacklist("  Mail ");
    EXPECT_EQ(blacklist(), (Names{"Finder", "Mail"}));
    model->addToBlacklist("MAIL");
    EXPECT_EQ(blacklist(), (Names{"Finder", "Mail"}));
    model->removeFromBlacklist("mail");
    EXPECT_EQ(blacklist(), Names{"Finder"});
}

TEST_F(Discovery, ANameOfBlanksAloneIsRefused)
{
    makeModel();
    desktop.defaults.takeWrites();
    model->addToBlacklist(" \n ");
    EXPECT_EQ(blacklist(), Names{"Finder"});
    EXPECT_TRUE(desktop.defaults.takeWrites().empty());
}

TEST_F(Discovery, WithoutAFocusedWindowTheFrontmostApplicationHasNoActiveTask)
{
    addApplication(1, "Mail", 2);
    desktop.applications.setActive(1);
    desktop.applications.setFocusedWindow(1, std::nullopt);
    start();
    for (const RunningAppItem &item : model->runningApps())
        EXPECT_FALSE(item.isActive);
}

TEST_F(Discovery, WithoutThePermissionTheFrontmostWindowOfTheFrontmostApplicationIsActive)
{
    addApplication(1, "Mail", 0);
    desktop.applications.setActive(1);
    start();
    desktop.windowList.set(std::vector<platform::OnScreenWindow>{
        {25, 1, 4, "A menu"}, {0, 1, 5, "First"}, {0, 1, 6, " "}, {0, 77, 7, "Stranger"}, {0, 1, std::nullopt, "?"}});
    desktop.accessibility.setTrusted(false);
    model->refreshForStartMenuShow();
    ASSERT_EQ(names(), (Names{"First", "Mail"}));
    EXPECT_EQ(ids(), (Names{"cg:1:5", "cg:1:6"}));
    EXPECT_TRUE(model->runningApps()[0].isActive);
    EXPECT_EQ(model->runningApps()[1].windowIndex, 1);
    EXPECT_FALSE(model->runningApps()[1].isActive);
}

TEST_F(Discovery, AnIdentifierOfAnotherTypeOrAnEmptyOneCountsAsNone)
{
    addApplication(1, "Mail", 0);
    auto numbered = window(5, "A");
    numbered.identifier = platform::Value(std::int64_t{3});
    auto empty = window(6, "B");
    empty.identifier = platform::Value(std::string());
    auto named = window(7, "C");
    named.identifier = platform::Value(std::string("main:1"));
    for (const auto &made : {numbered, empty, named})
        desktop.applications.openWindow(1, made);
    start();
    EXPECT_EQ(ids(), (Names{"ax:1:hash:5", "ax:1:hash:6", "ax:1:identifier:main:1:hash:7"}));
}

TEST_F(Discovery, AnApplicationThatDoesNotAnswerLosesItsTabsUntilItDoes)
{
    addApplication(1, "Mail", 2);
    start();
    desktop.applications.setReadStatus(1, platform::AxStatus::cannotComplete);
    model->refresh();
    EXPECT_TRUE(model->runningApps().empty());
    desktop.applications.setReadStatus(1, platform::AxStatus::success);
    model->refresh();
    EXPECT_EQ(model->runningApps().size(), 2U);
}

TEST_F(Discovery, AnApplicationIsDescribedOnceForAsLongAsItLives)
{
    addApplication(1, "Mail", 1);
    start();
    auto renamed = *desktop.applications.find(1);
    renamed.localizedName = "Post";
    platform::simulated::Process process;
    process.application = renamed;
    process.windows = {window(hashOf(1, 0), std::nullopt)};
    desktop.applications.put(process);
    model->refresh();
    EXPECT_EQ(names(), Names{"Mail"});
    desktop.applications.remove(1);
    model->refresh();
    desktop.applications.put(process);
    model->refresh();
    EXPECT_EQ(names(), Names{"Post"});
}

}  // namespace
}  // namespace korvane
