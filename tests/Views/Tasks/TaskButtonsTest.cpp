#include "Views/Kit/Metrics.h"
#include "Views/Tasks/CloseGlyph.h"
#include "Views/Tasks/RunningAppButton.h"
#include "Views/Tasks/RunningAppGroupButton.h"
#include "tests/Models/Base/Make.h"
#include "tests/Views/Tasks/ButtonFixture.h"

#include <QAccessible>

namespace korvane {
namespace {

using testing::ButtonFixture;
using testing::makeItem;
using testing::Names;
using testing::PaintCounter;
using testing::settle;
using testing::V;

class TaskButtons : public ButtonFixture {
protected:
    // The colour of the fill, away from icon, text, strip and glyph, over black.
    static QColor fillOf(TaskButton &button)
    {
        QImage picture(button.size(), QImage::Format_RGB32);
        picture.fill(Qt::black);
        button.render(&picture, {}, {}, {});
        return picture.pixelColor(180, 20);
    }
    static QColor pixel(TaskButton &button, int x, int y)
    {
        QImage picture(button.size(), QImage::Format_RGB32);
        picture.fill(Qt::black);
        button.render(&picture, {}, {}, {});
        return picture.pixelColor(x, y);
    }
    TaskbarEntry settingsEntry()
    {
        model->setSettingsWindowVisible(true);
        return TaskbarEntry::ofItem(*model->settingsTaskItem());
    }
};

TEST_F(TaskButtons, AnActiveTabIsTheBrighterOneAndInvertedTheDarkerOne)
{
    addApplication(1, "Mail", 2);
    desktop.applications.focusWindow(1, hashOf(1, 0));
    startWith(GroupingMode::never);
    auto *active = add(entry(idOf(1, 0))), *other = add(entry(idOf(1, 1)));
    EXPECT_EQ(fillOf(*active).red(), 33);  // 0.13 of 255
    EXPECT_EQ(fillOf(*other).red(), 9);    // 0.035 of 255
    model->set(&V::invertTaskbarButtonHighlight, true);
    update(*active, idOf(1, 0));
    update(*other, idOf(1, 1));
    EXPECT_EQ(fillOf(*active).red(), 9);
    EXPECT_EQ(fillOf(*other).red(), 33);
}

TEST_F(TaskButtons, AColouredTabShowsTheSameFillActiveOrNotAndOnlyItsStripTells)
{
    addApplication(1, "Mail", 2);
    desktop.applications.focusWindow(1, hashOf(1, 0));
    startWith(GroupingMode::never);
    auto *active = add(entry(idOf(1, 0))), *other = add(entry(idOf(1, 1)));
    model->setLiveTabColorName("Custom:#FF0000", idOf(1, 0));
    model->setLiveTabColorName("Custom:#FF0000", idOf(1, 1));
    update(*active, idOf(1, 0));
    update(*other, idOf(1, 1));
    EXPECT_EQ(fillOf(*active), QColor(128, 0, 0));
    EXPECT_EQ(fillOf(*active), fillOf(*other));
    EXPECT_NE(pixel(*active, 100, 27), pixel(*other, 100, 27));
    model->set(&V::blueStripsEnabled, false);
    update(*active, idOf(1, 0));
    update(*other, idOf(1, 1));
    EXPECT_EQ(pixel(*active, 100, 27), pixel(*other, 100, 27));
}

TEST_F(TaskButtons, TheStripLiesAtTheEdgeThatIsAskedFor)
{
    addApplication(1, "Mail", 1);
    desktop.applications.focusWindow(1, hashOf(1, 0));
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 0)));
    EXPECT_GT(pixel(*button, 190, 27).blue(), 100);
    EXPECT_LT(pixel(*button, 3, 27).blue(), 100);  // it leaves the ends free
    EXPECT_LT(pixel(*button, 150, 0).blue(), 100);
    button->setEntry(entry(idOf(1, 0)), true);
    EXPECT_GT(pixel(*button, 150, 0).blue(), 100);
    EXPECT_LT(pixel(*button, 190, 27).blue(), 100);
}

