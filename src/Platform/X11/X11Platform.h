// The desktop on X11: the ports that it implements, over one connection and one mirror of the windows.
#pragma once

#include "Platform/Linux/ApplicationCatalogue.h"
#include "Platform/Linux/BadgedPrograms.h"
#include "Ports/Accessibility.h"
#include "Ports/Applications.h"
#include "Ports/Events.h"
#include "Ports/HotKeys.h"
#include "Ports/MainLoop.h"
#include "Ports/Panels.h"
#include "Ports/Pointer.h"
#include "Ports/Screens.h"
#include "Ports/WindowList.h"

#include <functional>
#include <memory>
#include <string>

struct xcb_connection_t;

namespace korvane::platform {

struct X11Options {
    std::string display;  // empty: the display in the environment
    double scale = 1;     // pixels of the device to a point
    // The view toolkit's own connection, on which its windows are made and shown; null when there is none.
    xcb_connection_t *views = nullptr;
};

class X11Platform {
public:
    // Null when the display can't be opened. All arguments must outlive the platform. Needs a run loop that serves
    // GLib's default context. When the server goes away, the loop is told to end.
    static std::unique_ptr<X11Platform> open(const X11Options &options, MainLoop &loop, ApplicationCatalogue &catalogue,
                                             IconLoader loadIcon);
    ~X11Platform();
    X11Platform(const X11Platform &) = delete;
    X11Platform &operator=(const X11Platform &) = delete;

    Applications &applications();
    Accessibility &accessibility();
    WindowList &windowList();
    Screens &screens();
    Pointer &pointer();
    Events &events();
    Panels &panels();
    HotKeys &hotKeys();

    // Replaces the earlier programs and tells the observers of applications about any difference. Call it from the run
    // loop only.
    void setBadgedPrograms(BadgedPrograms programs);
    // Tells the observers of the session about events from other services of the system. Call it from the run loop
    // only.
    void announce(SessionEvent event);

private:
    struct Parts;
    explicit X11Platform(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts;
};

}  // namespace korvane::platform
