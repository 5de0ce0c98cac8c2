// Which programs show a badge on their launcher. A program that shows no window counts as an application if it shows a
// badge.
#pragma once

#include "Platform/Linux/DesktopCatalogue.h"
#include "Platform/Linux/LauncherBadges.h"
#include "Ports/Applications.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace korvane::platform {

// A process that announces a badge, described as an application.
struct BadgedProcess {
    Application snapshot;
    std::string iconName;
    friend bool operator==(const BadgedProcess &, const BadgedProcess &) = default;
};

struct BadgedPrograms {
    std::map<std::string, std::string> labels;  // a desktop entry's id ("org.example.Mail.desktop") to its badge's text
    std::vector<BadgedProcess> processes;       // whether or not they have windows
    friend bool operator==(const BadgedPrograms &, const BadgedPrograms &) = default;
};

// Finds the application of a desktop entry; the identifier is the entry's id without its ending.
using FindEntry = std::function<std::optional<ApplicationIdentity>(std::string_view identifier)>;
// A process whose entry is not installed is left out.
BadgedPrograms badgedPrograms(const LauncherBadges::Labels &labels, const LauncherBadges::Processes &processes,
                              const FindEntry &find);

// Follows what programs announce and which applications are installed.
class BadgedProgramsWatch {
public:
    // `changed` is called from the run loop and gets the complete state.
    BadgedProgramsWatch(MainLoop &loop, MessageBus &sessionBus, DesktopCatalogue &catalogue,
                        std::function<void(BadgedPrograms)> changed);

private:
    void tell();

    MainLoop &loop;
    DesktopCatalogue &catalogue;
    std::function<void(BadgedPrograms)> changed;
    LauncherBadges badges;
    Subscription installed, waiting;
};

}  // namespace korvane::platform
