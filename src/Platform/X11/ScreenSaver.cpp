#include "Platform/X11/ScreenSaver.h"

#include <utility>
#include <xcb/screensaver.h>

namespace korvane::platform::x11 {

ScreenSaver::ScreenSaver(Connection &server, std::function<void(bool)> observer)
    : connection(server), changed(std::move(observer))
{
    connection.join(*this);
    if (connection.extensions().saverEvent)
        xcb_screensaver_select_input(connection, connection.root(), XCB_SCREENSAVER_EVENT_NOTIFY_MASK);
}

ScreenSaver::~ScreenSaver()
{
    connection.leave(*this);
}

void ScreenSaver::handle(const xcb_generic_event_t &event)
{
    if (connection.extensions().saverEvent == 0 || typeOf(event) != connection.extensions().saverEvent)
        return;
    const auto &change = reinterpret_cast<const xcb_screensaver_notify_event_t &>(event);
    const bool now = change.state == XCB_SCREENSAVER_STATE_ON || change.state == XCB_SCREENSAVER_STATE_CYCLE;
    if (std::exchange(running, now) != now)
        changed(now);
}

}  // namespace korvane::platform::x11
