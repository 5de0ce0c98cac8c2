// What a person does to a bar with the pointer: hovering over tucked rows, dragging tasks, setting a tab's width.
#include "Views/Bar/MainRowView.h"
#include "Views/Bar/TaskDropCue.h"
#include "Views/Bar/TaskResizeHandle.h"
#include "Views/Bar/TaskbarView.h"
#include "Views/Kit/Metrics.h"
#include "Views/Tasks/TaskButton.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>

namespace korvane {

void TaskbarView::pointerMoved(std::optional<QPoint> positionInView)
{
    const auto row = positionInView ? places.overflowRowAt(*positionInView) : std::nullopt;
    if (drag.draggedTaskID && row && places.card(*row)->tucked)
        hover.revealForDrag();
    const auto x = positionInView ? std::optional<double>(positionInView->x()) : std::nullopt;
    if (row == pointedRow)
        return;
    if (const auto left = std::exchange(pointedRow, row))
        hover.overflowHoverChanged(false, *left, x);
    if (row)
        hover.overflowHoverChanged(true, *row, x);
}

void TaskbarView::setTaskPosition(const std::string &id, const std::set<std::string> &windowIDs, bool first)
{
    lock.taskPositionSet(windowIDs, first, current.hasOverflow);
    model.setTaskPosition(id, first);
}

// ---------------------------------------------------------------------------------------------------- dragging

void TaskbarView::dragBegan(const std::string &dragID, std::set<std::string> windowIDs)
{
    lock.setDraggedWindowIDs(std::move(windowIDs));
    drag = {dragID, std::nullopt};
}

// Also of a drag that was given up: it leaves nothing behind.
void TaskbarView::dragEnded()
{
    dragPoint.reset();
    leaveDropPlace();
    drag = {};
    lock.setDraggedWindowIDs({});
    hover.dragEnded();
    showCue();
}

void TaskbarView::beginDrag(QWidget &source, const std::string &dragID, const std::set<std::string> &windowIDs)
{
    auto *carrier = new QDrag(this);
    auto *payload = new QMimeData;
    payload->setText(QString::fromStdString(dragID));
    carrier->setMimeData(payload);
    const QPixmap picture = source.grab();
    carrier->setPixmap(picture);
    carrier->setHotSpot(source.mapFromGlobal(QCursor::pos()));
    dragBegan(dragID, windowIDs);
    const QPointer<TaskbarView> stillHere(this);
    carrier->exec(Qt::MoveAction);
    if (stillHere) {
        dragEnded();
        updateFromModel();
    }
}

void TaskbarView::dragEnterEvent(QDragEnterEvent *event)
{
    // What other programs carry is not for a bar's tasks.
    if (!drag.draggedTaskID || !event->mimeData()->hasText())
        return;
    event->acceptProposedAction();
    dragMovedTo(event->position().toPoint());
}

void TaskbarView::dragMoveEvent(QDragMoveEvent *event)
{
    const QPoint point = event->position().toPoint();
    dragMovedTo(point);
    const bool taken =
        dropDelegate && dropDelegate->dropUpdated(point.x() - dropPlace->rectangle.left()) == DropProposal::move;
    showCue();
    event->setAccepted(taken);
}

void TaskbarView::dragLeaveEvent(QDragLeaveEvent *)
{
    dragPoint.reset();
    leaveDropPlace();
    showCue();
}

void TaskbarView::dropEvent(QDropEvent *event)
{
    const QPoint point = event->position().toPoint();
    // The list may have changed since the pointer came to rest.
    leaveDropPlace();
    dragMovedTo(point);
    // What was carried may have been closed on the way.
    const bool stillThere = drag.draggedTaskID && isStillThere(*drag.draggedTaskID);
    const bool taken = stillThere && dropDelegate && dropDelegate->performDrop(point.x() - dropPlace->rectangle.left());
    event->setAccepted(taken);
    dragEnded();
    updateFromModel();
}

bool TaskbarView::isStillThere(const std::string &dragID) const
{
    const auto isEntry = [&](const TaskbarEntry &entry) { return entry.id == dragID; };
    return !model.windowsForDragID(dragID).empty() || std::ranges::any_of(current.entries, isEntry);
}

// A list that changed under a resting drag has other targets now. The arrow stays what it is, and its wait with it.
void TaskbarView::renewDropPlace()
{
    if (!dragPoint || !dropPlace || dropPlace->kind == TaskDropPlace::Kind::arrow)
        return;
    leaveDropPlace();
    dragMovedTo(*dragPoint);
}

void TaskbarView::dragMovedTo(const QPoint &point)
{
    dragPoint = point;
    const auto place = taskDropPlaceAt(places, current, point);
    const bool same = place && dropPlace && place->isSamePlaceAs(*dropPlace);
    if (same && place->rectangle == dropPlace->rectangle)
        return;
    // The next place takes the cue over before the last one is told that the drag has gone.
    const auto left = std::exchange(dropDelegate, nullptr);
    dropPlace = place;
    if (place) {
        dropDelegate = taskDropDelegate(*place, {drag, dropActions, hover, lock, current, places});
        // Opening the rows may move what is under the pointer; the next move sees to that.
        dropDelegate->dropEntered(point.x() - place->rectangle.left());
    }
    if (left && !same)
        left->dropExited();
    showCue();
}

void TaskbarView::leaveDropPlace()
{
    dropPlace.reset();
    if (const auto left = std::exchange(dropDelegate, nullptr))
        left->dropExited();
}

void TaskbarView::showCue()
{
    if (!drag.taskDropCue || !dropPlace || dropPlace->entry >= current.entries.size()) {
        cue->hide();
        return;
    }
    const bool onTask = dropPlace->kind == TaskDropPlace::Kind::task || dropPlace->kind == TaskDropPlace::Kind::group;
    const std::string &id = current.entries[dropPlace->entry].id;
    if (onTask && *drag.taskDropCue == TaskDrag::intoCue(id))
        cue->showOn(places.tabInView(dropPlace->entry), TaskDropCue::Kind::into);
    else if (onTask && *drag.taskDropCue == TaskDrag::beforeCue(id))
        cue->showOn(places.tabInView(dropPlace->entry), TaskDropCue::Kind::before);
    else
        cue->hide();
}

// ---------------------------------------------------------------------------------------------------- widths

void TaskbarView::armResize(const std::string &entryID)
{
    if (armedID == entryID)
        return;
    delete resizeHandle;
    armedID = entryID;
    arrangeControls();
    arrangeResizeHandle();
}

void TaskbarView::arrangeResizeHandle()
{
    const auto entry = std::find_if(current.entries.begin(), current.entries.end(),
                                    [this](const TaskbarEntry &candidate) { return candidate.id == armedID; });
    if (entry == current.entries.end()) {
        if (resizeHandle)
            resizeHandle->deleteLater();
        resizeHandle.clear();
        return;
    }
    if (!resizeHandle) {
        const std::string id = entry->id;
        resizeHandle = new TaskResizeHandle({[this] { model.beginTaskResize(); },
                                             [this, id](double width) { overrides[id] = width; },
                                             [this] { model.endTaskResize(); },
                                             [this, id] {
                                                 if (armedID == id)
                                                     armedID.reset();
                                                 updateFromModel();
                                             }},
                                            this);
    }
    // Over the row and not in it, which would cut off a grip at its edge.
    const auto index = static_cast<std::size_t>(entry - current.entries.begin());
    resizeHandle->setButton(places.tabInView(index), current.widths[index]);
    // What a tucked row hides of its tabs it hides of the grip.
    const CardPlace *card = places.card(places.places[index].rowID);
    resizeHandle->setVisible(resizeHandle->resizing() || !card || !card->tucked);
    resizeHandle->raise();
}

}  // namespace korvane
