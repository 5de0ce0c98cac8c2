// Turns a window that the view layer has made into a panel, which does not count as one of the desktop's windows.
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

// The parts of a panel's window that are shown and that take the mouse. The rest of the window is invisible and does
// not take the mouse. In points from the top left.
using PanelShape = std::vector<Rect>;

using NativeView = std::uintptr_t;  // what the toolkit calls the window's identifier

class Panels {
public:
    virtual ~Panels() = default;
    // To be called when the native window exists, before each time it is shown.
    virtual void apply(NativeView view, const PanelTraits &traits) = 0;
    // Puts the panel above the other windows of its level, whichever program is active.
    virtual void orderFrontRegardless(NativeView view) = 0;
    // The same, and the panel gets the keyboard, whichever window has it. For a panel that has been shown.
    virtual void makeKeyAndOrderFront(NativeView view) = 0;
    // For a panel that has been made. Replaces the previous shape. Before the first call the shape is the whole panel.
    virtual void setShape(NativeView view, const PanelShape &shape) = 0;
    // A panel that ignores the mouse is invisible and can't be hit. When it takes the mouse again, it also has its
    // shape again.
    virtual void setIgnoresMouse(NativeView view, bool ignores) = 0;
    // Asks that other windows keep off a strip along the bottom edge of a screen, in desktop coordinates. If the strip
    // is absent, other windows may use it again. Does nothing where another screen lies below, because the strip would
    // also take room from that screen.
    virtual void reserveStrip(NativeView view, const std::optional<Rect> &strip) = 0;
    // Whether the desktop is visible through the pixels of a panel that are not drawn. If not, a panel is opaque.
    virtual bool translucencyAvailable() = 0;
    // Calls when the answer of translucencyAvailable() has changed.
    [[nodiscard]] virtual Subscription observeTranslucency(std::function<void()> callback) = 0;
};

}  // namespace korvane::platform
