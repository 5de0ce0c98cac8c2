// A bar that fades away and comes back, in virtual time.
#pragma once

#include "Controllers/TaskbarPanelController.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <memory>
#include <vector>

namespace korvane::testing {

inline const platform::Point onBar{500, 10}, away{500, 600}, edge{500, 0.5};

class Hiding : public ModelFixture {
protected:
    // The bar stands, its list is there, and the pointer is on it.
    void show(std::int64_t frames = 30)
    {
        addApplication(1, "Mail", 2);
        makeModel();
        model->set(&V::groupingMode, GroupingMode::never);
        model->set(&V::mediaSliderDisplay, MediaSliderDisplay::never);
        model->set(&V::appRefreshRate, frames);
        model->set(&V::appMonitorRefreshRate, 20);
        model->set(&V::animationDurationMS, 400);
        pointAt(onBar);
        TaskbarCallbacks callbacks;
        callbacks.onStart = [this](const platform::Rect &frame) { starts.push_back(frame); };
        callbacks.startMenuContainsMouse = [this] { return inStartMenu; };
        callbacks.setStartMenuOpacity = [this](double opacity) { menuOpacity = opacity; };
        controller = std::make_unique<TaskbarPanelController>(*model, platform, callbacks);
        controller->show();
        model->start();
        advance(1);
        settle();
    }
    void pointAt(platform::Point place)
    {
        desktop.pointer.moveTo(place);
        desktop.events.move();
        desktop.loop.runPosted();
    }
    TaskbarPanel &panel(std::size_t index = 0) { return *controller->panels()[index]; }
    double opacity(std::size_t index = 0) { return panel(index).contentOpacity().value(); }
    bool hidden(std::size_t index = 0) { return opacity(index) <= 0.01 && panel(index).ignoresMouseEvents(); }
    bool ignoredByDesktop() { return desktop.panels.ignoring[panel().winId()]; }

    std::unique_ptr<TaskbarPanelController> controller;
    std::vector<platform::Rect> starts;
    bool inStartMenu = false;
    double menuOpacity = -1;
};

}  // namespace korvane::testing
