// Which installed application a window belongs to. The backend asks with what the window says of itself; the desktop
// entries answer.
#pragma once

#include "Ports/MainLoop.h"
#include "Ports/Values/Image.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::platform {

// What a window and its process tell of their application; empty where they tell nothing.
struct WindowOrigin {
    std::string gtkApplicationId;  // _GTK_APPLICATION_ID
    std::string instanceName;      // WM_CLASS, first text
    std::string className;         // WM_CLASS, second text
    std::string executablePath;    // of the process
    friend bool operator==(const WindowOrigin &, const WindowOrigin &) = default;
};

struct ApplicationIdentity {
    std::string name;              // as the user's language has it
    std::string bundleIdentifier;  // a fixed identifier where the application fills a role, else the desktop entry's id
    std::string entryPath;         // of the desktop entry
    std::string iconName;          // a theme's name or a path; may be empty
};

// An installation is many files, one after the other: who looks again on being told waits so long for the rest of it.
constexpr Seconds installingTime{1};

class ApplicationCatalogue {
public:
    virtual ~ApplicationCatalogue() = default;
    // Absent when no installed application matches.
    virtual std::optional<ApplicationIdentity> match(const WindowOrigin &origin) = 0;
    // A number that changes when applications were installed or removed, or another one was given a role.
    virtual unsigned revision() const = 0;
    // Told from the run loop when that number has changed. Null when it never does.
    [[nodiscard]] virtual Subscription observe(std::function<void()> callback) = 0;
};

// A picture for an icon's name or path, at 64 pixels; null when there is none.
using IconLoader = std::function<ImagePtr(std::string_view iconName)>;

}  // namespace korvane::platform
