#include "Platform/X11/X11Screens.h"

#include "Platform/X11/Reply.h"

#include <algorithm>
#include <cmath>
#include <xcb/randr.h>

namespace korvane::platform {
namespace {

// While a monitor is being added, it lies over another one for a moment.
constexpr Seconds quietTime{0.05};

}  // namespace

X11Screens::X11Screens(x11::Connection &server, x11::PropertyMirror &windows, MainLoop &mainLoop, double pixelsToPoint)
    : connection(server), mirror(windows), loop(mainLoop), scale(pixelsToPoint > 0 ? pixelsToPoint : 1)
{
    connection.join(*this);
    if (connection.extensions().monitorEvent)
        xcb_randr_select_input(connection, connection.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE
                                   | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    // Monitors that a user defines are reported as a change of the root window's size.
    connection.watchRoot(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    monitors = x11::readMonitors(connection);
}

X11Screens::~X11Screens()
{
    connection.leave(*this);
}

std::vector<Screen> X11Screens::all()
{
    std::vector<Screen> screens;
    for (const x11::Monitor &monitor : monitors)
        screens.push_back(space().screen(monitor));
    return screens;
}

Rect X11Screens::displayBounds(std::uint32_t number)
{
    const auto known = std::find_if(monitors.begin(), monitors.end(),
                                    [number](const x11::Monitor &monitor) { return monitor.name == number; });
    return known == monitors.end() ? Rect{} : space().displayBounds(*known);
}

std::optional<std::size_t> X11Screens::main()
{
    if (monitors.empty())
        return std::nullopt;
    if (const auto active = screenOfActiveWindow())
        return active;
    const x11::Reply<xcb_query_pointer_reply_t> pointer{
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, connection.root()), nullptr)};
    const auto pointed = pointer ? screenAt(pointer->root_x, pointer->root_y) : std::nullopt;
    return pointed.value_or(0);
}

std::optional<std::size_t> X11Screens::screenAt(int x, int y) const
{
    const auto found = std::find_if(monitors.begin(), monitors.end(),
                                    [x, y](const x11::Monitor &monitor) { return monitor.contains(x, y); });
    return found == monitors.end() ? std::nullopt : std::optional<std::size_t>(found - monitors.begin());
}

// The middle of the window decides. A minimised window is on no screen.
std::optional<std::size_t> X11Screens::screenOfActiveWindow()
{
    const x11::WindowRecord *window = mirror.find(mirror.active());
    if (!window || window->minimized || window->kind != x11::WindowKind::ordinary)
        return std::nullopt;
    const auto sizeCookie = xcb_get_geometry(connection, window->id);
    const auto placeCookie = xcb_translate_coordinates(connection, window->id, connection.root(), 0, 0);
    const x11::Reply<xcb_get_geometry_reply_t> size{xcb_get_geometry_reply(connection, sizeCookie, nullptr)};
    const x11::Reply<xcb_translate_coordinates_reply_t> place{
        xcb_translate_coordinates_reply(connection, placeCookie, nullptr)};
    if (!size || !place)
        return std::nullopt;
    return screenAt(place->dst_x + size->width / 2, place->dst_y + size->height / 2);
}

std::optional<X11Screens::BottomStrip> X11Screens::bottomStrip(const Rect &strip) const
{
    const auto on = std::find_if(monitors.begin(), monitors.end(), [&](const x11::Monitor &monitor) {
        const Rect frame = space().screen(monitor).frame;
        return frame.x == strip.x && frame.y == strip.y && frame.width == strip.width;
    });
    if (on == monitors.end())
        return std::nullopt;
    const auto liesBelow = [&](const x11::Monitor &monitor) {
        return monitor.y >= on->y + on->height && monitor.x < on->x + on->width && on->x < monitor.x + monitor.width;
    };
    const x11::Reply<xcb_get_geometry_reply_t> whole{
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, connection.root()), nullptr)};
    if (!whole || std::any_of(monitors.begin(), monitors.end(), liesBelow))
        return std::nullopt;
    const int below = std::max(0, whole->height - (on->y + on->height));
    return BottomStrip{static_cast<std::uint32_t>(below + std::lround(strip.height * scale)),
                       static_cast<std::uint32_t>(std::max(0, on->x)),
                       static_cast<std::uint32_t>(std::max(0, on->x + on->width - 1))};
}

Subscription X11Screens::observeChanges(std::function<void()> callback)
{
    return observers.add(std::move(callback));
}

void X11Screens::handle(const xcb_generic_event_t &event)
{
    const int first = connection.extensions().monitorEvent;
    const bool monitorsChanged = first != 0
                                 && (x11::typeOf(event) == first + XCB_RANDR_SCREEN_CHANGE_NOTIFY
                                     || x11::typeOf(event) == first + XCB_RANDR_NOTIFY);
    const bool rootChanged =
        x11::typeOf(event) == XCB_CONFIGURE_NOTIFY
        && reinterpret_cast<const xcb_configure_notify_event_t &>(event).window == connection.root();
    if (monitorsChanged || rootChanged)
        rest = loop.after(quietTime, [this] { readAgain(); });
}

void X11Screens::readAgain()
{
    auto now = x11::readMonitors(connection);
    if (now == monitors)
        return;
    monitors = std::move(now);
    observers.notify();
}

Point X11Pointer::location()
{
    const x11::Reply<xcb_query_pointer_reply_t> reply{
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, connection.root()), nullptr)};
    return reply ? screens.space().location(reply->root_x, reply->root_y) : Point{};
}

void X11Pointer::warp(Point display)
{
    const auto [x, y] = screens.space().pixel(display);
    xcb_warp_pointer(connection, XCB_NONE, connection.root(), 0, 0, 0, 0, static_cast<std::int16_t>(x),
                     static_cast<std::int16_t>(y));
    xcb_flush(connection);
}

}  // namespace korvane::platform