TEST_F(TaskButtons, TheCloseGlyphStandsInTheUpperRightCornerWhileTheSettingAsksForIt)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 0)));
    auto *glyph = button->findChild<CloseGlyph *>();
    ASSERT_TRUE(glyph);
    EXPECT_EQ(glyph->geometry(), QRect(200 - 11, 0, 11, 11));
    EXPECT_EQ(glyph->toolTip(), "Close");
    EXPECT_EQ(glyph->accessibleName(), "Close");
    button->resize(120, 28);
    EXPECT_EQ(glyph->geometry(), QRect(120 - 11, 0, 11, 11));
    model->set(&V::showCloseGlyph, false);
    update(*button, idOf(1, 0));
    EXPECT_FALSE(button->findChild<CloseGlyph *>());
}

TEST_F(TaskButtons, TheCloseGlyphClosesTheWindowAndIsNoClickOnTheTab)
{
    addApplication(1, "Mail", 2);
    addApplication(2, "Notes", 1);
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 1)));
    QTest::mouseClick(button->findChild<CloseGlyph *>(), Qt::LeftButton);
    settle();
    EXPECT_EQ(desktop.applications.windowCount(1), 1U);
    EXPECT_EQ(ids(), (Names{idOf(1, 0), idOf(2, 0)}));
}

TEST_F(TaskButtons, AButtonRepaintsOnlyWhenItsLookChanges)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    auto *button = add(entry(idOf(1, 0)));
    PaintCounter paints;
    update(*button, idOf(1, 0));
    EXPECT_EQ(paints.count(), 0);
    desktop.applications.setTitle(1, hashOf(1, 0), "Other");
    update(*button, idOf(1, 0));
    EXPECT_EQ(paints.countOf<RunningAppButton>(), 1);
}

TEST_F(TaskButtons, TheChevronFollowsTheTextOfAGroup)
{
    addApplication(1, "Mail", 2);
    startWith(GroupingMode::always);
    auto *button = add(entry("auto:1"));
    EXPECT_EQ(button->accessibleName(), "Mail Tabs");
    EXPECT_TRUE(button->currentLook().chevron);
    const int end =
        7 + 25 + 7 + static_cast<int>(QFontMetricsF(systemFont(Metrics::buttonFontSize)).horizontalAdvance("Mail Tabs"))
        + 7;
    QImage picture(button->size(), QImage::Format_RGB32);
    picture.fill(Qt::black);
    button->render(&picture, {}, {}, {});
    int brightest = 0, beyond = 0;
    for (int y = 8; y < 20; ++y) {
        for (int x = end; x < end + 9; ++x)
            brightest = std::max(brightest, picture.pixelColor(x, y).red());
        for (int x = end + 10; x < 185; ++x)
            beyond = std::max(beyond, picture.pixelColor(x, y).red());
    }
    EXPECT_GT(brightest, 100);
    EXPECT_LT(beyond, 40);
}

// ---------------------------------------------------------------------------------------------------- menus

TEST_F(TaskButtons, TheMenuOfATaskStandsAsToldAndIsGoneAfterUse)
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

TEST_F(TaskButtons, TheItemsOfATasksMenuReachTheBarAndTheModel)
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

TEST_F(TaskButtons, TheColourPanelAppliesToTheTabWhileItIsMoved)
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

TEST_F(TaskButtons, TheSettingsTaskOpensItsPanelAndItsQuitOnlyClosesThat)
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

TEST_F(TaskButtons, AMenuGoesWithItsTaskAndWithItWhatWasChosen)
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

TEST_F(TaskButtons, AButtonMayGoWhileItsQuestionIsOpen)
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

