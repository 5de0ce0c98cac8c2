#include "Platform/Linux/ApplicationRoles.h"

#include <algorithm>
#include <array>

namespace korvane::platform {
namespace {

constexpr std::array roles = {
    ApplicationRole{"com.apple.finder", "inode/directory", "", "", "FileManager"},
    ApplicationRole{"com.apple.Safari", "x-scheme-handler/https;x-scheme-handler/http;text/html", "x-www-browser", "",
                    "WebBrowser"},
    ApplicationRole{"com.apple.Terminal", "x-scheme-handler/terminal", "x-terminal-emulator",
                    "org.gnome.Terminal;org.gnome.Console;org.kde.konsole;xfce4-terminal;mate-terminal;lxterminal;"
                    "qterminal;debian-xterm",
                    "TerminalEmulator"},
    ApplicationRole{"com.apple.TextEdit", "text/plain", "", "", "TextEditor"},
    ApplicationRole{"com.apple.mail", "x-scheme-handler/mailto", "", "", "Email"},
    ApplicationRole{"com.apple.ActivityMonitor", "", "",
                    "org.gnome.SystemMonitor;gnome-system-monitor;org.kde.plasma-systemmonitor;org.kde.ksysguard;"
                    "xfce4-taskmanager;mate-system-monitor;lxtask;qps;htop",
                    "Monitor"},
    ApplicationRole{"com.apple.calculator", "", "",
                    "org.gnome.Calculator;org.kde.kcalc;mate-calc;galculator;qalculate-gtk;xcalc", "Calculator"},
    ApplicationRole{"com.apple.iCal", "text/calendar", "", "org.gnome.Calendar;org.kde.korganizer", "Calendar"},
    ApplicationRole{"com.apple.Notes", "", "", "org.gnome.Notes;gnote;org.gnome.Gnote;tomboy;xfce4-notes;xpad;zim", ""},
    ApplicationRole{"com.apple.Photos", "", "",
                    "org.gnome.Shotwell;org.gnome.Photos;org.kde.gwenview;org.gnome.gThumb;org.xfce.ristretto;"
                    "org.gnome.eog;eom;lximage-qt;gpicview",
                    "Photography"},
    ApplicationRole{"com.apple.FaceTime", "", "", "", "VideoConference"},
    ApplicationRole{"com.apple.MobileSMS", "x-scheme-handler/sms", "", "", "InstantMessaging"},
    ApplicationRole{"com.apple.clock", "", "", "org.gnome.clocks;org.kde.kclock;mate-time-admin", "Clock"},
    ApplicationRole{"com.apple.systempreferences", "", "",
                    "gnome-control-center;org.gnome.Settings;systemsettings;kdesystemsettings;"
                    "xfce-settings-manager;matecc;lxqt-config;obconf",
                    ""},
};

}  // namespace

std::span<const ApplicationRole> applicationRoles()
{
    return roles;
}

const ApplicationRole *findApplicationRole(std::string_view identifier)
{
    const auto found = std::find_if(roles.begin(), roles.end(),
                                    [&](const ApplicationRole &role) { return role.identifier == identifier; });
    return found != roles.end() ? &*found : nullptr;
}

}  // namespace korvane::platform
