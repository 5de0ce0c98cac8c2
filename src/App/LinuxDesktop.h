// The platform of a Linux desktop: it says which backend implements which port.
#pragma once

#include "Platform/Icu/IcuText.h"
#include "Platform/Linux/Backlight.h"
#include "Platform/Linux/BadgedPrograms.h"
#include "Platform/Linux/DesktopCatalogue.h"
#include "Platform/Linux/GioLaunching.h"
#include "Platform/Linux/IconTheme.h"
#include "Platform/Linux/LoginSession.h"
#include "Platform/Linux/MessageBus.h"
#include "Platform/Linux/PropertyListDefaults.h"
#include "Platform/Linux/PulseAudio.h"
#include "Platform/Linux/XdgLoginItem.h"
#include "Platform/Qt/QtDialogs.h"
#include "Platform/Qt/QtIcons.h"
#include "Platform/Qt/QtMainLoop.h"
#include "Platform/X11/X11Platform.h"
#include "Ports/Platform.h"

#include <memory>
#include <string>

namespace korvane {

class LinuxDesktop {
public:
    // Null when the display can't be opened. Needs a running QApplication.
    static std::unique_ptr<LinuxDesktop> open(const std::string &display);

    platform::Platform platform();
    platform::X11Platform &x11() { return *windows; }
    platform::LoginItem &loginItem() { return login; }

private:
    LinuxDesktop();
    platform::ImagePtr loadIcon(std::string_view name);

    platform::QtMainLoop loop;
    platform::MessageBus sessionBus, systemBus;
    platform::PropertyListDefaults defaults;
    platform::XdgLoginItem login;
    platform::DesktopCatalogue catalogue;
    platform::GioLaunching launching;
    platform::IcuText text;
    platform::QtIcons icons;
    platform::PulseAudio audio;
    platform::Backlight brightness;
    std::unique_ptr<platform::IconTheme> theme;  // made when the first icon is needed
    std::unique_ptr<platform::X11Platform> windows;
    std::unique_ptr<platform::BadgedProgramsWatch> badges;
    std::unique_ptr<platform::LoginSession> session;
    std::unique_ptr<platform::QtDialogs> dialogs;
};

}  // namespace korvane
