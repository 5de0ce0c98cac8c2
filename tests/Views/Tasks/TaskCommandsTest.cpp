#include "Views/Tasks/CloseGlyph.h"
#include "tests/Views/Tasks/ButtonFixture.h"

namespace korvane {
namespace {

using testing::ButtonFixture;
using testing::Names;
using testing::settle;

class TaskMenuItems : public ButtonFixture {
protected:
    TaskbarEntry settingsEntry()
    {
        model->setSettingsWindowVisible(true);
        return TaskbarEntry::ofItem(*model->settingsTaskItem());
    }
};

TEST_F(TaskMenuItems, TheMenuOfATaskStandsAsToldAndIsGoneAfterUse)
{
    addApplication(1, "Mail & More", 1);
    startWith(GroupingMode::asNeeded);
    auto *button = add(entry(idOf(1, 0)));
    button->openMenu();
    QMenu *menu = openedMenu();
    ASSERT_TRUE(menu);
    EXPECT_EQ(titles(*menu),
              (Names{"Set First", "Set Last", "-", "New Group", "Add Application to Favorites", "-", ">Select Color",
                     ">Set Default Color", ">Color Transparency", "Quit Mail && More", "-", "Close", "-", "Resize"}));
    // Upwards from the button.
    EXPECT_LE(menu->geometry().bottom(), button->mapToGlobal(QPoint()).y());
    const QPointer<QMenu> watched(menu);
    QTest::keyClick(menu, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(watched);
}

TEST_F(TaskMenuItems, TheItemsOfATasksMenuReachTheBarAndTheModel)
{
    addApplication(1, "Mail", 2);
    startWith(GroupingMode::asNeeded);
    const std::string id = idOf(1, 0);
    auto *button = add(entry(id));
    choose(*button, {"Set First"});
    choose(*button, {"Set Last"});
    choose(*button, {"Resize"});
    EXPECT_EQ(takeCalls(), (Names{"first " + id + " of 1", "last " + id + " of 1", "resize " + id}));
    choose(*button, {"Select Color", "Green"});
    EXPECT_EQ(model->liveTabColorName(id), "Green");
    choose(*button, {"Select Color", "Default"});
    EXPECT_EQ(model->liveTabColorName(id), std::nullopt);
    choose(*button, {"Set Default Color", "Red"});
    EXPECT_EQ(model->settings().defaultAppColors.at("org.example.Mail"), "Red");
    choose(*button, {"Color Transparency", "100%"});
    EXPECT_EQ(model->settings().tabColorOpacity, 1.0);
    choose(*button, {"Add Application to Favorites"});
    EXPECT_EQ(model->settings().startFavorites.back().id, "app:org.example.Mail");
    desktop.dialogs.setResponse(1001);
    choose(*button, {"Quit Mail"});
    EXPECT_EQ(desktop.dialogs.shown().back().alert.message,
              "Mail will be terminated and all windows in this group will be closed. Continue?");
    choose(*button, {"New Group"});
    EXPECT_EQ(model->settings().customGroupMembers.count(id), 1U);
    choose(*button, {"Close"});
    EXPECT_EQ(desktop.applications.windowCount(1), 1U);
}

TEST_F(TaskMenuItems, TheColourPanelAppliesToTheTabWhileItIsMoved)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::asNeeded);
    const std::string id = idOf(1, 0);
    auto *button = add(entry(id));
    model->setLiveTabColorName("Custom:#0D1F36", id);
    choose(*button, {"Select Color", "Color Picker…"});
    advance(0);
    ASSERT_EQ(desktop.dialogs.colorPanels().size(), 1U);
    EXPECT_EQ(desktop.dialogs.colorPanels()[0].initial, TabColors::storedTabColor("Custom:#0D1F36"));
    desktop.dialogs.colorPanels()[0].changed({0, 1, 0});
    EXPECT_EQ(model->liveTabColorName(id), "Custom:#00FF00");
    choose(*button, {"Set Default Color", "Color Picker…"});
    advance(0);
    desktop.dialogs.colorPanels()[1].changed({0, 0, 1});
    EXPECT_EQ(model->settings().defaultAppColors.at("org.example.Mail"), "Custom:#0000FF");
    EXPECT_EQ(model->liveTabColorName(id), "Custom:#0000FF");
}

TEST_F(TaskMenuItems, TheSettingsTaskOpensItsPanelAndItsQuitOnlyClosesThat)
{
    startWith(GroupingMode::asNeeded);
    int closed = 0;
    model->setSettingsCloseHandler([&] { ++closed; });
    auto *button = add(settingsEntry());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(takeCalls(), (Names{"settings"}));
    button->openMenu();
    EXPECT_EQ(titles(*openedMenu())[0], ">Select Color");
    openedMenu()->close();
    settle();
    choose(*button, {"Quit " + QString::fromStdString(model->settingsTaskItem()->appName)});
    EXPECT_EQ(closed, 1);
    EXPECT_TRUE(desktop.dialogs.shown().empty());
}

TEST_F(TaskMenuItems, AMenuGoesWithItsTaskAndWithItWhatWasChosen)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::asNeeded);
    auto *button = add(entry(idOf(1, 0)));
    button->openMenu();
    QMenu *menu = openedMenu();
    menu->setActiveAction(itemOf(*menu, "Close"));
    QTest::keyClick(menu, Qt::Key_Return);
    delete button;
    settle();
    EXPECT_EQ(openedMenu(), nullptr);
    EXPECT_EQ(desktop.applications.windowCount(1), 1U);
}

