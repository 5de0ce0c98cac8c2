// Starts applications and opens addresses through the desktop entries, never through a shell.
#pragma once

#include "Ports/Launching.h"

#include <cstdint>
#include <functional>

namespace korvane::platform {

class DesktopCatalogue;

class GioLaunching final : public Launching {
public:
    // The time of the user's last click or key, on the display's clock. With it a new window may take the focus. Zero
    // when it is not known.
    using UserTime = std::function<std::uint32_t()>;

    GioLaunching(DesktopCatalogue &installed, UserTime lastUserTime);

    // For a fixed identifier, the application that fills that role on this system.
    std::optional<std::string> applicationPath(std::string_view bundleIdentifier) override;
    std::optional<std::string> bundleIdentifier(std::string_view applicationPath) override;
    // Starts a desktop entry or an executable file; opens any other file with its application. If `activates` is false,
    // the first window is asked not to take the focus.
    void openApplication(std::string_view applicationPath, bool activates) override;
    // Takes an address with a scheme, or the absolute path of a file.
    bool openUrl(std::string_view url) override;

private:
    DesktopCatalogue &catalogue;
    UserTime userTime;
};

}  // namespace korvane::platform
