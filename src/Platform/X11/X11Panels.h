// Panels by the properties that window managers know, and whether a compositor lets the desktop be seen through them.
#pragma once

#include "Platform/Panels.h"
#include "Platform/X11/Callbacks.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/WindowRecord.h"

namespace korvane::platform {

class X11Panels final : public Panels, private x11::EventListener {
public:
    // The views' windows are spoken of on the views' connection, so that the requests stay in order with those that
    // make and show them. Null when the windows are the backend's own.
    X11Panels(x11::Connection &connection, xcb_connection_t *views);
    ~X11Panels() override;

    void apply(NativeView view, const PanelTraits &traits) override;
    void orderFrontRegardless(NativeView view) override;
    void makeKeyAndOrderFront(NativeView view) override;
    bool translucencyAvailable() override { return compositor != XCB_NONE; }

    [[nodiscard]] Subscription observeTranslucency(std::function<void()> callback) override;

private:
    void handle(const xcb_generic_event_t &event) override;

    x11::Connection &connection;
    xcb_connection_t *views;
    xcb_atom_t compositorSelection;
    xcb_window_t compositor = XCB_NONE;
    x11::Callbacks<> observers;
};

}  // namespace korvane::platform
