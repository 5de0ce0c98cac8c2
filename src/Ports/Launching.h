// Starting applications and opening addresses. Nothing here waits for what it starts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace korvane::platform {

class Launching {
public:
    virtual ~Launching() = default;
    // Where the application of that identifier is installed.
    virtual std::optional<std::string> applicationPath(std::string_view bundleIdentifier) = 0;
    // The identifier of the application that is installed at that path.
    virtual std::optional<std::string> bundleIdentifier(std::string_view applicationPath) = 0;
    virtual void openApplication(std::string_view applicationPath, bool activates) = 0;
    // False when no program can open the address.
    virtual bool openUrl(std::string_view url) = 0;
};

}  // namespace korvane::platform
