#include "Platform/X11/X11Panels.h"

#include "Platform/X11/Reply.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

namespace korvane::platform {

using x11::Atom;

X11Panels::X11Panels(x11::Connection &server, X11Screens &all, xcb_connection_t *viewConnection)
    : connection(server), screens(all),
      views(viewConnection ? viewConnection : static_cast<xcb_connection_t *>(server)),
      compositorSelection(server.intern("_NET_WM_CM_S" + std::to_string(server.screenNumber())))
{
    connection.join(*this);
    // It listens before it asks, so that a new owner in between is not missed.
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
    shown.erase(view);
    const auto write = [&](Atom property, xcb_atom_t type, std::initializer_list<std::uint32_t> values) {
        xcb_change_property(views, XCB_PROP_MODE_REPLACE, window, connection[property], type, 32,
                            static_cast<std::uint32_t>(values.size()), values.begin());
    };
    // A dock never gets the focus, so a window that needs the keyboard stays an ordinary one.
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
    // The manager treats this as a request and keeps the window in its layer.
    xcb_configure_window(views, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(views);
}

void X11Panels::makeKeyAndOrderFront(NativeView view)
{
    orderFrontRegardless(view);
    // A manager that protects the focus still gives it to a pager's request.
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

void X11Panels::setShape(NativeView view, const PanelShape &shape)
{
    std::vector<xcb_rectangle_t> pixels;
    const double scale = screens.pixelsToPoint();
    for (const Rect &part : shape) {
        // Rounded outwards, so that no drawn part is cut off.
        const double left = std::floor(part.x * scale), top = std::floor(part.y * scale);
        pixels.push_back({static_cast<std::int16_t>(left), static_cast<std::int16_t>(top),
                          static_cast<std::uint16_t>(std::ceil((part.x + part.width) * scale) - left),
                          static_cast<std::uint16_t>(std::ceil((part.y + part.height) * scale) - top)});
    }
    shown[view].shape = std::move(pixels);
    applyShape(view);
}

void X11Panels::setIgnoresMouse(NativeView view, bool ignores)
{
    shown[view].ignoresMouse = ignores;
    applyShape(view);
}

void X11Panels::applyShape(NativeView view)
{
    const auto window = static_cast<xcb_window_t>(view);
    const Shown &state = shown[view];
    if (!state.ignoresMouse && !state.shape) {
        xcb_shape_mask(views, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0, 0, XCB_NONE);
    } else {
        static const std::vector<xcb_rectangle_t> nothing;
        const auto &parts = state.ignoresMouse ? nothing : *state.shape;
        xcb_shape_rectangles(views, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
                             static_cast<std::uint32_t>(parts.size()), parts.data());
    }
    xcb_flush(views);
}

void X11Panels::reserveStrip(NativeView view, const std::optional<Rect> &strip)
{
    const auto window = static_cast<xcb_window_t>(view);
    const auto pixels = strip ? screens.bottomStrip(*strip) : std::nullopt;
    if (!pixels) {
        xcb_delete_property(views, window, connection[Atom::netWmStrutPartial]);
        xcb_delete_property(views, window, connection[Atom::netWmStrut]);
        xcb_flush(views);
        return;
    }
    // The first four values are left, right, top and bottom. Then come the start and the end of each.
    const std::array<std::uint32_t, 12> partial{0, 0, 0, pixels->height, 0, 0, 0, 0, 0, 0, pixels->left, pixels->right};
    xcb_change_property(views, XCB_PROP_MODE_REPLACE, window, connection[Atom::netWmStrutPartial], XCB_ATOM_CARDINAL,
                        32, 12, partial.data());
    xcb_change_property(views, XCB_PROP_MODE_REPLACE, window, connection[Atom::netWmStrut], XCB_ATOM_CARDINAL, 32, 4,
                        partial.data());
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
        observers.notify();
}

}  // namespace korvane::platform
