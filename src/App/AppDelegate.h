// Owns the model and the controllers, and starts and stops them in order. Nothing else in the program is a singleton.
#pragma once

#include "Controllers/SettingsWindow.h"
#include "Controllers/StartMenu.h"
#include "Controllers/TaskbarPanelController.h"
#include "Models/AppModel/AppModel.h"

#include <functional>
#include <memory>
#include <ostream>

namespace korvane {

// Adds the program to those that start at login, unless it is already one of them, and prints one line about it.
void enrolAsLoginItem(platform::LoginItem &loginItem, std::ostream &output);

class AppDelegate {
public:
    static constexpr std::uint32_t startMenuKey = 1;
    static constexpr std::uint32_t activityMonitorKey = 2;

    // The windows that the delegate opens. A window whose function is not set is never opened.
    struct Windows {
        std::function<std::unique_ptr<SettingsWindow>(AppModel &)> makeSettings;
        std::function<std::unique_ptr<StartMenu>(AppModel &, std::function<void()> showSettings)> makeStartMenu;
    };

    explicit AppDelegate(platform::Platform &platform, Windows windows = {});
    ~AppDelegate();

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    AppModel &appModel() { return *model; }
    TaskbarPanelController *taskbarController() { return taskbar.get(); }
    StartMenu *startMenuController() { return startMenu.get(); }

    // The start button was pressed; its frame is given in desktop coordinates.
    void onStart(const platform::Rect &startButton);
    void onStartHover(const platform::Rect &startButton);
    void showSettings();

private:
    void installControlEscapeHotKey();
    void hotKeyPressed(std::uint32_t id);
    void openStartMenuFromHotKey();
    void openActivityMonitorFromHotKey();
    // The pointer jumps to the corner of the start button, so that it stays inside the open menu.
    void movePointerToStart(const platform::Rect &startButton);

    platform::Platform &platform;
    Windows windows;
    std::unique_ptr<AppModel> model;
    std::unique_ptr<SettingsWindow> settings;
    std::unique_ptr<StartMenu> startMenu;
    std::unique_ptr<TaskbarPanelController> taskbar;
    platform::Subscription hotKeyHandler, startMenuHotKey, activityMonitorHotKey;
};

}  // namespace korvane
