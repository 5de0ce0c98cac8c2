#include "Views/Tray/AttentionControlView.h"

#include "Views/Kit/ListButton.h"
#include "Views/Kit/Popover.h"
#include "Views/Kit/ViewServices.h"
#include "tests/Views/Tray/TrayFixture.h"

#include <QLabel>

namespace korvane {
namespace {

using testing::settle;
using testing::V;

class Attention : public testing::TrayFixture {
protected:
    AttentionControlView *makeList()
    {
        model->set(&V::showAttentionApps, true);
        start();
        return add<AttentionControlView>(*model, services, platform, true);
    }
    static QStringList texts(const Popover &list)
    {
        QStringList result;
        for (const auto *label : list.findChildren<QLabel *>())
            result << label->text();
        for (const auto *row : list.findChildren<ListButton *>())
            result << row->accessibleName();
        return result;
    }
    void badge(Pid pid, const std::string &name)
    {
        addApplication(pid, name, 1);
        platform::simulated::DockItem item;
        item.title = name;
        item.subrole = std::string("AXApplicationDockItem");
        item.statusLabel = std::string("1");
        if (!dock.children)
            dock.children.emplace();
        dock.children->push_back(item);
        desktop.applications.setDock(dock);
    }

    ViewServices services;
    platform::simulated::DockItem dock;
};

TEST_F(Attention, AClickListsTheApplicationsThatWantIt)
{
    badge(1, "Mail");
    badge(2, "Chat");
    auto *control = makeList();
    EXPECT_EQ(control->toolTip(), "Notifications");
    QTest::mouseClick(control, Qt::LeftButton);
    ASSERT_TRUE(control->openList());
    EXPECT_EQ(texts(*control->openList()), (QStringList{"Notifications", "Mail", "Chat"}));
    QTest::mouseClick(control, Qt::LeftButton);
    EXPECT_FALSE(control->openList());
}

TEST_F(Attention, WithNoneItSaysSo)
{
    auto *control = makeList();
    EXPECT_EQ(control->toolTip(), "No apps need attention");
    QTest::mouseClick(control, Qt::LeftButton);
    ASSERT_TRUE(control->openList());
    EXPECT_EQ(texts(*control->openList()), (QStringList{"Notifications", "No apps need attention"}));
}

TEST_F(Attention, ALongNameWidensItsRow)
{
    badge(1, "Mail");
    badge(2, "An application whose name is much longer than names of applications are");
    auto *control = makeList();
    QTest::mouseClick(control, Qt::LeftButton);
    settle();
    const auto rows = control->openList()->findChildren<ListButton *>();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_GT(rows[0]->width(), 400);
    EXPECT_EQ(rows[0]->width(), rows[1]->width());
}

TEST_F(Attention, ARowActivatesItsApplicationAndClosesTheList)
{
    badge(1, "Mail");
    badge(2, "Chat");
    auto *control = makeList();
    QTest::mouseClick(control, Qt::LeftButton);
    auto *row = control->openList()->findChildren<ListButton *>().last();
    EXPECT_EQ(row->height(), 28);
    EXPECT_GE(row->width(), 210);
    QTest::mouseClick(row, Qt::LeftButton);
    EXPECT_FALSE(control->openList());
    EXPECT_EQ(desktop.applications.active(), 2);
}

TEST_F(Attention, TheOpenListFollowsTheModel)
{
    badge(1, "Mail");
    auto *control = makeList();
    QTest::mouseClick(control, Qt::LeftButton);
    badge(2, "Chat");
    model->refresh(true);
    control->updateFromModel();
    settle();
    EXPECT_EQ(texts(*control->openList()), (QStringList{"Notifications", "Mail", "Chat"}));
}

TEST_F(Attention, TheListGoesWithItsButton)
{
    badge(1, "Mail");
    auto *control = makeList();
    QTest::mouseClick(control, Qt::LeftButton);
    ASSERT_TRUE(control->openList());
    control->hide();
    EXPECT_FALSE(control->openList());
    EXPECT_FALSE(Popover::anyOpen());
    control->show();
    QTest::mouseClick(control, Qt::LeftButton);
    EXPECT_TRUE(control->openList());
}

TEST_F(Attention, AButtonThatGoesUnderAPointerOpensNothing)
{
    badge(1, "Mail");
    auto *control = makeList();
    const QPointF middle(control->rect().center());
    QEnterEvent enter(middle, middle, control->mapToGlobal(middle));
    QApplication::sendEvent(control, &enter);
    advance(1);
    control->hide();
    advance(10);
    EXPECT_FALSE(Popover::anyOpen());
    control->show();
    QApplication::sendEvent(control, &enter);
    advance(1.2);
    EXPECT_TRUE(Popover::anyOpen());
}

}  // namespace
}  // namespace korvane
