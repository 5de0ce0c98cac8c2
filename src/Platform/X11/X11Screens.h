// The monitors as screens, and the pointer.
#pragma once

#include "Platform/X11/MonitorList.h"
#include "Platform/X11/PropertyMirror.h"
#include "Ports/ObserverList.h"
#include "Ports/Pointer.h"
#include "Ports/Screens.h"

namespace korvane::platform {

class X11Screens final : public Screens, private x11::EventListener {
public:
    // The scale is the number of device pixels in a point. It is the same on all monitors.
    X11Screens(x11::Connection &connection, x11::PropertyMirror &mirror, MainLoop &loop, double scale);
    ~X11Screens() override;

    std::vector<Screen> all() override;
    // The screen of the active window; if there is none, the screen with the pointer.
    std::optional<std::size_t> main() override;
    Rect displayBounds(std::uint32_t number) override;
    // Changes come in several steps; observers are told when the last step is done.
    [[nodiscard]] Subscription observeChanges(std::function<void()> callback) override;

    double pixelsToPoint() const { return scale; }
    // A strip at the lower edge of a screen, as a window manager counts it: pixels from the lower edge of all screens,
    // and the first and the last column. Absent when another monitor lies below.
    struct BottomStrip {
        std::uint32_t height = 0, left = 0, right = 0;
    };
    std::optional<BottomStrip> bottomStrip(const Rect &strip) const;
    x11::DesktopSpace space() const { return {monitors, scale}; }

private:
    void handle(const xcb_generic_event_t &event) override;
    void readAgain();
    std::optional<std::size_t> screenAt(int x, int y) const;
    std::optional<std::size_t> screenOfActiveWindow();

    x11::Connection &connection;
    x11::PropertyMirror &mirror;
    MainLoop &loop;
    double scale;
    std::vector<x11::Monitor> monitors;
    ObserverList<> observers;
    Subscription rest;
};

class X11Pointer final : public Pointer {
public:
    X11Pointer(x11::Connection &server, X11Screens &all) : connection(server), screens(all) {}

    Point location() override;
    void warp(Point display) override;

private:
    x11::Connection &connection;
    X11Screens &screens;
};

}  // namespace korvane::platform
