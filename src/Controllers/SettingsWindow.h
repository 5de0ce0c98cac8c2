// What the other controllers need from the settings window.
#pragma once

namespace korvane {

class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;
    virtual void show() = 0;
};

}  // namespace korvane
