#include "Platform/X11/X11Platform.h"

#include "Platform/X11/ScreenSaver.h"
#include "Platform/X11/X11Accessibility.h"
#include "Platform/X11/X11Applications.h"
#include "Platform/X11/X11Events.h"
#include "Platform/X11/X11HotKeys.h"
#include "Platform/X11/X11Panels.h"
#include "Platform/X11/X11Screens.h"
#include "Platform/X11/X11WindowList.h"

#include <utility>

namespace korvane::platform {

struct X11Platform::Parts {
    Parts(std::unique_ptr<x11::Connection> opened, const X11Options &options, MainLoop &loop,
          ApplicationCatalogue &catalogue, IconLoader loadIcon)
        : connection(std::move(opened)), mirror(*connection, loop), filled((mirror.fill(), true)),
          time(*connection, loop), table(mirror, catalogue), actions(*connection, mirror, table, time),
          applications(*connection, mirror, table, actions, std::move(loadIcon), loop),
          accessibility(mirror, table, actions), windowList(mirror), screens(*connection, mirror, loop, options.scale),
          pointer(*connection, screens), events(*connection), panels(*connection, screens, options.views),
          hotKeys(*connection, loop), saver(*connection, [this](bool started) {
              applications.announce(started ? SessionEvent::screensaverStarted : SessionEvent::screensaverStopped);
          })
    {}

    std::unique_ptr<x11::Connection> connection;
    x11::PropertyMirror mirror;
    bool filled;  // the mirror is filled before any part uses it
    x11::ServerTime time;
    x11::ApplicationTable table;
    x11::WindowActions actions;
    X11Applications applications;
    X11Accessibility accessibility;
    X11WindowList windowList;
    X11Screens screens;
    X11Pointer pointer;
    X11Events events;
    X11Panels panels;
    X11HotKeys hotKeys;
    x11::ScreenSaver saver;
};

std::unique_ptr<X11Platform> X11Platform::open(const X11Options &options, MainLoop &loop,
                                               ApplicationCatalogue &catalogue, IconLoader loadIcon)
{
    auto connection = x11::Connection::open(options.display, loop);
    if (!connection)
        return nullptr;
    return std::unique_ptr<X11Platform>(
        new X11Platform(std::make_unique<Parts>(std::move(connection), options, loop, catalogue, std::move(loadIcon))));
}

X11Platform::X11Platform(std::unique_ptr<Parts> made) : parts(std::move(made)) {}

X11Platform::~X11Platform() = default;

Applications &X11Platform::applications()
{
    return parts->applications;
}

Accessibility &X11Platform::accessibility()
{
    return parts->accessibility;
}

WindowList &X11Platform::windowList()
{
    return parts->windowList;
}

Screens &X11Platform::screens()
{
    return parts->screens;
}

Pointer &X11Platform::pointer()
{
    return parts->pointer;
}

Events &X11Platform::events()
{
    return parts->events;
}

Panels &X11Platform::panels()
{
    return parts->panels;
}

HotKeys &X11Platform::hotKeys()
{
    return parts->hotKeys;
}

void X11Platform::setBadgedPrograms(BadgedPrograms programs)
{
    const bool relabelled = parts->accessibility.setLauncherBadges(std::move(programs.labels));
    const auto event = parts->table.setBadged(std::move(programs.processes));
    if (event || relabelled)
        parts->applications.announce(event.value_or(ApplicationEvent::activated));
}

void X11Platform::announce(SessionEvent event)
{
    parts->applications.announce(event);
}

}  // namespace korvane::platform
