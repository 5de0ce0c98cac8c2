#include "Platform/X11/Connection.h"

#include "Platform/X11/Reply.h"

#include <algorithm>
#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/screensaver.h>
#include <xcb/xfixes.h>

namespace korvane::platform::x11 {
namespace {

xcb_screen_t *screenOf(xcb_connection_t *connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0; xcb_screen_next(&screens))
        if (number-- == 0)
            return screens.data;
    return nullptr;
}

}  // namespace

std::unique_ptr<Connection> Connection::open(const std::string &display, MainLoop &loop)
{
    int number = 0;
    auto *handle = xcb_connect(display.empty() ? nullptr : display.c_str(), &number);
    if (xcb_connection_has_error(handle) || !screenOf(handle, number)) {
        xcb_disconnect(handle);
        return nullptr;
    }
    return std::unique_ptr<Connection>(new Connection(handle, number, loop));
}

Connection::Connection(xcb_connection_t *connection, int screenNumber, MainLoop &mainLoop)
    : handle(connection), number(screenNumber), loop(mainLoop), screen(screenOf(connection, screenNumber))
{
    window = xcb_generate_id(handle);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(handle, 0, window, screen->root, -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    internAtoms();
    findExtensions();
    source = std::make_unique<EventSource>(
        handle, EventSource::Calls{[this](const xcb_generic_event_t &event) { handleEvent(event); },
                                   [this] {
                                       for (std::size_t i = 0; i < listeners.size(); ++i)
                                           listeners[i]->settle();
                                   },
                                   [this] { loop.terminate(); }});
}

Connection::~Connection()
{
    source.reset();
    xcb_disconnect(handle);
}

void Connection::internAtoms()
{
    std::array<xcb_intern_atom_cookie_t, atomCount> cookies{};
    for (std::size_t i = 0; i < atomCount; ++i) {
        const auto name = atomName(static_cast<Atom>(i));
        cookies[i] = xcb_intern_atom(handle, 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    std::array<std::uint32_t, atomCount> numbers{};
    for (std::size_t i = 0; i < atomCount; ++i)
        if (const Reply<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(handle, cookies[i], nullptr)})
            numbers[i] = reply->atom;
    known = Atoms(numbers);
}

void Connection::findExtensions()
{
    const auto *resources = xcb_get_extension_data(handle, &xcb_res_id);
    const auto *fixes = xcb_get_extension_data(handle, &xcb_xfixes_id);
    const auto *monitors = xcb_get_extension_data(handle, &xcb_randr_id);
    const auto *saver = xcb_get_extension_data(handle, &xcb_screensaver_id);
    const auto present = [](const xcb_query_extension_reply_t *extension) { return extension && extension->present; };
    // The server answers requests of an extension only after the client has told its version.
    if (present(resources)) {
        const Reply<xcb_res_query_version_reply_t> version{
            xcb_res_query_version_reply(handle, xcb_res_query_version(handle, 1, 2), nullptr)};
        found.clientIds = version && (version->server_major > 1 || version->server_minor >= 2);
    }
    if (present(fixes)) {
        const Reply<xcb_xfixes_query_version_reply_t> version{
            xcb_xfixes_query_version_reply(handle, xcb_xfixes_query_version(handle, 4, 0), nullptr)};
        if (version)
            found.selectionEvent = static_cast<std::uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    }
    if (present(monitors)) {
        const Reply<xcb_randr_query_version_reply_t> version{
            xcb_randr_query_version_reply(handle, xcb_randr_query_version(handle, 1, 5), nullptr)};
        if (version && (version->major_version > 1 || version->minor_version >= 5))
            found.monitorEvent = monitors->first_event;
    }
    if (present(saver))
        found.saverEvent = static_cast<std::uint8_t>(saver->first_event + XCB_SCREENSAVER_NOTIFY);
}

xcb_atom_t Connection::intern(const std::string &name)
{
    const Reply<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(
        handle, xcb_intern_atom(handle, 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr)};
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void Connection::handleEvent(const xcb_generic_event_t &event)
{
    // Type 0 is the error of a request without a reply: its window was destroyed in the meantime.
    if (typeOf(event) == 0)
        return;
    for (std::size_t i = 0; i < listeners.size(); ++i)
        listeners[i]->handle(event);
}

void Connection::join(EventListener &listener)
{
    listeners.push_back(&listener);
}

void Connection::leave(EventListener &listener)
{
    std::erase(listeners, &listener);
}

void Connection::tellManager(xcb_window_t about, Atom message, const std::array<std::uint32_t, 5> &data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = about;
    event.type = known[message];
    std::copy(data.begin(), data.end(), event.data.data32);
    xcb_send_event(handle, 0, root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
}

void Connection::watchRoot(std::uint32_t mask)
{
    rootMask |= mask;
    xcb_change_window_attributes(handle, root(), XCB_CW_EVENT_MASK, &rootMask);
}

void Connection::unwatchRoot(std::uint32_t mask)
{
    rootMask &= ~mask;
    xcb_change_window_attributes(handle, root(), XCB_CW_EVENT_MASK, &rootMask);
}

void Connection::finish()
{
    const Reply<xcb_get_input_focus_reply_t> reply{
        xcb_get_input_focus_reply(handle, xcb_get_input_focus(handle), nullptr)};
}

}  // namespace korvane::platform::x11
