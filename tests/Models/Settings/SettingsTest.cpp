#include "Models/Settings/SettingsJson.h"
#include "tests/Models/AppModel/ModelFixture.h"

#include <algorithm>
#include <set>

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::V;

class SettingsStore : public ModelFixture {
protected:
    const V &load()
    {
        model.reset();
        makeModel();
        return model->settings();
    }
    bool stored(const std::string &key) { return desktop.defaults.has(key); }
};

TEST(SettingsTable, HasEachKeyAndEachPropertyOnce)
{
    std::set<std::string_view> keys, properties;
    for (const Setting &setting : settingsTable()) {
        EXPECT_TRUE(keys.insert(setting.key).second) << setting.key;
        EXPECT_TRUE(properties.insert(setting.property).second) << setting.property;
    }
    EXPECT_EQ(keys.size(), 59U);
    EXPECT_EQ(findSetting("noSuchProperty"), nullptr);
}

TEST_F(SettingsStore, AStoredFalseStaysFalseAndAMissingKeyGivesTrue)
{
    desktop.defaults.put("autoHideEnabled", false);
    EXPECT_FALSE(load().autoHideEnabled);
    EXPECT_TRUE(model->settings().blueStripsEnabled);
}

TEST_F(SettingsStore, AnOldGroupingSwitchIsWrittenBackOnlyWithTheNextChange)
{
    desktop.defaults.put("groupTabsEnabled", false);
    EXPECT_EQ(load().groupingMode, GroupingMode::never);
    EXPECT_FALSE(stored("groupingMode"));
    model->set(&V::barOpacity, 0.25);
    EXPECT_EQ(desktop.defaults.string("groupingMode"), "never");
    EXPECT_TRUE(stored("groupTabsEnabled"));
}

TEST_F(SettingsStore, AnUnknownStartIconGivesTheDefault)
{
    desktop.defaults.put("startIconChoice", std::string("other"));
    EXPECT_EQ(load().startIconChoice, StartIcon::application);
}

TEST_F(SettingsStore, ATextThatIsNoneOfTheChoicesIsKeptAndWrittenAsItIs)
{
    desktop.defaults.put("groupingMode", std::string("sometimes"));
    desktop.defaults.put("attentionListMode", std::string("Now and then"));
    EXPECT_EQ(load().groupingMode.text(), "sometimes");
    EXPECT_FALSE(model->settings().groupingMode.value());
    model->set(&V::barOpacity, 0.25);
    EXPECT_EQ(desktop.defaults.string("groupingMode"), "sometimes");
    EXPECT_EQ(desktop.defaults.string("attentionListMode"), "Now and then");
}

template <typename T> class EachChoice : public ::testing::Test {};
using Choices = ::testing::Types<GroupingMode, MediaSliderDisplay, NewWindowsPlace, StartIcon, NotificationBadgeStyle,
                                 AttentionListMode, FilterPolicy>;
TYPED_TEST_SUITE(EachChoice, Choices);

TYPED_TEST(EachChoice, HasATextOfItsOwnThatGivesItBack)
{
    std::set<std::string_view> texts;
    for (const auto &[choice, text] : choiceTexts<TypeParam>) {
        EXPECT_TRUE(texts.insert(text).second) << text;
        EXPECT_EQ(Choice<TypeParam>(choice).text(), text);
        EXPECT_EQ(Choice<TypeParam>(std::string(text)), choice);
    }
    EXPECT_FALSE(texts.empty());
}

TYPED_TEST(EachChoice, AnotherTextEqualsNoChoiceButItself)
{
    const Choice<TypeParam> other("other");
    for (const auto &[choice, text] : choiceTexts<TypeParam>)
        EXPECT_NE(other, choice) << text;
    EXPECT_EQ(other, Choice<TypeParam>("other"));
    EXPECT_NE(other, Choice<TypeParam>("another"));
}

TEST_F(SettingsStore, AWhitelistOfNothingLoadsAsABlacklist)
{
    desktop.defaults.put("attentionIndicatorPolicy", std::string("whitelist"));
    EXPECT_EQ(load().attentionIndicatorPolicy, FilterPolicy::blacklist);
    desktop.defaults.put("attentionIndicatorApps", std::vector<std::string>{"Mail"});
    EXPECT_EQ(load().attentionIndicatorPolicy, FilterPolicy::whitelist);
}

TEST_F(SettingsStore, NothingIsClampedOnLoading)
{
    desktop.defaults.put("taskbarRefreshSeconds", std::int64_t{99});
    EXPECT_EQ(load().taskbarRefreshSeconds, 99);
    model->start();
    EXPECT_EQ(model->inspect().refreshTimerInterval, 2.0);
}

