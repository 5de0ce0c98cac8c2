// A bar on a simulated desktop, and the events of drags over it.
#pragma once

#include "Views/Bar/OverflowRowCard.h"
#include "Views/Bar/TaskDropCue.h"
#include "Views/Bar/TaskbarView.h"
#include "Views/Kit/SymbolButton.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>
#include <algorithm>
#include <memory>

namespace korvane::testing {

inline constexpr int width = 1280, height = 300, barTop = height - 34;

class Gestures : public ModelFixture {
protected:
    // So many windows of one program, none grouped.
    void show(int windows)
    {
        addApplication(1, "Mail", windows);
        makeModel();
        model->set(&V::groupingMode, GroupingMode::never);
        model->set(&V::mediaSliderDisplay, MediaSliderDisplay::never);
        start();
        view = std::make_unique<TaskbarView>(*model, services, platform);
        view->resize(width, height);
        view->updateFromModel();
        view->show();
        settle();
    }
    // Serves the toolkit's loop and the desktop's, at the time it is.
    void settle()
    {
        advance(0);
        testing::settle();
    }
    void pass()
    {
        view->updateFromModel();
        settle();
    }
    SymbolButton *control(const QString &name)
    {
        for (auto *button : view->findChildren<SymbolButton *>())
            if (button->accessibleName() == name && button->isVisibleTo(view.get()))
                return button;
        return nullptr;
    }
    std::vector<OverflowRowCard *> cards()
    {
        auto found = view->findChildren<OverflowRowCard *>(Qt::FindDirectChildrenOnly);
        std::vector<OverflowRowCard *> list(found.begin(), found.end());
        std::sort(list.begin(), list.end(), [](auto *left, auto *right) { return left->y() > right->y(); });
        return list;
    }
    const std::string &entryID(std::size_t index) { return view->bar().layout().entries[index].id; }
    QRect tab(std::size_t index) { return view->geometryOfBar().tabInView(index); }
    // Over a tucked row, well to the right of the start area.
    QPoint overRow(int row) { return view->geometryOfBar().card(row)->shown.center(); }

    // The events of one drag, as the toolkit sends them.
    bool dragTo(const QPoint &point)
    {
        QMimeData payload;
        payload.setText("payload");
        if (!entered) {
            QDragEnterEvent enter(point, Qt::MoveAction, &payload, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(view.get(), &enter);
            entered = enter.isAccepted();
        }
        if (!entered)
            return false;
        QDragMoveEvent move(point, Qt::MoveAction, &payload, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view.get(), &move);
        return move.isAccepted();
    }
    bool drop(const QPoint &point)
    {
        QMimeData payload;
        payload.setText("payload");
        QDropEvent dropped(point, Qt::MoveAction, &payload, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view.get(), &dropped);
        entered = false;
        settle();
        return dropped.isAccepted();
    }
    void leave()
    {
        QDragLeaveEvent left;
        QApplication::sendEvent(view.get(), &left);
        entered = false;
    }
    void drag(const std::string &id) { view->bar().beginDrag(id, {id}); }
    TaskDropCue *cue() { return view->findChild<TaskDropCue *>(); }

    ViewServices services;
    std::unique_ptr<TaskbarView> view;
    bool entered = false;
};

}  // namespace korvane::testing
