// Auto-hide over one panel, in virtual time.
#pragma once

#include "Models/Bar/AutoHide.h"
#include "Platform/Simulated/VirtualLoop.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <vector>

namespace korvane::testing {

using platform::Point;
using platform::Rect;
using platform::Seconds;

inline const Rect screen{0, 0, 1440, 900};
inline const Point onBar{500, 10}, away{500, 600};

class Panel final : public AutoHidePanel {
public:
    Rect frame() const override { return place; }
    std::optional<Rect> screenFrame() const override { return onScreen; }
    std::optional<double> contentOpacity() const override { return opacity; }
    bool ignoresMouseEvents() const override { return ignores; }
    void setContentOpacity(double value) override
    {
        opacity = value;
        ++writes;
    }
    void setIgnoresMouseEvents(bool value) override
    {
        ignores = value;
        ++writes;
    }
    void setHeight(double height, const Rect &) override { heights.push_back(height); }
    void hide()
    {
        opacity = 0;
        ignores = true;
    }

    Rect place{0, 0, 1440, 34};
    std::optional<Rect> onScreen = screen;
    std::optional<double> opacity = 1;
    bool ignores = false;
    int writes = 0;
    std::vector<double> heights;
};

class Looks : public ::testing::Test {
protected:
    Looks()
    {
        settings.autoHideEnabled = true;
        settings.appRefreshRate = 30;
        settings.animationDurationMS = 400;
        settings.lockApplicationsContainerToTaskbar = false;
        settings.expertAvoidRedundantPanelWrites = true;
        machine.addPanel(panel, std::nullopt);
    }
    AutoHideOutcome look(double now, Point place)
    {
        pointer = place;
        loop.advance(Seconds(now) - loop.monotonicNow());
        return machine.update();
    }
    // It was last on the bar at 0.
    AutoHideOutcome lookAfter(double elapsed)
    {
        machine.removePanels();
        machine.addPanel(panel, Seconds(0));
        return look(elapsed, away);
    }
    std::optional<Seconds> lastInside() const { return machine.lastPointerInside(panel); }

    platform::simulated::VirtualLoop loop;
    SettingsValues settings;
    Panel panel;
    Point pointer = away;
    std::vector<Rect> screens{screen};
    OverflowGeometry geometry{34, 34};
    bool rowsVisible = false, listOpen = false, held = false, inStartMenu = false, paused = false;
    std::vector<double> menuOpacities;
    std::vector<Rect> starts;
    std::vector<bool> hidden;
    AutoHide machine{loop,
                     settings,
                     {.pointer = [this] { return pointer; },
                      .screens = [this] { return screens; },
                      .inputs =
                          [this] {
                              return AutoHideInputs{geometry, rowsVisible, listOpen};
                          },
                      .held = [this] { return held; },
                      .startMenuContainsMouse = [this] { return inStartMenu; },
                      .paused = [this] { return paused; }},
                     {.setTaskbarHidden = [this](bool value) { hidden.push_back(value); },
                      .setStartMenuOpacity = [this](double value) { menuOpacities.push_back(value); },
                      .onStart = [this](const Rect &frame) { starts.push_back(frame); }}};
};

}  // namespace korvane::testing
