#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using platform::simulated::DockItem;
using testing::ModelFixture;
using testing::Names;
using testing::V;

DockItem item(const std::string &title, std::optional<std::string> label,
              const std::string &subrole = "AXApplicationDockItem")
{
    DockItem made;
    made.title = title;
    made.subrole = subrole;
    made.statusLabel = std::move(label);
    made.children.emplace();
    return made;
}

// The item as the only child of that many elements, one in another.
DockItem atDepth(int depth, DockItem inner)
{
    for (; depth > 0; --depth) {
        DockItem outer;
        outer.children = std::vector<DockItem>{std::move(inner)};
        inner = std::move(outer);
    }
    return inner;
}

class Badges : public ModelFixture {
protected:
    Badges()
    {
        addApplication(1, "Mail", 1);
        addApplication(2, "Chat", 0);
    }
    void dock(std::vector<DockItem> items)
    {
        DockItem root;
        root.children = std::move(items);
        desktop.applications.setDock(root);
    }
    std::set<std::string> scan(const DockItem &root)
    {
        desktop.applications.setDock(root);
        const auto names = DockBadges::dockBadgedAppNames(platform);
        return {names.begin(), names.end()};
    }
    Names attention() const
    {
        Names names;
        for (const AttentionAppItem &app : model->attentionApps())
            names.push_back(app.name);
        return names;
    }
};

TEST_F(Badges, AreLookedForFourElementsDeepAndNoDeeper)
{
    EXPECT_EQ(scan(atDepth(4, item("Mail", "1"))), std::set<std::string>{"Mail"});
    EXPECT_TRUE(scan(atDepth(5, item("Mail", "1"))).empty());
}

TEST_F(Badges, ALabelOfBlanksIsNoneAndAnyOtherIsOne)
{
    for (const char *label : {"", " ", "\t\n"})
        EXPECT_TRUE(scan(atDepth(1, item("Mail", label))).empty()) << label;
    EXPECT_TRUE(scan(atDepth(1, item("Mail", std::nullopt))).empty());
    EXPECT_EQ(scan(atDepth(1, item("Mail", "•"))).size(), 1U);
}

TEST_F(Badges, AnItemOfAnotherKindIsNotBadgedButItsChildrenAreLookedAt)
{
    DockItem folder = item("Folder", "3", "AXFolderDockItem");
    folder.children = std::vector<DockItem>{item("Mail", "1")};
    EXPECT_EQ(scan(atDepth(1, folder)), std::set<std::string>{"Mail"});
}

TEST_F(Badges, AreScannedAtMostOnceASecond)
{
    dock({item("Mail", "1")});
    makeModel();
    model->set(&V::expertBadgeScanSeconds, 0.2);
    model->set(&V::taskbarRefreshSeconds, 1);
    start();
    const int before = desktop.applications.dockQueries();
    for (int i = 0; i < 50; ++i) {
        model->refresh();
        advance(0.1);
    }
    EXPECT_LE(desktop.applications.dockQueries() - before, 5);
    EXPECT_GE(desktop.applications.dockQueries() - before, 4);
}

TEST_F(Badges, ABadgedApplicationWithoutWindowsIsInTheAttentionListAndHasNoTask)
{
    dock({item("Chat", "1")});
    start();
    EXPECT_EQ(attention(), Names{"Chat"});
    EXPECT_EQ(names(), Names{"Mail 1"});
}

TEST_F(Badges, AWhitelistOfOneWithoutABadgeRaisesNoIndicator)
{
    dock({item("Chat", "1")});
    start();
    EXPECT_TRUE(model->shouldShowTaskbarAttentionIndicator());
    model->setAttentionIndicatorFilter(FilterPolicy::whitelist, {"Mail"});
    EXPECT_FALSE(model->shouldShowTaskbarAttentionIndicator());
    EXPECT_EQ(attention(), Names{"Chat"});
}

TEST_F(Badges, TheLastNameRemovedFromAWhitelistLetsEverybodyRaiseTheIndicatorAgain)
{
    dock({item("Chat", "1")});
    start();
    model->setAttentionIndicatorFilter(FilterPolicy::whitelist, {"Mail"});
    model->removeAttentionIndicatorApp("Mail");
    EXPECT_EQ(model->settings().attentionIndicatorPolicy, FilterPolicy::blacklist);
    EXPECT_TRUE(model->shouldShowTaskbarAttentionIndicator());
}

TEST_F(Badges, WithoutAMarkTheyAreStillScannedForTheList)
{
    dock({item("Mail", "1")});
    makeModel();
    model->set(&V::notificationBadgeStyle, NotificationBadgeStyle::none);
    start();
    EXPECT_TRUE(model->runningApps()[0].hasNotificationBadge);
}

}  // namespace
}  // namespace korvane
