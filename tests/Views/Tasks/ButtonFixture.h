// Task buttons on a simulated desktop, with what a bar lends them.
#pragma once

#include "Views/Tasks/TaskButton.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <QAction>
#include <QMenu>
#include <QTest>

namespace korvane::testing {

class ButtonFixture : public ModelFixture {
protected:
    void startWith(GroupingMode groupingMode)
    {
        makeModel();
        model->set(&V::groupingMode, groupingMode);
        start();
        host = std::make_unique<TaskButtonHost>(TaskButtonHost{
            *model, services, platform,
            [this](const std::string &dragID, const std::set<std::string> &windowIDs, bool first) {
                calls.push_back((first ? "first " : "last ") + dragID + " of " + std::to_string(windowIDs.size()));
            },
            [this] { calls.push_back("settings"); },
            [this](const std::string &entryID) { calls.push_back("resize " + entryID); },
            [this](QWidget &, const std::string &dragID, const std::set<std::string> &windowIDs) {
                calls.push_back("drag " + dragID + " of " + std::to_string(windowIDs.size()));
                if (whileDragging)
                    whileDragging();
            }});
        bar.resize(900, 60);
        bar.move(100, 500);
        bar.show();
    }
    TaskbarEntry entry(const std::string &id) const
    {
        for (const TaskbarEntry &each : model->taskbarEntries(model->settings().groupingMode == GroupingMode::always))
            if (each.id == id)
                return each;
        ADD_FAILURE() << "no entry " << id;
        return {};
    }
    template <typename Button = TaskButton> Button *add(const TaskbarEntry &shown)
    {
        auto *button = makeTaskButton(*host, shown, false, &bar);
        button->setGeometry(10, 10, 200, 28);
        button->show();
        settle();
        return qobject_cast<Button *>(button);
    }
    // What a bar does at the next turn after a change.
    void update(TaskButton &button, const std::string &id)
    {
        model->refresh();
        button.setEntry(entry(id), false);
        settle();
    }

    static QMenu *openedMenu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }
    static std::vector<std::string> titles(const QMenu &menu)
    {
        std::vector<std::string> list;
        for (const QAction *action : menu.actions())
            list.push_back(action->isSeparator() ? "-" : (action->menu() ? ">" : "") + action->text().toStdString());
        return list;
    }
    static QAction *itemOf(QMenu &menu, const QString &title)
    {
        for (QAction *action : menu.actions())
            if (action->text() == title)
                return action;
        ADD_FAILURE() << "no item " << title.toStdString();
        return nullptr;
    }
    // Opens the menu by a right press in the middle, and chooses with the keys along the titles.
    void choose(QWidget &widget, const std::vector<QString> &path)
    {
        QContextMenuEvent press(QContextMenuEvent::Mouse, widget.rect().center(),
                                widget.mapToGlobal(widget.rect().center()));
        QApplication::sendEvent(&widget, &press);
        settle();
        QMenu *menu = openedMenu();
        ASSERT_TRUE(menu);
        for (std::size_t i = 0; i < path.size(); ++i) {
            QAction *action = itemOf(*menu, path[i]);
            ASSERT_TRUE(action);
            if (i + 1 < path.size()) {
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Right);
                menu = action->menu();
                ASSERT_TRUE(QTest::qWaitFor([&] { return menu->isVisible(); }, 2000));
            } else {
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Return);
            }
        }
        settle();
        EXPECT_EQ(openedMenu(), nullptr);
    }
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    // A press of the left button, moved so far to the right, and let go.
    static void press(QWidget &widget, int distance)
    {
        const QPoint from(20, widget.height() / 2);
        QTest::mousePress(&widget, Qt::LeftButton, {}, from);
        const QPoint to = from + QPoint(distance, 0);
        QMouseEvent move(QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        const QPointer<QWidget> stillThere(&widget);
        QApplication::sendEvent(&widget, &move);
        if (stillThere)
            QTest::mouseRelease(&widget, Qt::LeftButton, {}, to);
        settle();
    }

    ViewServices services;
    std::unique_ptr<TaskButtonHost> host;
    std::vector<std::string> calls;
    std::function<void()> whileDragging;
    QWidget bar;
};

}  // namespace korvane::testing
