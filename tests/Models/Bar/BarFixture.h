// One bar over a model on a simulated desktop, with no widget.
#pragma once

#include "Models/Bar/Bar.h"
#include "tests/Models/AppModel/ModelFixture.h"

#include <memory>
#include <string>

namespace korvane::testing {

class BarOnADesktop : public ModelFixture {
protected:
    // So many windows of one program, none grouped, on a bar on which about ten tabs fit side by side at their least.
    void show(int windows)
    {
        addApplication(1, "Mail", windows);
        makeModel();
        model->set(&V::groupingMode, GroupingMode::never);
        model->set(&V::mediaSliderDisplay, MediaSliderDisplay::never);
        start();
        makeBar();
    }
    void makeBar()
    {
        bar = std::make_unique<Bar>(
            *model, desktop.loop,
            [this](std::string_view text) {
                ++measured;
                return static_cast<double>(text.size()) * 7;
            },
            BarActions{[this] {
                           ++passes;
                           bar->update(width);
                       },
                       [this] { ++arranged; }, [this] { ++cues; }});
        bar->update(width);
    }
    const std::string &id(std::size_t index) { return bar->layout().entries.at(index).id; }
    // On that entry's button, which begins at 100 and is 200 wide.
    TaskDropPlace on(std::size_t index)
    {
        TaskDropPlace place;
        place.kind = bar->layout().entries.at(index).group ? TaskDropPlace::Kind::group : TaskDropPlace::Kind::task;
        place.rowID = index < bar->layout().mainCount ? mainRowID : 1;
        place.entry = index;
        place.entryID = id(index);
        place.left = 100;
        place.width = 200;
        return place;
    }
    static TaskDropPlace ofKind(TaskDropPlace::Kind kind, int rowID = mainRowID)
    {
        TaskDropPlace place;
        place.kind = kind;
        place.rowID = rowID;
        return place;
    }
    // Windows that are asked to close do, and the model hears of it.
    void close(int index)
    {
        desktop.applications.closeWindow(1, hashOf(1, index));
        model->refresh();
    }
    const OverflowReturnLock::WindowIDs &locked() { return bar->overflowReturnLock().lockedMainWindowIDs(); }

    static constexpr double edge = 110, middle = 280;  // of the place of a button

    double width = 1000;
    std::unique_ptr<Bar> bar;
    int passes = 0, arranged = 0, cues = 0, measured = 0;
};

}  // namespace korvane::testing
