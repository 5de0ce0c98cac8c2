#include "Models/AppModel/Property.h"

#include <gtest/gtest.h>
#include <set>

namespace korvane {
namespace {

using V = SettingsValues;

TEST(Property, IsNamedLikeItsSettingOrByTheModel)
{
    EXPECT_EQ(Property(&V::blacklist).name(), "blacklist");
    EXPECT_EQ(Property(*findSetting("taskOrder")).name(), "taskOrder");
    EXPECT_EQ(Property(ModelProperty::systemIsInactive).name(), "systemIsInactive");
}

TEST(Property, EachOfTheModelsOwnHasANameThatNothingElseHas)
{
    std::set<std::string_view> names;
    for (const Setting &setting : settingsTable())
        names.insert(setting.property);
    for (int i = 0; i <= static_cast<int>(ModelProperty::taskRowsExpanded); ++i) {
        const std::string_view name = Property(static_cast<ModelProperty>(i)).name();
        EXPECT_TRUE(names.insert(name).second) << name;
    }
}

TEST(Property, EqualsItselfAndNothingElse)
{
    const Property setting(*findSetting("appRefreshRate")), own(ModelProperty::runningApps);
    EXPECT_TRUE(setting == &V::appRefreshRate);
    EXPECT_FALSE(setting == &V::appMonitorRefreshRate);
    EXPECT_FALSE(setting == &V::barOpacity);
    EXPECT_FALSE(setting == ModelProperty::modelChanged);
    EXPECT_TRUE(own == ModelProperty::runningApps);
    EXPECT_FALSE(own == ModelProperty::attentionApps);
    EXPECT_FALSE(own == &V::appRefreshRate);
    EXPECT_FALSE(own == setting);
}

}  // namespace
}  // namespace korvane
