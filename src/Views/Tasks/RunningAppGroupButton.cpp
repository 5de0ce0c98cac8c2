#include "Views/Tasks/RunningAppGroupButton.h"

#include "Views/Kit/Popover.h"
#include "Views/Kit/TitleText.h"
#include "Views/Tasks/GroupWindowList.h"
#include "Views/Tasks/TaskCommands.h"

#include <QWindow>

namespace korvane {

RunningAppGroupButton::RunningAppGroupButton(const TaskButtonHost &buttonHost, QWidget *parent)
    : TaskButton(buttonHost, parent)
{
    connect(this, &QAbstractButton::clicked, this, &RunningAppGroupButton::pressed);
}

RunningAppGroupButton::~RunningAppGroupButton()
{
    closeList();
}

void RunningAppGroupButton::setEntry(const TaskbarEntry &entry, bool stripAtTop)
{
    if (entry.group)
        setGroup(*entry.group, stripAtTop);
}

void RunningAppGroupButton::setGroup(const RunningAppGroup &newGroup, bool stripAtTop)
{
    group = newGroup;
    setLook(TaskButtonLooks::ofGroup(host.model, group, stripAtTop));
    if (list && listIsOpen())
        list->setGroup(group);
}

Menu RunningAppGroupButton::contextMenu() const
{
    return TaskCommands::menu(host, group);
}

TaskButton::Drag RunningAppGroupButton::drag() const
{
    Drag carried{Identifiers::groupDrag(group.id), {}};
    for (const RunningAppItem &item : group.windows)
        carried.windowIDs.insert(item.id);
    return carried;
}

void RunningAppGroupButton::closeEntry()
{
    TaskCommands::close(host, RunningAppGroup(group));
}

// ---------------------------------------------------------------------------------------------------- the list

bool RunningAppGroupButton::listIsOpen() const
{
    return popover && popover->isOpen();
}

GroupWindowList *RunningAppGroupButton::windowList() const
{
    return listIsOpen() ? list.data() : nullptr;
}

void RunningAppGroupButton::pressed()
{
    if (listIsOpen())
        closeList();
    else if (GroupButtons::actsAsWindow(group))
        host.model.activate(RunningAppItem(group.windows.front()));
    else
        openList();
}

void RunningAppGroupButton::openList()
{
    closeList();
    popover = new Popover(host.platform, *this);
    list = new GroupWindowList(host, group);
    popover->setName(displayText(group.displayName()));
    popover->setContent(list);
    connect(list, &GroupWindowList::done, this, &RunningAppGroupButton::closeList);
    // A menu takes the keys away, so the list takes them back when the menu closes.
    connect(list, &GroupWindowList::menuClosed, popover, [opened = popover.data()] {
        if (opened->isOpen())
            opened->open(Popover::Keyboard::taken);
    });
    connect(popover, &Popover::closed, this, [this, id = group.id, closed = popover.data()] {
        closed->deleteLater();
        host.model.setGroupedListOpen(false, id);
    });
    popover->open(Popover::Keyboard::taken);
    if (QWindow *window = popover->windowHandle())
        list->followKeys(*window);
    host.model.setGroupedListOpen(true, group.id);
}

void RunningAppGroupButton::closeList()
{
    if (listIsOpen())
        popover->close();
}

}  // namespace korvane
