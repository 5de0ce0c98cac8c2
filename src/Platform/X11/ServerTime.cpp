#include "Platform/X11/ServerTime.h"

#include <utility>

namespace korvane::platform::x11 {
namespace {

// The server's event may never come, for example when another program destroys our window.
constexpr Seconds longestWait{0.3};

}  // namespace

ServerTime::ServerTime(Connection &server, MainLoop &mainLoop) : connection(server), loop(mainLoop)
{
    connection.join(*this);
}

ServerTime::~ServerTime()
{
    connection.leave(*this);
}

void ServerTime::ask(std::function<void(xcb_timestamp_t)> use)
{
    waiting.push_back(std::move(use));
    if (waiting.size() > 1)
        return;
    // Appending nothing changes nothing, but the server still reports it with the time.
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, connection.ownWindow(), connection[Atom::serverTime],
                        XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(connection);
    limit = loop.after(longestWait, [this] { answer(XCB_CURRENT_TIME); });
}

void ServerTime::answer(xcb_timestamp_t time)
{
    limit.reset();
    for (const auto &use : std::exchange(waiting, {}))
        use(time);
}

void ServerTime::handle(const xcb_generic_event_t &event)
{
    if (typeOf(event) != XCB_PROPERTY_NOTIFY)
        return;
    const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
    if (change.window != connection.ownWindow() || change.atom != connection[Atom::serverTime])
        return;
    answer(change.time);
}

}  // namespace korvane::platform::x11
