#include "Platform/Linux/BadgedPrograms.h"

#include <utility>

namespace korvane::platform {

BadgedPrograms badgedPrograms(const LauncherBadges::Labels &labels, const LauncherBadges::Processes &processes,
                              const FindEntry &find)
{
    constexpr std::string_view suffix = ".desktop";
    BadgedPrograms programs;
    programs.labels = labels;
    for (const auto &[entry, pid] : processes) {
        const auto identity = find(std::string_view(entry).substr(0, entry.size() - suffix.size()));
        if (!identity)
            continue;
        BadgedProcess process;
        process.snapshot.pid = pid;
        process.snapshot.localizedName = identity->name;
        process.snapshot.bundleIdentifier = identity->bundleIdentifier;
        process.snapshot.bundlePath = identity->entryPath;
        process.iconName = identity->iconName;
        programs.processes.push_back(std::move(process));
    }
    return programs;
}

BadgedProgramsWatch::BadgedProgramsWatch(MainLoop &mainLoop, MessageBus &sessionBus, DesktopCatalogue &applications,
                                         std::function<void(BadgedPrograms)> callback)
    : loop(mainLoop), catalogue(applications), changed(std::move(callback)),
      badges(loop, sessionBus, [this] { tell(); })
{
    installed = catalogue.observe([this] {
        if (!waiting)
            waiting = loop.after(installingTime, [this] { tell(); });
    });
}

void BadgedProgramsWatch::tell()
{
    waiting.reset();
    changed(badgedPrograms(badges.labels(), badges.processes(),
                           [this](std::string_view identifier) { return catalogue.withIdentifier(identifier); }));
}

}  // namespace korvane::platform
