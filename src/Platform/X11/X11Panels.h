// Panels, made with the properties that window managers know. Also tells whether a compositor makes panels translucent.
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
    // Requests about the views' windows are sent on the views' connection. So they stay in order with the requests that
    // make and show these windows. `views` is null when the windows are the backend's own.
    X11Panels(x11::Connection &connection, X11Screens &screens, xcb_connection_t *views);
    ~X11Panels() override;

    void apply(NativeView view, const PanelTraits &traits) override;
    void orderFrontRegardless(NativeView view) override;
    void makeKeyAndOrderFront(NativeView view) override;
    void setShape(NativeView view, const PanelShape &shape) override;
    // Uses the bounding shape. Only this shape both hides a window and lets clicks through, with and without a
    // compositor, and the window manager forgets nothing about the window.
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
