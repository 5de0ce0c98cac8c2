// The content of one panel: the main row along the bottom, the overflow rows stacked above it. Runs a layout pass, then
// brings its widgets to it; a tab keeps its widget for as long as its entry lives. What a person did to this one bar
// (rows pinned open, the lock, widths set by hand) lives here and goes with the panel.
#pragma once

#include "Models/AppModel/AppModel.h"
#include "Models/Bar/OverflowHover.h"
#include "Models/Bar/OverflowReturnLock.h"
#include "Models/Bar/TaskDrag.h"
#include "Models/Bar/TaskResize.h"
#include "Models/Bar/TaskbarPass.h"
#include "Views/Bar/TaskDropTargets.h"
#include "Views/Bar/TaskbarGeometry.h"
#include "Views/Kit/ViewServices.h"
#include "Views/Tasks/TaskButtonHost.h"

#include <QPointer>
#include <QRegion>
#include <QWidget>
#include <functional>
#include <unordered_map>
#include <vector>

namespace korvane {

class AttentionControlView;
class BrightnessControlView;
class ClockView;
class MainRowView;
class OverflowRowCard;
class TaskButton;
class TaskDropCue;
class TaskResizeHandle;
class VolumeControlView;

class TaskbarView final : public QWidget {
    Q_OBJECT

public:
    TaskbarView(AppModel &model, ViewServices &services, platform::Platform &platform, QWidget *parent = nullptr);
    ~TaskbarView() override;

    // What the settings panel's own task opens.
    void setShowSettings(std::function<void()> show) { showSettings = std::move(show); }

    // One pass. Widgets whose part did not change are left alone.
    void updateFromModel();
    // Whether the desktop can shine through.
    void setTranslucent(bool translucent);
    // Where the pointer is; absent when it is not over this bar. Rows that are tucked away open by this.
    void pointerMoved(std::optional<QPoint> positionInView);

    const TaskbarLayout &taskbarLayout() const { return current; }
    const TaskbarGeometry &geometryOfBar() const { return places; }
    // Null when no entry has that identifier.
    TaskButton *button(const std::string &entryID) const;
    // From the lower edge to the upper edge of the highest card: what the view shows of a panel that is taller.
    int shownHeight() const;
    // The part of the view that is drawn; the rest belongs to the desktop behind it.
    QRegion drawnRegion() const;

    const OverflowHover &overflowHover() const { return hover; }
    const OverflowReturnLock &overflowReturnLock() const { return lock; }
    const TaskDragState &dragState() const { return drag; }
    const TaskWidthOverrides::Overrides &taskWidthOverrides() const { return overrides; }
    const std::optional<std::string> &armedResizeID() const { return armedID; }

    // A drag of that drag id begins, which stands for those windows; ended when it is dropped or given up.
    void dragBegan(const std::string &dragID, std::set<std::string> windowIDs);
    void dragEnded();
    // "Set First" and "Set Last".
    void setTaskPosition(const std::string &id, const std::set<std::string> &windowIDs, bool first);
    // Shows the grip on the entry's button.
    void armResize(const std::string &entryID);

Q_SIGNALS:
    void drawnRegionChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    struct ShownButton {
        TaskButton *button = nullptr;
        std::uint64_t pass = 0;  // the last one that had its entry
    };
    using Buttons = std::unordered_map<std::string, ShownButton>;

    void runPass();
    void reactToChanges();
    void arrange();
    void arrangeRows();
    void arrangeButtons();
    void arrangeControls();
    void arrangeResizeHandle();
    QWidget *rowWidget(int rowID);
    void clickedLock();
    void beginDrag(QWidget &source, const std::string &dragID, const std::set<std::string> &windowIDs);
    void dragMovedTo(const QPoint &point);
    void renewDropPlace();
    bool isStillThere(const std::string &dragID) const;
    void leaveDropPlace();
    void showCue();

    AppModel &model;
    ViewServices &services;
    platform::Platform &platform;
    std::function<void()> showSettings;
    TaskButtonHost host{model,
                        services,
                        platform,
                        [this](const std::string &dragID, const std::set<std::string> &windowIDs, bool first) {
                            setTaskPosition(dragID, windowIDs, first);
                        },
                        [this] {
                            if (showSettings)
                                showSettings();
                        },
                        [this](const std::string &entryID) { armResize(entryID); },
                        [this](QWidget &source, const std::string &dragID, const std::set<std::string> &windowIDs) {
                            beginDrag(source, dragID, windowIDs);
                        }};
    TaskbarLayout current;
    TaskbarGeometry places;
    int reportedRowCount = 0;
    bool isTranslucent = false;

    OverflowHover hover;
    OverflowReturnLock lock;
    TaskDragState drag;
    TaskDropActions dropActions;
    std::optional<QPoint> dragPoint;         // of a drag over this bar
    std::optional<TaskDropPlace> dropPlace;  // under it
    std::unique_ptr<TaskDropDelegate> dropDelegate;
    TaskWidthOverrides::Overrides overrides;
    std::optional<std::string> armedID;
    std::optional<int> pointedRow;  // the overflow row under the pointer
    // As they were in the pass before.
    std::optional<std::pair<std::size_t, std::size_t>> knownMainCounts;
    StringMap knownGroupMembers;

    MainRowView *mainRow;
    AttentionControlView *attention;
    ClockView *clock;
    // Null while the settings have them nowhere.
    BrightnessControlView *brightness = nullptr;
    VolumeControlView *volume = nullptr;
    std::vector<OverflowRowCard *> cards;  // nearest the bar first
    Buttons buttons;
    std::vector<Buttons::value_type *> buttonsInOrder;  // of the last pass
    std::uint64_t passNumber = 0;
    TaskDropCue *cue;
    QPointer<TaskResizeHandle> resizeHandle;
    QRegion reportedRegion;
};

}  // namespace korvane
