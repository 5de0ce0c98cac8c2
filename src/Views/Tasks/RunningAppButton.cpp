#include "Views/Tasks/RunningAppButton.h"

#include "Views/Tasks/TaskCommands.h"

namespace korvane {

RunningAppButton::RunningAppButton(const TaskButtonHost &buttonHost, QWidget *parent) : TaskButton(buttonHost, parent)
{
    connect(this, &QAbstractButton::clicked, this, [this] { TaskCommands::click(host, RunningAppItem(item)); });
}

void RunningAppButton::setEntry(const TaskbarEntry &entry, bool stripAtTop)
{
    if (entry.item)
        setItem(*entry.item, stripAtTop);
}

void RunningAppButton::setItem(const RunningAppItem &newItem, bool stripAtTop)
{
    item = newItem;
    setLook(TaskButtonLooks::ofItem(host.model, item, stripAtTop));
}

Menu RunningAppButton::contextMenu() const
{
    return TaskCommands::menu(host, item);
}

TaskButton::Drag RunningAppButton::drag() const
{
    return {item.id, {item.id}};
}

void RunningAppButton::closeEntry()
{
    TaskCommands::close(host, RunningAppItem(item));
}

}  // namespace korvane
