// Finds the installed application that a window belongs to. The backend asks with what it knows about the window; the
// desktop entries give the answer.
#pragma once

#include "Ports/MainLoop.h"
#include "Ports/Values/Image.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::platform {

// What a window and its process say about their application. A field is empty when nothing is known.
struct WindowOrigin {
    std::string gtkApplicationId;  // _GTK_APPLICATION_ID
    std::string instanceName;      // WM_CLASS, first text
    std::string className;         // WM_CLASS, second text
    std::string executablePath;    // the executable of the process
    friend bool operator==(const WindowOrigin &, const WindowOrigin &) = default;
};

struct ApplicationIdentity {
    std::string name;              // in the user's language
    std::string bundleIdentifier;  // the identifier of a role that it fills, otherwise the desktop entry's id
    std::string entryPath;         // the path of the desktop entry
    std::string iconName;          // a theme's name or a path; may be empty
};

// An installation writes many files, one after the other. An observer waits this long before it looks again, so that
// the other files are there.
constexpr Seconds installingTime{1};

class ApplicationCatalogue {
public:
    virtual ~ApplicationCatalogue() = default;
    // Absent when no installed application matches.
    virtual std::optional<ApplicationIdentity> match(const WindowOrigin &origin) = 0;
    // A number that changes when applications are installed or removed, and when a role is given to another
    // application.
    virtual unsigned revision() const = 0;
    // Called from the run loop when that number has changed. Null when it never changes.
    [[nodiscard]] virtual Subscription observe(std::function<void()> callback) = 0;
};

// A picture for an icon's name or path, at 64 pixels; null when there is none.
using IconLoader = std::function<ImagePtr(std::string_view iconName)>;

}  // namespace korvane::platform
