// Starting applications and opening addresses through the desktop entries, never through a shell.
#pragma once

#include "Ports/Launching.h"

#include <cstdint>
#include <functional>

namespace korvane::platform {

class DesktopCatalogue;

class GioLaunching final : public Launching {
public:
    // The time of the user's last click or key on the display's clock, which lets a new window take the focus; zero
    // where it is not known.
    using UserTime = std::function<std::uint32_t()>;

    GioLaunching(DesktopCatalogue &installed, UserTime lastUserTime);

    // Of a fixed identifier the application that fills that role here.
    std::optional<std::string> applicationPath(std::string_view bundleIdentifier) override;
    std::optional<std::string> bundleIdentifier(std::string_view applicationPath) override;
    // A desktop entry or an executable file is started, anything else opened with the application for it. With
    // `activates` false its first window is asked not to take the focus.
    void openApplication(std::string_view applicationPath, bool activates) override;
    // Takes an address with a scheme, or the absolute path of a file.
    bool openUrl(std::string_view url) override;

private:
    DesktopCatalogue &catalogue;
    UserTime userTime;
};

}  // namespace korvane::platform
