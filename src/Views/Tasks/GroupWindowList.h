// What a group's popover holds: the group's heading, its windows, and a line that hides them all. It follows the group
// while it is open. A window's line lives as long as the window. The keyboard focus and the scroll position stay where
// they are.
#pragma once

#include "Views/Tasks/TaskButtonHost.h"

#include <QPointer>
#include <QWidget>
#include <unordered_map>
#include <vector>

class QScrollArea;
class QVBoxLayout;
class QWindow;

namespace korvane {

class GroupListHeader;
class GroupWindowRow;
class HideAllRow;
class ListButton;

class GroupWindowList final : public QWidget {
    Q_OBJECT

public:
    GroupWindowList(const TaskButtonHost &host, const RunningAppGroup &group);
    ~GroupWindowList() override;

    void setGroup(const RunningAppGroup &group);
    // From now on, highlights the child that receives the keys of that window.
    void followKeys(QWindow &window);

    GroupListHeader &heading() const { return *header; }
    // In the order of the list.
    const std::vector<GroupWindowRow *> &windowRows() const { return rows; }
    HideAllRow &hideAll() const { return *hideAllRow; }
    // Null while the list does not scroll.
    QScrollArea *scrollArea() const { return scroll; }

Q_SIGNALS:
    // Something was chosen, so the list has to close.
    void done();
    // The context menu has given the keys back.
    void menuClosed();

private:
    void keysMoved(QObject *child);
    void arrangeRows();
    void arrangeScrolling();
    GroupWindowRow *addRow(const RunningAppItem &item);
    ListButton *add(ListButton *button);

    const TaskButtonHost &host;
    RunningAppGroup group;
    GroupListHeader *header;
    HideAllRow *hideAllRow;
    QWidget *rowArea;
    QVBoxLayout *column, *rowColumn;
    QScrollArea *scroll = nullptr;
    std::vector<GroupWindowRow *> rows;
    QPointer<ListButton> highlighted;
    QPointer<QWidget> focusedField;
    QMetaObject::Connection keys;
};

}  // namespace korvane
