#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::V;

class CustomGroups : public ModelFixture {
protected:
    CustomGroups()
    {
        addApplication(1, "Mail", 3);
        addApplication(2, "Notes", 1);
        start();
    }
    RunningAppGroup group(const std::string &id, bool groupAll = true)
    {
        for (const TaskbarEntry &entry : model->taskbarEntries(groupAll))
            if (entry.id == id && entry.group)
                return *entry.group;
        ADD_FAILURE() << "no group " << id;
        return {};
    }
    // The key of the only group of that name.
    std::string keyOf(const std::string &name)
    {
        for (const auto &[key, stored] : model->settings().customGroupNames)
            if (stored == name)
                return key;
        return "";
    }
    const StringMap &members() { return model->settings().customGroupMembers; }
};

TEST_F(CustomGroups, AWindowDroppedOnItsOwnGroupStaysAndIsUngroupedNoMore)
{
    model->createCustomGroup({task(idOf(1, 0))});
    const std::string key = keyOf("New Group");
    model->returnToParentGroup(task(idOf(1, 0)));
    model->dropTask(idOf(1, 0), group("custom:" + key));
    EXPECT_EQ(members().at(idOf(1, 0)), key);
    EXPECT_TRUE(model->settings().forcedUngroupedWindows.empty());
}

TEST_F(CustomGroups, AWholeGroupDroppedOnAnotherEndsTheFirst)
{
    model->createCustomGroup({task(idOf(1, 0))});
    const std::string first = keyOf("New Group");
    model->renameCustomGroup(group("custom:" + first), "First");
    model->createCustomGroup({task(idOf(2, 0))});
    const std::string second = keyOf("New Group");
    model->dropTask("group::custom:" + first, group("custom:" + second));
    EXPECT_EQ(model->settings().customGroupNames.size(), 1U);
    EXPECT_EQ(model->settings().customGroupIcons.size(), 1U);
    EXPECT_EQ(members().at(idOf(1, 0)), second);
}

TEST_F(CustomGroups, ATaskDroppedOnAnotherApplicationsGroupMakesAGroupOfThatName)
{
    model->dropTask(idOf(2, 0), group("auto:1"));
    const RunningAppGroup made = group("custom:" + keyOf("Mail"));
    EXPECT_EQ(made.windows.size(), 4U);
    EXPECT_EQ(made.customIconGlyph, "📁");
}

TEST_F(CustomGroups, AnAutomaticGroupHasNoNameToChange)
{
    desktop.defaults.takeWrites();
    model->renameCustomGroup(group("auto:1"), "Other");
    model->setCustomGroupIcon(group("auto:1"), "x");
    EXPECT_TRUE(desktop.defaults.takeWrites().empty());
    EXPECT_TRUE(model->settings().customGroupNames.empty());
}

TEST_F(CustomGroups, InModeNeverNoWindowReturnsToItsParentGroup)
{
    model->setTaskPosition(idOf(1, 1), true);
    ASSERT_TRUE(model->settings().forcedUngroupedWindows.contains(idOf(1, 1)));
    model->set(&V::groupingMode, GroupingMode::never);
    model->returnToParentGroup(task(idOf(1, 1)));
    EXPECT_TRUE(model->settings().forcedUngroupedWindows.contains(idOf(1, 1)));
    model->set(&V::groupingMode, GroupingMode::always);
    model->returnToParentGroup(task(idOf(1, 1)));
    EXPECT_FALSE(model->settings().forcedUngroupedWindows.contains(idOf(1, 1)));
}

TEST_F(CustomGroups, AGroupLeftByItsLastWindowKeepsItsNameUntilTheNextCleaning)
{
    model->createCustomGroup({task(idOf(1, 0))});
    model->createCustomGroup({task(idOf(1, 0))});
    EXPECT_EQ(model->settings().customGroupNames.size(), 2U);
    model->groupTask(idOf(1, 1), idOf(1, 2));
    EXPECT_EQ(model->settings().customGroupNames.size(), 2U);  // one cleaned away, one new
}

TEST_F(CustomGroups, ATaskDroppedOnItselfMakesNoGroup)
{
    model->groupTask(idOf(1, 0), idOf(1, 0));
    EXPECT_TRUE(model->settings().customGroupNames.empty());
    model->groupTask("nothing", idOf(1, 0));  // the target alone becomes a group of one
    EXPECT_EQ(members().size(), 1U);
}

TEST_F(CustomGroups, AnEmptyNameIsStoredAsEmpty)
{
    model->createCustomGroup({task(idOf(1, 0))});
    const std::string key = keyOf("New Group");
    model->renameCustomGroup(group("custom:" + key), "");
    EXPECT_EQ(model->settings().customGroupNames.at(key), "");
}

}  // namespace
}  // namespace korvane