TEST_F(TaskMenuItems, AButtonMayGoWhileItsQuestionIsOpen)
{
    addApplication(1, "Mail", 2);
    startWith(GroupingMode::always);
    QPointer<TaskButton> button = add(entry("auto:1"));
    desktop.dialogs.setWhileOpen([&](const platform::Alert &) { delete button.data(); });
    QTest::mouseClick(button->findChild<CloseGlyph *>(), Qt::LeftButton);
    settle();
    EXPECT_FALSE(button);
    EXPECT_EQ(desktop.dialogs.shown().size(), 1U);
    EXPECT_EQ(desktop.applications.find(1), std::nullopt);
}

TEST_F(TaskMenuItems, TheItemsOfAGroupsMenuReachTheBarAndTheModel)
{
    addApplication(1, "Mail", 2);
    startWith(GroupingMode::always);
    auto *button = add(entry("auto:1"));
    choose(*button, {"Set Last"});
    choose(*button, {"Resize"});
    EXPECT_EQ(takeCalls(), (Names{"last group::auto:1 of 2", "resize auto:1"}));
    choose(*button, {"Select Color", "Blue"});
    EXPECT_EQ(model->liveTabColorName("auto:1"), "Blue");
    choose(*button, {"Set Default Color", "Red"});
    for (const std::string &id : {std::string("auto:1"), idOf(1, 0), idOf(1, 1)})
        EXPECT_EQ(model->liveTabColorName(id), "Red") << id;
    desktop.dialogs.setResponse(1001);
    choose(*button, {"Quit Mail && Group"});
    choose(*button, {"Close Group"});
    ASSERT_EQ(desktop.dialogs.shown().size(), 2U);
    EXPECT_EQ(desktop.dialogs.shown().back().alert.message, "All windows in this group will be closed. Continue?");
}

TEST_F(TaskMenuItems, AChangedIconIsTheFirstCharacterAsAPersonSeesIt)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    model->createCustomGroup({task(idOf(1, 0))});
    const std::string id = model->taskbarEntries(false).front().id;
    auto *button = add(entry(id));
    std::string typed = "👍🏽!", proposed;
    desktop.dialogs.setWhileOpen([&](const platform::Alert &alert) {
        ASSERT_TRUE(alert.field);
        proposed = std::exchange(alert.field->text, typed);
        EXPECT_EQ(alert.field->placeholder, "📁");
    });
    const auto glyph = [&] { return *entry(id).group->customIconGlyph; };
    choose(*button, {"Change Icon…"});
    const platform::Alert asked = desktop.dialogs.shown().back().alert;
    EXPECT_EQ(asked.message, "Change Group Icon");
    EXPECT_EQ(asked.informative, "Type one emoji or character.");
    EXPECT_EQ(asked.buttons, (Names{"Save", "Cancel"}));
    EXPECT_EQ(proposed, "📁");
    EXPECT_EQ(glyph(), "👍🏽");
    desktop.dialogs.setResponse(1001);
    typed = "X";
    update(*button, id);
    choose(*button, {"Change Icon…"});
    EXPECT_EQ(proposed, "👍🏽");
    EXPECT_EQ(glyph(), "👍🏽");
    desktop.dialogs.setResponse(1000);
    typed = "";
    choose(*button, {"Change Icon…"});
    EXPECT_EQ(glyph(), "📁");
}

}  // namespace
}  // namespace korvane
