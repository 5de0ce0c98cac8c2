// Panels by the properties that window managers know, and whether a compositor lets the desktop be seen through them.
#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/WindowRecord.h"
#include "Platform/X11/X11Screens.h"
#include "Ports/ObserverList.h"
#include "Ports/Panels.h"

#include <map>
#include <optional>
#include <vector>

namespace korvane::platform {

class X11Panels final : public Panels, private x11::EventListener {
public:
    // The views' windows are spoken of on the views' connection, so that the requests stay in order with those that
    // make and show them. Null when the windows are the backend's own.
    X11Panels(x11::Connection &connection, X11Screens &screens, xcb_connection_t *views);
    ~X11Panels() override;

    void apply(NativeView view, const PanelTraits &traits) override;
    void orderFrontRegardless(NativeView view) override;
    void makeKeyAndOrderFront(NativeView view) override;
    void setShape(NativeView view, const PanelShape &shape) override;
    // By the bounding shape, which alone hides a window and lets clicks through with and without a compositor, and
    // costs the window none of what the manager knows of it.
    void setIgnoresMouse(NativeView view, bool ignores) override;
    void reserveStrip(NativeView view, const std::optional<Rect> &strip) override;
    bool translucencyAvailable() override { return compositor != XCB_NONE; }

    [[nodiscard]] Subscription observeTranslucency(std::function<void()> callback) override;

private:
    struct Shown {
        std::optional<std::vector<xcb_rectangle_t>> shape;  // absent: all of it
        bool ignoresMouse = false;
    };

    void handle(const xcb_generic_event_t &event) override;
    void applyShape(NativeView view);

    x11::Connection &connection;
    X11Screens &screens;
    xcb_connection_t *views;
    std::map<NativeView, Shown> shown;
    xcb_atom_t compositorSelection;
    xcb_window_t compositor = XCB_NONE;
    ObserverList<> observers;
};

}  // namespace korvane::platform