TEST_F(TaskButtons, TheTreeOffersThePressAndTheMenu)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::asNeeded);
    auto *button = add(entry(idOf(1, 0)));
    QAccessibleInterface *tree = QAccessible::queryAccessibleInterface(button);
    ASSERT_TRUE(tree && tree->actionInterface());
    EXPECT_EQ(tree->role(), QAccessible::Button);
    EXPECT_TRUE(tree->state().hasPopup);
    EXPECT_EQ(tree->childCount(), 1);  // the glyph
    tree->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    settle();
    ASSERT_TRUE(openedMenu());
    openedMenu()->close();
}

// ---------------------------------------------------------------------------------------------------- groups

TEST_F(TaskButtons, AGroupOfOneWindowIsClickedAndClosedLikeATask)
{
    addApplication(1, "Mail", 1);
    addApplication(2, "Notes", 1);
    startWith(GroupingMode::always);
    auto *button = add<RunningAppGroupButton>(entry("auto:2"));
    EXPECT_FALSE(button->currentLook().chevron);
    EXPECT_EQ(button->accessibleName(), "Notes 1");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(desktop.applications.active(), 2);
    EXPECT_FALSE(button->listIsOpen());
    QTest::mouseClick(button->findChild<CloseGlyph *>(), Qt::LeftButton);
    settle();
    EXPECT_TRUE(desktop.dialogs.shown().empty());
    EXPECT_EQ(desktop.applications.windowCount(2), 0U);
}

TEST_F(TaskButtons, ACustomGroupOfOneWindowOpensItsListAndItsGlyphAsks)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    model->createCustomGroup({task(idOf(1, 0))});
    const std::string id = model->taskbarEntries(false).front().id;
    auto *button = add<RunningAppGroupButton>(entry(id));
    EXPECT_TRUE(button->currentLook().chevron);
    EXPECT_EQ(button->currentLook().glyph, "📁");
    desktop.dialogs.setResponse(1001);
    QTest::mouseClick(button->findChild<CloseGlyph *>(), Qt::LeftButton);
    settle();
    EXPECT_EQ(desktop.dialogs.shown().back().alert.message, "All windows in New Group will be closed. Continue?");
    EXPECT_EQ(desktop.applications.windowCount(1), 1U);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(button->listIsOpen());
}

TEST_F(TaskButtons, TheItemsOfAGroupsMenuReachTheBarAndTheModel)
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

TEST_F(TaskButtons, AChangedIconIsTheFirstCharacterAsAPersonSeesIt)
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

// ---------------------------------------------------------------------------------------------------- drags

TEST_F(TaskButtons, APressThatMovesFarEnoughIsADragAndNoClick)
{
    addApplication(1, "Mail", 1);
    addApplication(2, "Notes", 2);
    startWith(GroupingMode::always);
    auto *single = add(TaskbarEntry::ofItem(task(idOf(1, 0))));
    desktop.actions.take();
    press(*single, QApplication::startDragDistance() - 1);
    EXPECT_TRUE(takeCalls().empty());
    EXPECT_FALSE(desktop.actions.take().empty());  // a click
    press(*single, QApplication::startDragDistance());
    EXPECT_EQ(takeCalls(), (Names{"drag " + idOf(1, 0) + " of 1"}));
    EXPECT_TRUE(desktop.actions.take().empty());
    auto *group = add<RunningAppGroupButton>(entry("auto:2"));
    press(*group, 50);
    EXPECT_EQ(takeCalls(), (Names{"drag group::auto:2 of 2"}));
    EXPECT_FALSE(group->listIsOpen());
}

TEST_F(TaskButtons, AButtonMayGoWhileItIsDragged)
{
    addApplication(1, "Mail", 1);
    startWith(GroupingMode::never);
    QPointer<TaskButton> button = add(entry(idOf(1, 0)));
    whileDragging = [&] { delete button.data(); };
    press(*button, 50);
    EXPECT_FALSE(button);
}

}  // namespace
}  // namespace korvane
