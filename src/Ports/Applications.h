// The running applications, what can be done to one of them, and what the system tells about them.
#pragma once

#include "Ports/Subscription.h"
#include "Ports/Values/Image.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::platform {

using Pid = std::int32_t;

enum class ActivationPolicy { regular, accessory, prohibited };

// The values are those of the system's option set.
enum class Activate : unsigned { none = 0, allWindows = 1 };

// A snapshot of one application. Two snapshots with equal pids are of the same application.
struct Application {
    Pid pid = 0;
    ActivationPolicy policy = ActivationPolicy::regular;
    bool terminated = false;
    bool active = false;  // frontmost
    bool hidden = false;
    std::optional<std::string> localizedName, bundleIdentifier;
    std::optional<std::string> bundlePath;  // where it is installed: a bundle, or a desktop entry
    friend bool operator==(const Application &, const Application &) = default;
};

enum class ApplicationEvent { launched, terminated, activated, hidden, unhidden };

enum class SessionEvent {
    screensSlept,
    screensWoke,
    sessionResigned,
    sessionActive,
    screensaverStarted,
    screensaverStopped,
};

class Applications {
public:
    virtual ~Applications() = default;

    // This process.
    virtual Pid self() const = 0;
    // The applications of all policies, in the platform's order. The reference is valid until the next turn of the run
    // loop or the next action.
    virtual const std::vector<Application> &running() = 0;
    // Absent when the process is gone.
    virtual std::optional<Application> find(Pid pid) = 0;
    // "com.apple.dock" gives the process whose element tree shows the badges.
    virtual std::vector<Application> withBundleIdentifier(std::string_view bundleIdentifier) = 0;
    // Null when the application has none. It is not part of the snapshot, because reading it is costly.
    virtual ImagePtr icon(Pid pid) = 0;

    // Each of these sends a request and does not wait for the result. False when there is no such application.
    virtual bool hide(Pid pid) = 0;
    virtual bool unhide(Pid pid) = 0;
    virtual bool terminate(Pid pid) = 0;
    virtual bool activate(Pid pid, Activate options) = 0;

    // Runs this program without an icon of its own in the system's dock. False when the system refuses.
    virtual bool becomeAccessory() = 0;

    // Whether every change in what the other ports answer about applications, their windows and their badges comes with
    // one of the notifications below. If so, polling may stop until a notification comes.
    virtual bool announcesEveryChange() const = 0;
    // On a system that reports changes of single windows, `activated` also stands for a window that was opened, closed,
    // retitled, minimised or restored.
    [[nodiscard]] virtual Subscription observe(ApplicationEvent event, std::function<void()> callback) = 0;
    [[nodiscard]] virtual Subscription observe(SessionEvent event, std::function<void()> callback) = 0;
};

}  // namespace korvane::platform
