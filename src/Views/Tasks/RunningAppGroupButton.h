// The button of a group, and the list of its windows that it opens.
#pragma once

#include "Views/Tasks/TaskButton.h"

#include <QPointer>

namespace korvane {

class GroupWindowList;
class Popover;

class RunningAppGroupButton final : public TaskButton {
    Q_OBJECT

public:
    RunningAppGroupButton(const TaskButtonHost &host, QWidget *parent);
    // Closes the list if it is open.
    ~RunningAppGroupButton() override;

    void setEntry(const TaskbarEntry &entry, bool stripAtTop) override;
    void setGroup(const RunningAppGroup &group, bool stripAtTop);

    bool listIsOpen() const;
    // Null while it is closed.
    GroupWindowList *windowList() const;

protected:
    Menu contextMenu() const override;
    Drag drag() const override;
    void closeEntry() override;

private:
    void pressed();
    void openList();
    void closeList();

    RunningAppGroup group;
    QPointer<Popover> popover;
    QPointer<GroupWindowList> list;
};

}  // namespace korvane
