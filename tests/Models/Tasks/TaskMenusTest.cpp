#include "Models/Tasks/TaskMenus.h"

#include "Models/Base/Identifiers.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Models/Base/Make.h"

#include <algorithm>

namespace korvane {
namespace {

using testing::makeItem;
using testing::ModelFixture;
using testing::Names;
using testing::V;

Names titles(const Menu &menu)
{
    Names names;
    for (const MenuItem &item : menu)
        if (!item.isDivider())
            names.push_back(item.title);
    return names;
}

bool offers(const Menu &menu, std::string_view title)
{
    return std::any_of(menu.begin(), menu.end(), [&](const MenuItem &item) { return item.title == title; });
}

const MenuItem &named(const Menu &menu, std::string_view title)
{
    return *std::find_if(menu.begin(), menu.end(), [&](const MenuItem &item) { return item.title == title; });
}

RunningAppGroup groupOf(std::size_t windows, bool custom)
{
    RunningAppGroup group;
    group.id = custom ? "custom:K" : "auto:101";
    group.appName = "Mail";
    group.isCustom = custom;
    for (std::size_t i = 0; i < windows; ++i)
        group.windows.push_back(makeItem("w" + std::to_string(i)));
    return group;
}

}  // namespace

TEST(TaskMenus, TheSettingsTaskCanNeitherBePlacedNorGroupedYetStillOffersToQuit)
{
    RunningAppItem item = makeItem(std::string(Identifiers::settingsTask));
    item.appName = "Korvane";
    item.bundleIdentifier = std::nullopt;
    const Menu menu = TaskMenus::taskMenu(item, {}, {});
    EXPECT_EQ(titles(menu), (Names{"Select Color", "Color Transparency", "Quit Korvane", "Close", "Resize"}));
}

TEST(TaskMenus, WithoutGroupingATaskOffersNeitherANewGroupNorTheFavorites)
{
    SettingsValues settings;
    const RunningAppItem item = makeItem("w");
    settings.forcedUngroupedWindows = {"w"};
    EXPECT_TRUE(offers(TaskMenus::taskMenu(item, settings, {}), "Parent Group"));
    settings.groupingMode = GroupingMode::never;
    const Menu menu = TaskMenus::taskMenu(item, settings, {});
    EXPECT_EQ(titles(menu), (Names{"Set First", "Set Last", "Select Color", "Set Default Color", "Color Transparency",
                                   "Quit Mail", "Close", "Resize"}));
}

TEST(TaskMenus, AGroupOfOneWindowOffersToCloseItAndNothingToQuit)
{
    const Menu menu = TaskMenus::groupMenu(groupOf(1, false), {});
    EXPECT_TRUE(offers(menu, "Close"));
    EXPECT_FALSE(offers(menu, "Quit Mail & Group"));
    EXPECT_FALSE(offers(menu, "Close Group"));
    EXPECT_TRUE(GroupButtons::actsAsWindow(groupOf(1, false)));
    EXPECT_FALSE(GroupButtons::actsAsWindow(groupOf(1, true)));
}

TEST(TaskMenus, TheListScrollsFromTwentyOneWindowsOn)
{
    EXPECT_FALSE(GroupButtons::listScrolls(groupOf(20, false)));
    EXPECT_TRUE(GroupButtons::listScrolls(groupOf(21, false)));
}

TEST(TaskMenus, FullTransparencyStepsPassTheirOwnNumbers)
{
    double chosen = 0;
    const Menu menu = TaskMenus::transparencyMenu([&](double opacity) { chosen = opacity; });
    const auto choose = [&](std::string_view title) {
        named(menu, title).action();
        return chosen;
    };
    EXPECT_EQ(choose("100%"), 1.0);
    EXPECT_EQ(choose("Default (50%)"), 0.5);
    EXPECT_EQ(choose("50%"), 0.5);
    EXPECT_EQ(choose("10%"), 0.1);
}

TEST(TaskMenus, DefaultPassesNoColourAndAnyOtherItsOwnName)
{
    std::vector<ColorName> chosen;
    bool picking = false;
    const SetColor set = [&](const ColorName &name) { chosen.push_back(name); };
    const Menu menu = TaskMenus::colorMenu(set, [&](const SetColor &apply) {
        picking = true;
        apply("Custom:#010203");
    });
    for (const char *title : {"Default", "Gray", "Color Picker…"})
        named(menu, title).action();
    EXPECT_EQ(chosen, (std::vector<ColorName>{std::nullopt, "Gray", "Custom:#010203"}));
    EXPECT_TRUE(picking);
}

// ---------------------------------------------------------------------------------------------------- favorites

class Favorites : public ModelFixture {
protected:
    std::vector<std::string> added() const
    {
        std::vector<std::string> ids;
        const auto &list = model->settings().startFavorites;
        for (std::size_t i = defaultFavorites().size(); i < list.size(); ++i)
            ids.push_back(list[i].id);
        return ids;
    }
};

TEST_F(Favorites, AddingAnApplicationTwiceLeavesOne)
{
    addApplication(1, "Chat", 2);
    start();
    model->addToFavorites(task(idOf(1, 0)));
    model->addToFavorites(task(idOf(1, 1)));
    model->addToFavorites(model->runningAppGroups().front());
    EXPECT_EQ(added(), (Names{"app:org.example.Chat"}));
    EXPECT_EQ(model->settings().startFavorites.back().name, "Chat");
    // It is there also after a restart.
    model = nullptr;
    makeModel();
    EXPECT_EQ(added(), (Names{"app:org.example.Chat"}));
}

TEST_F(Favorites, AnApplicationWithoutAnIdentifierGoesByItsName)
{
    start();
    RunningAppItem item = makeItem("w");
    item.bundleIdentifier = std::nullopt;
    model->addToFavorites(item);
    EXPECT_EQ(model->settings().startFavorites.back(),
              (StartFavorite{"app:Mail", "Mail", "app", "Mail", std::nullopt}));
}

TEST_F(Favorites, ACustomGroupAddsNothing)
{
    start();
    model->addToFavorites(groupOf(2, true));
    model->addToFavorites(groupOf(0, false));
    EXPECT_TRUE(added().empty());
}

// ---------------------------------------------------------------------------------------------------- colour panel

class ColorPicking : public ModelFixture {};

TEST_F(ColorPicking, ThePanelOpensAfterTheMenuAndAppliesEveryColourThatIsTried)
{
    std::vector<std::string> applied;
    TabColors::pickColor(platform, "Custom:#0d1f36", [&](const std::string &color) { applied.push_back(color); });
    EXPECT_TRUE(desktop.dialogs.colorPanels().empty());
    advance(0);
    ASSERT_EQ(desktop.dialogs.colorPanels().size(), 1U);
    const auto &panel = desktop.dialogs.colorPanels().front();
    EXPECT_EQ(panel.initial, TabColors::storedTabColor("Custom:#0D1F36"));
    panel.changed({1, 0.5, 0});
    panel.changed({0, 0, 0});
    EXPECT_EQ(applied, (Names{"Custom:#FF8000", "Custom:#000000"}));
}

TEST_F(ColorPicking, WithoutAStoredColourThePanelKeepsItsOwn)
{
    TabColors::pickColor(platform, "Custom:#12345", [](const std::string &) {});
    advance(0);
    EXPECT_FALSE(desktop.dialogs.colorPanels().front().initial);
}

}  // namespace korvane
