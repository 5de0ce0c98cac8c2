#include "Platform/X11/X11Panels.h"

#include "Platform/X11/Reply.h"

#include <xcb/xfixes.h>

namespace korvane::platform {

using x11::Atom;

X11Panels::X11Panels(x11::Connection &server, xcb_connection_t *viewConnection)
    : connection(server), views(viewConnection ? viewConnection : static_cast<xcb_connection_t *>(server)),
      compositorSelection(server.intern("_NET_WM_CM_S" + std::to_string(server.screenNumber())))
{
    connection.join(*this);
    // Listening first: an owner that comes in between is then seen by one of the two.
    if (connection.extensions().selectionEvent)
        xcb_xfixes_select_selection_input(connection, connection.ownWindow(), compositorSelection,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                                              | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                                              | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const x11::Reply<xcb_get_selection_owner_reply_t> owner{
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, compositorSelection), nullptr)};
    compositor = owner ? owner->owner : static_cast<xcb_window_t>(XCB_NONE);
}

X11Panels::~X11Panels()
{
    connection.leave(*this);
}

void X11Panels::apply(NativeView view, const PanelTraits &traits)
{
    const auto window = static_cast<xcb_window_t>(view);
    const auto write = [&](Atom property, xcb_atom_t type, std::initializer_list<std::uint32_t> values) {
        xcb_change_property(views, XCB_PROP_MODE_REPLACE, window, connection[property], type, 32,
                            static_cast<std::uint32_t>(values.size()), values.begin());
    };
    // A dock never gets the focus, so what wants the keyboard stays an ordinary window.
    if (traits.nonActivating && !traits.canBecomeKey)
        write(Atom::netWmWindowType, XCB_ATOM_ATOM, {connection[Atom::netWmWindowTypeDock]});
    if (traits.allSpaces)
        write(Atom::netWmDesktop, XCB_ATOM_CARDINAL, {x11::everyDesktop});
    write(Atom::netWmState, XCB_ATOM_ATOM,
          {connection[Atom::netWmStateAbove], connection[Atom::netWmStateSkipTaskbar],
           connection[Atom::netWmStateSkipPager]});
    xcb_flush(views);
}

void X11Panels::orderFrontRegardless(NativeView view)
{
    const auto window = static_cast<xcb_window_t>(view);
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    // The manager takes this for a request and keeps to the window's layer.
    xcb_configure_window(views, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(views);
}

void X11Panels::makeKeyAndOrderFront(NativeView view)
{
    orderFrontRegardless(view);
    // A manager that guards the focus lets a pager have it.
    constexpr std::uint32_t sourceIsPager = 2;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = static_cast<xcb_window_t>(view);
    event.type = connection[Atom::netActiveWindow];
    event.data.data32[0] = sourceIsPager;
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(views, 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(views);
}

Subscription X11Panels::observeTranslucency(std::function<void()> callback)
{
    return observers.add(std::move(callback));
}

void X11Panels::handle(const xcb_generic_event_t &event)
{
    if (connection.extensions().selectionEvent == 0 || x11::typeOf(event) != connection.extensions().selectionEvent)
        return;
    const auto &change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(event);
    if (change.selection != compositorSelection)
        return;
    const bool before = translucencyAvailable();
    compositor = change.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER ? change.owner
                                                                                  : static_cast<xcb_window_t>(XCB_NONE);
    if (before != translucencyAvailable())
        observers.call();
}

}  // namespace korvane::platform
