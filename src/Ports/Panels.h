// Turns a window that the view layer has made into a panel: beside the desktop's windows, not one of them.
#pragma once

#include "Ports/Subscription.h"
#include "Ports/Values/Geometry.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace korvane::platform {

enum class Level { floating = 3, statusBar = 25, alert = 1000 };

struct PanelTraits {
    Level level = Level::statusBar;
    bool allSpaces = true;
    bool stationary = false;
    bool fullScreenAuxiliary = true;
    bool nonActivating = false;  // a click does not activate the program
    bool canBecomeKey = false;
};

// What of a panel is there; the rest of its window shows and takes nothing. Points from the top left.
using PanelShape = std::vector<Rect>;

using NativeView = std::uintptr_t;  // what the toolkit calls the window's identifier

class Panels {
public:
    virtual ~Panels() = default;
    // Once the native window exists, before each time it is shown.
    virtual void apply(NativeView view, const PanelTraits &traits) = 0;
    // Above the other windows of its level, whoever is active.
    virtual void orderFrontRegardless(NativeView view) = 0;
    // The same, and it gets the keyboard, whoever has it. For a panel that has been shown.
    virtual void makeKeyAndOrderFront(NativeView view) = 0;
    // For a panel that has been made. Replaces the shape before; the whole panel is there before the first one.
    virtual void setShape(NativeView view, const PanelShape &shape) = 0;
    // A panel that ignores the mouse is neither seen nor hit; its shape comes back with it.
    virtual void setIgnoresMouse(NativeView view, bool ignores) = 0;
    // Asks that other windows keep off a strip along the bottom edge of a screen, in desktop coordinates; absent: they
    // may use it again. Nothing where another screen lies below, whose room would be taken with it.
    virtual void reserveStrip(NativeView view, const std::optional<Rect> &strip) = 0;
    // Whether pixels of a panel that are not drawn let the desktop be seen. Without that a panel is opaque.
    virtual bool translucencyAvailable() = 0;
    // translucencyAvailable() has another answer.
    [[nodiscard]] virtual Subscription observeTranslucency(std::function<void()> callback) = 0;
};

}  // namespace korvane::platform
