#include "App/Startup.h"

#include <algorithm>
#include <cstdlib>
#include <xcb/xcb.h>

namespace korvane {
namespace {

bool isSet(const char *text)
{
    return text && *text != '\0';
}

// The same name for every way to write one display (":0", ":0.0").
std::string lockName(const std::string &display)
{
    std::string place = display;
    char *host = nullptr;
    int number = 0;
    if (xcb_parse_display(display.c_str(), &host, &number, nullptr) != 0) {
        place = std::string(host) + '-' + std::to_string(number);
        std::free(host);
    }
    std::replace_if(
        place.begin(), place.end(), [](char letter) { return letter == '/' || letter == ':'; }, '_');
    constexpr std::size_t longest = 200;
    return "display-" + place.substr(0, longest) + ".lock";
}

}  // namespace

std::optional<Refusal> refusalBeforeStart(int argumentCount, const char *display, const char *waylandDisplay)
{
    if (argumentCount > 1)
        return Refusal{"korvane: takes no options; everything is set in its settings panel", 2};
    if (isSet(display))
        return std::nullopt;
    if (isSet(waylandDisplay))
        return Refusal{"korvane: this is a Wayland session without X11; Korvane needs an X11 session", 1};
    return Refusal{"korvane: no display; start it inside an X11 session", 1};
}

bool canOpenDisplay(const std::string &display)
{
    xcb_connection_t *connection = xcb_connect(display.c_str(), nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

SingleInstance::SingleInstance(const std::string &displayName) : display(displayName) {}

std::optional<Refusal> SingleInstance::claim(const std::vector<std::filesystem::path> &folders)
{
    using Outcome = platform::InstanceLock::Outcome;
    switch (lock.take(folders, lockName(display))) {
    case Outcome::heldByOther:
        return Refusal{"korvane: already running on display " + display, 0};
    case Outcome::obstructed:
        return Refusal{"korvane: " + lock.obstacle().string()
                           + " belongs to somebody else or is no file of ours; it has to go before Korvane can start",
                       1};
    case Outcome::taken:
    case Outcome::unavailable:
        break;
    }
    return std::nullopt;
}

}  // namespace korvane
