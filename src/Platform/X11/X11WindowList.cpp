#include "Platform/X11/X11WindowList.h"

namespace korvane::platform {
namespace {

// The layer above ordinary windows, with panels and notifications.
constexpr std::int64_t panelLayer = 25;

}  // namespace

std::optional<std::vector<OnScreenWindow>> X11WindowList::onScreen()
{
    std::vector<OnScreenWindow> windows;
    const auto &stacking = mirror.stacking();
    for (auto id = stacking.rbegin(); id != stacking.rend(); ++id) {
        const x11::WindowRecord *record = mirror.find(*id);
        if (!record || record->kind == x11::WindowKind::desktop)
            continue;
        // The value may be from a manager that has ended. Then it says nothing about the screen.
        const bool elsewhere = record->desktop != x11::everyDesktop && record->desktop != mirror.currentDesktop();
        if (mirror.managed() && (record->minimized || elsewhere))
            continue;
        OnScreenWindow window;
        window.layer = record->kind == x11::WindowKind::ordinary ? 0 : panelLayer;
        window.ownerPid = record->pid;
        window.number = record->id;
        if (!record->title.empty())
            window.name = record->title;
        windows.push_back(std::move(window));
    }
    return windows;
}

}  // namespace korvane::platform
