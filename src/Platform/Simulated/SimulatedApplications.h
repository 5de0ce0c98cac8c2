// The applications of the simulated desktop with their windows, and how they change.
#pragma once

#include "Platform/Simulated/ActionLog.h"
#include "Platform/Simulated/DesktopRecords.h"
#include "Platform/Simulated/Elements.h"
#include "Platform/Simulated/VirtualLoop.h"
#include "Ports/Applications.h"
#include "Ports/ObserverList.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace korvane::platform::simulated {

class SimulatedApplications final : public platform::Applications {
public:
    using Pid = platform::Pid;
    using Application = platform::Application;
    using ApplicationEvent = platform::ApplicationEvent;
    using SessionEvent = platform::SessionEvent;
    using Hash = std::uint64_t;

    // The process that owns the dock's element tree.
    static constexpr Pid dockPid = 77;

    SimulatedApplications(Behaviour kind, VirtualLoop &mainLoop, ActionLog &actions);
    ~SimulatedApplications() override;

    // ------------------------------------------------------------------------------------------------ the port
    Pid self() const override { return ownPid; }
    const std::vector<Application> &running() override { return snapshots; }
    std::optional<Application> find(Pid pid) override;
    std::vector<Application> withBundleIdentifier(std::string_view bundleIdentifier) override;
    platform::ImagePtr icon(Pid pid) override;
    bool hide(Pid pid) override;
    bool unhide(Pid pid) override;
    bool terminate(Pid pid) override;
    bool activate(Pid pid, platform::Activate options) override;
    bool becomeAccessory() override;
    bool announcesEveryChange() const override { return announces; }
    [[nodiscard]] platform::Subscription observe(ApplicationEvent event, std::function<void()> callback) override;
    [[nodiscard]] platform::Subscription observe(SessionEvent event, std::function<void()> callback) override;

    // ------------------------------------------------------------------------------------------------ setting up
    // These change a passive desktop as well as a live one; on a live desktop the applications announce the change. A
    // call does nothing if its application or window does not exist.

    void setSelf(Pid pid) { ownPid = pid; }
    // Replaces the application with that pid, or adds the process after all others. Windows that exist before and after
    // keep their identity.
    void put(Process process);
    // Ends the process.
    void remove(Pid pid);
    void clear();
    // Makes this tree the dock's tree. If absent, there is no dock process.
    void setDock(const std::optional<DockItem> &root);
    // Makes the application the frontmost one. If absent, no application is in front.
    void setActive(std::optional<Pid> pid);
    void setHidden(Pid pid, bool hidden);
    // The application has ended, but it is still listed for a moment.
    void setTerminated(Pid pid, bool terminated);
    // Changes what the application reports about itself. Its pid does not change.
    void changeApplication(Pid pid, const std::function<void(Application &)> &change);
    void setIcon(Pid pid, platform::ImagePtr icon);
    // Opens a new window at the end of the application's list.
    void openWindow(Pid pid, Window window);
    void closeWindow(Pid pid, Hash hash);
    void setTitle(Pid pid, Hash hash, std::optional<std::string> title);
    void setMinimized(Pid pid, Hash hash, bool minimized);
    void changeWindow(Pid pid, Hash hash, const std::function<void(Window &)> &change);
    void setFocusedWindow(Pid pid, std::optional<Hash> hash);
    // Simulates a click into the window: it comes to the front and its application becomes the frontmost one.
    void focusWindow(Pid pid, Hash hash);
    // From now on every read of the application returns this status; `success` ends it.
    void setReadStatus(Pid pid, platform::AxStatus status);
    // The answer of announcesEveryChange(). It is true only on a live desktop, whose applications announce changes.
    void setAnnouncesEveryChange(bool value) { announces = value; }
    void setRefusesAccessory(bool refuses) { refusesAccessory = refuses; }

    // The observers are told at the next turn of the loop.
    void notify(ApplicationEvent event);
    void notify(SessionEvent event);

    // ------------------------------------------------------------------------------------------------ looking
    const Window *window(Pid pid, Hash hash) const;
    std::size_t windowCount(Pid pid) const;
    std::optional<Hash> focusedWindow(Pid pid) const;
    std::optional<Pid> active() const;
    bool isAccessory() const { return accessory; }
    // How often the dock's process was requested. Every scan for badges begins with this request.
    int dockQueries() const { return dockQueryCount; }
    std::size_t observerCount() const;

    // ------------------------------------------------------------------------------------------------ for the elements
    struct ProcessNode {
        std::size_t place = 0;  // in the list of the running applications
        std::shared_ptr<const ApplicationNode> element;
        std::optional<std::vector<WindowPtr>> windows;
        std::unordered_map<Hash, WindowPtr> byHash;
        std::optional<Hash> focused;
        platform::ImagePtr icon;
        std::shared_ptr<const DockNode> dock;
        platform::AxStatus readStatus = platform::AxStatus::success;
        std::uint64_t revision = 0;
    };
    // Null when the process has ended.
    const ProcessNode *process(Pid pid) const;
    // Any answer may have changed.
    void touchAll();
    // What a live desktop does on an action. Returns false when the window or the application is gone.
    bool raise(const WindowNode &node);
    bool minimize(const WindowNode &node, bool minimized);
    bool close(const WindowNode &node);
    void bringForward(Pid pid, bool allWindows);
    bool isLive() const { return behaviour == Behaviour::live; }
    // The windows that can be seen, front to back.
    std::vector<WindowPtr> onScreen() const;
    Application applicationOf(Pid pid) const;

private:
    ProcessNode *node(Pid pid);
    const WindowNode *windowNode(Pid pid, Hash hash);
    void fill(ProcessNode &process, Process &&content);
    void touch(ProcessNode &process) { process.revision = ++revisions; }
    // The application's windows changed. Sets its stamp; on a live desktop also announces it at the next turn.
    void windowsChanged(ProcessNode &process);
    void tell(ApplicationEvent event);
    // The focus of an application moves to its frontmost visible window.
    void refocus(ProcessNode &process);
    // Called after the frontmost application lost its last visible window: the next application gets the focus.
    void passFocusOn(Pid from);
    bool hasVisibleWindow(const ProcessNode &process) const;

    Behaviour behaviour;
    VirtualLoop &loop;
    ActionLog &log;
    Pid ownPid = 500;
    std::vector<Application> snapshots;  // in the platform's order
    std::unordered_map<Pid, ProcessNode> processes;
    std::uint64_t revisions = 0, raises = 0;
    bool announces = false;
    std::array<platform::ObserverList<>, 5> applicationObservers;
    std::array<platform::ObserverList<>, 6> sessionObservers;
    bool windowNoticePending = false;
    bool accessory = false, refusesAccessory = false;
    int dockQueryCount = 0;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);  // for posted calls
};

}  // namespace korvane::platform::simulated
