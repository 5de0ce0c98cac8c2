#include "Platform/X11/MonitorList.h"

#include "Platform/X11/Reply.h"

#include <algorithm>
#include <cmath>
#include <xcb/randr.h>

namespace korvane::platform::x11 {

std::vector<Monitor> arranged(std::vector<Monitor> monitors)
{
    std::erase_if(monitors, [](const Monitor &monitor) { return monitor.width <= 0 || monitor.height <= 0; });
    std::stable_partition(monitors.begin(), monitors.end(), [](const Monitor &monitor) { return monitor.primary; });
    return monitors;
}

std::vector<Monitor> readMonitors(Connection &connection)
{
    if (!connection.extensions().monitorEvent) {
        const Reply<xcb_get_geometry_reply_t> whole{
            xcb_get_geometry_reply(connection, xcb_get_geometry(connection, connection.root()), nullptr)};
        return whole ? arranged({{1, 0, 0, whole->width, whole->height, true}}) : std::vector<Monitor>();
    }
    const Reply<xcb_randr_get_monitors_reply_t> reply{
        xcb_randr_get_monitors_reply(connection, xcb_randr_get_monitors(connection, connection.root(), 1), nullptr)};
    std::vector<Monitor> monitors;
    if (!reply)
        return monitors;
    for (auto all = xcb_randr_get_monitors_monitors_iterator(reply.get()); all.rem > 0;
         xcb_randr_monitor_info_next(&all))
        monitors.push_back(
            {all.data->name, all.data->x, all.data->y, all.data->width, all.data->height, all.data->primary != 0});
    return arranged(std::move(monitors));
}

DesktopSpace::DesktopSpace(const std::vector<Monitor> &monitors, double pixelsToPoint)
    : first(monitors.empty() ? Monitor{} : monitors.front()), scale(pixelsToPoint)
{}

Screen DesktopSpace::screen(const Monitor &monitor) const
{
    const double bottom = first.y + first.height - (monitor.y + monitor.height);
    return {monitor.name,
            {(monitor.x - first.x) / scale, bottom / scale, monitor.width / scale, monitor.height / scale},
            scale};
}

Rect DesktopSpace::displayBounds(const Monitor &monitor) const
{
    return {(monitor.x - first.x) / scale, (monitor.y - first.y) / scale, monitor.width / scale,
            monitor.height / scale};
}

Point DesktopSpace::location(int x, int y) const
{
    return {(x - first.x) / scale, (first.y + first.height - 1 - y) / scale};
}

std::pair<int, int> DesktopSpace::pixel(Point display) const
{
    // A place far outside of any server's range would overflow the request's field.
    const auto bounded = [](double value) {
        return static_cast<int>(std::clamp(std::floor(value), -32768.0, 32767.0));
    };
    return {bounded(first.x + display.x * scale), bounded(first.y + display.y * scale)};
}

}  // namespace korvane::platform::x11
