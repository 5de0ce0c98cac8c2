#include "App/AppDelegate.h"

#include <algorithm>

namespace korvane {
namespace {

constexpr double pointerInset = 8;

}  // namespace

void enrolAsLoginItem(platform::LoginItem &loginItem, std::ostream &output)
{
    if (loginItem.enabled())
        return;
    if (const auto error = loginItem.enable())
        output << "Launch at login registration failed: " << *error << std::endl;
    else
        output << "Launch at login enabled." << std::endl;
}

AppDelegate::AppDelegate(platform::Platform &system, Windows programWindows)
    : platform(system), windows(std::move(programWindows)), model(std::make_unique<AppModel>(system))
{}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    // An earlier version shortened the delay of the tool tips. The user's own delay must be valid again.
    platform.defaults.remove("NSInitialToolTipDelay");
    platform.applications.becomeAccessory();
    if (windows.makeSettings)
        settings = windows.makeSettings(*model);
    if (windows.makeStartMenu)
        startMenu = windows.makeStartMenu(*model, [this] {
            if (settings)
                settings->show();
        });
    taskbar = std::make_unique<TaskbarPanelController>(
        *model, platform,
        TaskbarCallbacks{[this](const platform::Rect &frame) { onStart(frame); },
                         [this](const platform::Rect &frame) { onStartHover(frame); }, [this] { showSettings(); },
                         [this] { return startMenu && startMenu->containsMouse(); },
                         [this](double progress) {
                             if (startMenu)
                                 startMenu->setTaskbarFadeProgress(progress);
                         }});
    // The panels exist, still empty, before the model fills them.
    taskbar->show();
    model->start();
    installControlEscapeHotKey();
}

void AppDelegate::applicationWillTerminate()
{
    startMenuHotKey.reset();
    activityMonitorHotKey.reset();
    hotKeyHandler.reset();
    model->stop();
}

void AppDelegate::onStart(const platform::Rect &startButton)
{
    if (!startMenu)
        return;
    if (!startMenu->isVisible())
        startMenu->show(startButton);
    else if (!model->settings().lockApplicationsContainerToTaskbar)
        startMenu->fadeOut();
}

void AppDelegate::onStartHover(const platform::Rect &startButton)
{
    if (startMenu && !startMenu->isVisible())
        startMenu->show(startButton);
}

void AppDelegate::showSettings()
{
    if (startMenu)
        startMenu->fadeOut();
    if (settings)
        settings->show();
}

void AppDelegate::installControlEscapeHotKey()
{
    hotKeyHandler = platform.hotKeys.install([this](std::uint32_t id) { hotKeyPressed(id); });
    startMenuHotKey = platform.hotKeys.add({platform::HotKey::escape, platform::HotKey::control, startMenuKey});
    activityMonitorHotKey = platform.hotKeys.add(
        {platform::HotKey::escape, platform::HotKey::control | platform::HotKey::shift, activityMonitorKey});
}

void AppDelegate::hotKeyPressed(std::uint32_t id)
{
    if (id == activityMonitorKey)
        openActivityMonitorFromHotKey();
    else
        openStartMenuFromHotKey();
}

void AppDelegate::openActivityMonitorFromHotKey()
{
    model->launch("com.apple.ActivityMonitor");
}

void AppDelegate::openStartMenuFromHotKey()
{
    if (!taskbar || !startMenu)
        return;
    const auto startButton = taskbar->revealForShortcut();
    if (!startButton)
        return;
    movePointerToStart(*startButton);
    if (!startMenu->isVisible())
        startMenu->show(*startButton);
}

void AppDelegate::movePointerToStart(const platform::Rect &startButton)
{
    const auto screens = platform.screens.all();
    auto screen = std::find_if(screens.begin(), screens.end(), [&](const platform::Screen &candidate) {
        return candidate.frame.intersects(startButton);
    });
    if (screen == screens.end()) {
        const auto main = platform.screens.main();
        if (!main || *main >= screens.size())
            return;
        screen = screens.begin() + static_cast<std::ptrdiff_t>(*main);
    }
    if (!screen->number)
        return;
    const platform::Rect bounds = platform.screens.displayBounds(*screen->number);
    platform.pointer.warp({bounds.x + pointerInset, bounds.y + bounds.height - pointerInset});
}

}  // namespace korvane
