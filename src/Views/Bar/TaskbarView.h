// The content of one panel: the main row along the bottom, the overflow rows stacked above it. It asks its bar for a
// layout and arranges its widgets accordingly. A tab keeps its widget for as long as its entry lives.
#pragma once

#include "Models/Bar/Bar.h"
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

    // `show` is called when the settings panel's own task is clicked.
    void setShowSettings(std::function<void()> show) { showSettings = std::move(show); }

    // One pass. A widget is left alone when nothing changed for it.
    void updateFromModel();
    // Whether the desktop can shine through.
    void setTranslucent(bool translucent);
    // Where the pointer is; absent when it is not over this bar. The pointer opens rows that are tucked away.
    void pointerMoved(std::optional<QPoint> positionInView);

    Bar &bar() { return ownBar; }
    const TaskbarGeometry &geometryOfBar() const { return places; }
    // Null when no entry has that identifier.
    TaskButton *button(const std::string &entryID) const;
    // From the lower edge to the upper edge of the highest card. The panel may be taller; only this height of it is
    // shown.
    int shownHeight() const;
    // The part of the view that is drawn; the rest belongs to the desktop behind it.
    QRegion drawnRegion() const;

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
        std::uint64_t pass = 0;  // the last pass in which the entry existed
        bool stripAtTop = false;
    };
    using Buttons = std::unordered_map<std::string, ShownButton>;

    void arrange();
    void arrangeRows();
    void arrangeButtons();
    void arrangeControls();
    void arrangeResizeHandle();
    QWidget *rowWidget(int rowID);
    void beginDrag(QWidget &source, const std::string &dragID, const std::set<std::string> &windowIDs);
    std::optional<TaskDropPlace> dropPlaceAt(const QPoint &point) const;
    void showCue();

    AppModel &model;
    ViewServices &services;
    platform::Platform &platform;
    std::function<void()> showSettings;
    Bar ownBar;
    TaskButtonHost host;
    TaskbarGeometry places;
    bool isTranslucent = false;

    std::optional<QPoint> dragPoint;  // where a drag over this bar is

    MainRowView *mainRow;
    AttentionControlView *attention;
    ClockView *clock;
    // Null when the settings show the control nowhere.
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