TEST_F(SettingsStore, RestoredDefaultsTakeTheFirstRunsColoursBackForGood)
{
    load();
    EXPECT_EQ(model->settings().defaultAppColors.size(), 2U);
    model->restoreDefaults();
    EXPECT_TRUE(model->settings().defaultAppColors.empty());
    EXPECT_TRUE(load().defaultAppColors.empty());

    platform::simulated::Process fileManager;
    fileManager.application.pid = 9;
    fileManager.application.localizedName = "Files";
    fileManager.application.bundleIdentifier = "com.apple.finder";
    fileManager.windows = {window(900, "Documents")};
    desktop.applications.put(fileManager);
    start();
    desktop.applications.openWindow(9, window(901, "Pictures"));
    advance(0.1);
    ASSERT_EQ(model->runningApps().size(), 2U);
    EXPECT_TRUE(model->liveTabColors().empty());
}

TEST_F(SettingsStore, RestoringGivesAnotherStartLetterThanTheFirstRun)
{
    EXPECT_EQ(load().customStartIcon, "ⓚ");
    model->restoreDefaults();
    EXPECT_EQ(model->settings().customStartIcon, "K");
    EXPECT_EQ(load().customStartIcon, "K");
}

TEST_F(SettingsStore, AChangeWritesEveryKeyOfItsGroupInTheOrderOfTheTable)
{
    load();
    desktop.defaults.takeWrites();
    model->set(&V::menuOpacity, 0.5);
    std::vector<std::string> expected;
    for (const Setting &setting : settingsTable())
        if (setting.group == SettingGroup::appearance)
            expected.emplace_back(setting.key);
    EXPECT_EQ(desktop.defaults.takeWrites(), expected);
}

TEST_F(SettingsStore, AnEqualValueIsSavedAndNobodyIsTold)
{
    load();
    desktop.defaults.takeWrites();
    int changes = 0;
    const auto observation = model->changed.add([&] { ++changes; });
    model->set(&V::menuOpacity, 1.0);
    EXPECT_FALSE(desktop.defaults.takeWrites().empty());
    EXPECT_EQ(changes, 0);
}

TEST_F(SettingsStore, AListIsSavedByItsOperationAndNotByItsChange)
{
    load();
    desktop.defaults.takeWrites();
    model->set(&V::specificGroupingApps, {"Mail"});
    EXPECT_TRUE(desktop.defaults.takeWrites().empty());
}

TEST_F(SettingsStore, EverySettingSurvivesARestart)
{
    load();
    // Each plain setting gets a value that is not its default, and its group is saved.
    for (const Setting &setting : settingsTable())
        if (const auto *flag = std::get_if<bool V::*>(&setting.member))
            model->set(*flag, !(V().*(*flag)));
        else if (const auto *number = std::get_if<double V::*>(&setting.member))
            model->set(*number, V().*(*number) + 0.25);
        else if (const auto *integer = std::get_if<std::int64_t V::*>(&setting.member))
            model->set(*integer, V().*(*integer) + 3);
    model->set(&V::customStartImagePath, "/a/b.png");
    const V before = model->settings();
    const V &after = load();
    for (const Setting &setting : settingsTable())
        std::visit([&](auto member) { EXPECT_TRUE(before.*member == after.*member) << setting.property; },
                   setting.member);
}

TEST_F(SettingsStore, FavoritesThatDoNotDecodeGiveTheDefaults)
{
    const std::string broken = R"([{"id":"app:x","name":"X","kind":"app"}])";
    desktop.defaults.put("startFavorites", std::vector<std::uint8_t>(broken.begin(), broken.end()));
    EXPECT_EQ(load().startFavorites, defaultFavorites());
    const std::string good = R"([{"id":"app:x","name":"X","kind":"app","value":"x"}])";
    desktop.defaults.put("startFavorites", std::vector<std::uint8_t>(good.begin(), good.end()));
    ASSERT_EQ(load().startFavorites.size(), 1U);
    EXPECT_FALSE(model->settings().startFavorites[0].bundleIdentifier);
}

TEST_F(SettingsStore, ATextThatIsNotUtf8LeavesWhatIsStored)
{
    load();
    EXPECT_FALSE(SettingsJson::encode(FavoriteList{{"app:\xff", "n", "app", "v", std::nullopt}}));
    EXPECT_TRUE(SettingsJson::encode(FavoriteList{}));
}

}  // namespace
}  // namespace korvane
