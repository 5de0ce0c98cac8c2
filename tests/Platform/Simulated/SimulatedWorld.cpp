// The contracts of a desktop on the one in memory.
#include "tests/Ports/DesktopWorld.h"

#include "Platform/Simulated/SimulatedDesktop.h"

namespace korvane::platform {
namespace {

class SimulatedWorld final : public DesktopWorld {
public:
    Applications &applications() override { return desktop.applications; }
    Accessibility &accessibility() override { return desktop.accessibility; }
    WindowList &windowList() override { return desktop.windowList; }
    Screens &screens() override { return desktop.screens; }
    Pointer &pointer() override { return desktop.pointer; }
    Panels &panels() override { return desktop.panels; }
    HotKeys &hotKeys() override { return desktop.hotKeys; }

    bool waitFor(const std::function<bool()> &condition) override
    {
        desktop.loop.runPosted();
        return desktop.loop.runUntil(condition, Seconds(5));
    }
    void settle() override { desktop.loop.advance(Seconds(0.15)); }

    Pid start(const std::string &name, const std::string &title) override
    {
        platform::simulated::Process process;
        process.application.pid = ++lastPid;
        process.application.localizedName = name;
        process.application.active = true;
        desktop.applications.put(std::move(process));
        open(lastPid, title);
        return lastPid;
    }
    void quit(Pid pid) override { desktop.applications.remove(pid); }
    Window open(Pid pid, const std::string &title) override
    {
        platform::simulated::Window window;
        window.hash = ++lastWindow;
        window.title = title;
        desktop.applications.openWindow(pid, std::move(window));
        return lastWindow;
    }
    void close(Pid pid, Window window) override { desktop.applications.closeWindow(pid, window); }
    void retitle(Pid pid, Window window, const std::string &title) override
    {
        desktop.applications.setTitle(pid, window, title);
    }
    void click(Pid pid, Window window) override { desktop.applications.focusWindow(pid, window); }
    void minimize(Pid pid, Window window) override { desktop.applications.setMinimized(pid, window, true); }
    void setCloseButton(Pid pid, Window window, bool present) override
    {
        desktop.applications.changeWindow(pid, window, [present](platform::simulated::Window &one) {
            one.closeButton =
                present ? platform::simulated::CloseButton::works : platform::simulated::CloseButton::none;
        });
    }
    void setIdentifier(Pid pid, Window window, const std::string &identifier) override
    {
        desktop.applications.changeWindow(pid, window,
                                          [&](platform::simulated::Window &one) { one.identifier = identifier; });
    }

    void setBadge(Pid pid, const std::string &label) override
    {
        using platform::simulated::DockItem;
        DockItem list, root;
        list.children.emplace();
        if (!label.empty()) {
            DockItem item;
            item.title = Value(desktop.applications.find(pid)->localizedName.value_or(""));
            item.subrole = Value(std::string("AXApplicationDockItem"));
            item.statusLabel = Value(label);
            list.children->push_back(std::move(item));
        }
        root.children = std::vector{list};
        desktop.applications.setDock(root);
    }
    void setAttention(Pid pid, Window, bool wanted) override { setBadge(pid, wanted ? "!" : ""); }
    void setIcon(Pid pid, Window) override { desktop.applications.setIcon(pid, std::make_shared<Image>()); }
    void rename(Pid pid, Window, const std::string &name) override { install(pid, name); }
    void install(Pid pid, const std::string &name) override
    {
        desktop.applications.changeApplication(pid, [&](Application &one) { one.localizedName = name; });
    }

    void setFurtherScreens(const std::vector<Rect> &frames) override
    {
        std::vector<Screen> screens{desktop.screens.all().front()};
        for (const Rect &frame : frames)
            screens.push_back({static_cast<std::uint32_t>(screens.size() + 1), frame, 1});
        desktop.screens.set(std::move(screens));
    }
    void press(const HotKey &key) override { desktop.hotKeys.press(key.id); }
    void takeKey(const HotKey &key) override { desktop.hotKeys.take(key.keyCode, key.modifiers); }

private:
    platform::simulated::SimulatedDesktop desktop;
    Pid lastPid = 1000;
    Window lastWindow = 0;
};

std::unique_ptr<DesktopWorld> makeSimulatedWorld()
{
    return std::make_unique<SimulatedWorld>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Simulated, ApplicationsContract, ::testing::Values(&makeSimulatedWorld));
INSTANTIATE_TEST_SUITE_P(Simulated, AccessibilityContract, ::testing::Values(&makeSimulatedWorld));
INSTANTIATE_TEST_SUITE_P(Simulated, WindowListContract, ::testing::Values(&makeSimulatedWorld));
INSTANTIATE_TEST_SUITE_P(Simulated, ScreensContract, ::testing::Values(&makeSimulatedWorld));
INSTANTIATE_TEST_SUITE_P(Simulated, PointerContract, ::testing::Values(&makeSimulatedWorld));
INSTANTIATE_TEST_SUITE_P(Simulated, HotKeysContract, ::testing::Values(&makeSimulatedWorld));
INSTANTIATE_TEST_SUITE_P(Simulated, PanelsContract, ::testing::Values(&makeSimulatedWorld));

}  // namespace korvane::platform
