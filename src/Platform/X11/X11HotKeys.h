// Keys that are grabbed from the whole desktop.
#pragma once

#include "Platform/X11/Connection.h"
#include "Ports/HotKeys.h"

#include <memory>
#include <vector>

namespace korvane::platform {

class X11HotKeys final : public HotKeys, private x11::EventListener {
public:
    X11HotKeys(x11::Connection &connection, MainLoop &loop);
    ~X11HotKeys() override;

    // A later handler replaces an earlier one.
    [[nodiscard]] Subscription install(std::function<void(std::uint32_t id)> handler) override;
    // Keys that the keyboard does not have are not grabbed.
    [[nodiscard]] Subscription add(const HotKey &key) override;

private:
    struct State;
    class Handler;
    class Key;

    void handle(const xcb_generic_event_t &event) override;
    void press(const xcb_key_press_event_t &event);
    void awaitRelease();

    x11::Connection &connection;
    MainLoop &loop;
    std::shared_ptr<State> state;
    xcb_keycode_t held = 0;  // a key that was reported and is still down
    Subscription releaseCheck;
};

}  // namespace korvane::platform
