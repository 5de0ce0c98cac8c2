// What a person does to a bar with the pointer: hovering over tucked rows, dragging tasks, setting a tab's width.
#include "Views/Bar/MainRowView.h"
#include "Views/Bar/TaskDropCue.h"
#include "Views/Bar/TaskDropPlaces.h"
#include "Views/Bar/TaskResizeHandle.h"
#include "Views/Bar/TaskbarView.h"
#include "Views/Kit/Metrics.h"
#include "Views/Kit/Painting.h"
#include "Views/Tasks/TaskButton.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <algorithm>

namespace korvane {

void TaskbarView::pointerMoved(std::optional<QPoint> positionInView)
{
    const auto row = positionInView ? places.overflowRowAt(*positionInView) : std::nullopt;
    ownBar.pointerOverRow(row, row && places.card(*row)->tucked,
                          positionInView ? std::optional<double>(positionInView->x()) : std::nullopt);
}

// ---------------------------------------------------------------------------------------------------- dragging

void TaskbarView::beginDrag(QWidget &source, const std::string &dragID, const std::set<std::string> &windowIDs)
{
    auto *carrier = new QDrag(this);
    auto *payload = new QMimeData;
    payload->setText(QString::fromStdString(dragID));
    carrier->setMimeData(payload);
    carrier->setPixmap(pictureOnBar(source));
    carrier->setHotSpot(source.mapFromGlobal(QCursor::pos()));
    ownBar.beginDrag(dragID, windowIDs);
    const QPointer<TaskbarView> stillHere(this);
    carrier->exec(Qt::MoveAction);
    if (stillHere) {
        dragPoint.reset();
        ownBar.endDrag();
    }
}

std::optional<TaskDropPlace> TaskbarView::dropPlaceAt(const QPoint &point) const
{
    return taskDropPlaceAt(places, ownBar.layout(), point);
}

void TaskbarView::dragEnterEvent(QDragEnterEvent *event)
{
    // A bar's tasks take no drags from other programs.
    if (!ownBar.drag() || !event->mimeData()->hasText())
        return;
    event->acceptProposedAction();
    dragPoint = event->position().toPoint();
    ownBar.dragMovedTo(dropPlaceAt(*dragPoint), dragPoint->x());
}

void TaskbarView::dragMoveEvent(QDragMoveEvent *event)
{
    dragPoint = event->position().toPoint();
    event->setAccepted(ownBar.dragMovedTo(dropPlaceAt(*dragPoint), dragPoint->x()) == DropProposal::move);
}

void TaskbarView::dragLeaveEvent(QDragLeaveEvent *)
{
    dragPoint.reset();
    ownBar.dragLeft();
}

void TaskbarView::dropEvent(QDropEvent *event)
{
    const QPoint point = event->position().toPoint();
    dragPoint.reset();
    event->setAccepted(ownBar.drop(dropPlaceAt(point), point.x()));
}

void TaskbarView::showCue()
{
    const TaskDrag *drag = ownBar.drag();
    const auto &entries = ownBar.layout().entries;
    if (!drag || !drag->taskDropCue() || !drag->place() || drag->place()->entry >= entries.size()) {
        cue->hide();
        return;
    }
    const TaskDropPlace &place = *drag->place();
    const bool onTask = place.kind == TaskDropPlace::Kind::task || place.kind == TaskDropPlace::Kind::group;
    const std::string &id = entries[place.entry].id;
    if (onTask && drag->taskDropCue() == TaskDrops::intoCue(id))
        cue->showOn(places.tabInView(place.entry), TaskDropCue::Kind::into);
    else if (onTask && drag->taskDropCue() == TaskDrops::beforeCue(id))
        cue->showOn(places.tabInView(place.entry), TaskDropCue::Kind::before);
    else
        cue->hide();
}

// ---------------------------------------------------------------------------------------------------- widths

void TaskbarView::arrangeResizeHandle()
{
    TaskResize *grip = ownBar.grip();
    const TaskbarLayout &layout = ownBar.layout();
    const auto entry =
        grip ? std::ranges::find(layout.entries, *ownBar.armedResizeID(), &TaskbarEntry::id) : layout.entries.end();
    if (!grip || entry == layout.entries.end()) {
        if (resizeHandle) {
            resizeHandle->hide();
            resizeHandle->deleteLater();
        }
        resizeHandle.clear();
        return;
    }
    if (!resizeHandle)
        resizeHandle = new TaskResizeHandle(ownBar, this);
    // The grip's parent is the view and not the row, because the row would cut off a grip at its edge.
    const auto index = static_cast<std::size_t>(entry - layout.entries.begin());
    resizeHandle->setButton(places.tabInView(index), layout.widths[index]);
    // While a row is tucked away, most of its tabs is hidden, so the grip is hidden too.
    const CardPlace *card = places.card(places.places[index].rowID);
    resizeHandle->setVisible(grip->resizing() || !card || !card->tucked);
    resizeHandle->raise();
}

}  // namespace korvane
