// Reads properties of many windows in one round trip: it sends all requests first and then reads all replies.
#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/WindowRecord.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace korvane::platform::x11 {

struct WindowAttributes {
    bool overrideRedirect = false, viewable = false;
};

class PropertyReader {
public:
    // `attributes` and `property` are called only for windows that still exist, `gone` for the others.
    struct Receiver {
        std::function<void(WindowId, const WindowAttributes &)> attributes;
        std::function<void(WindowId, Property, const PropertyValue &)> property;
        std::function<void(WindowId)> gone;
    };
    struct Wanted {
        WindowId window = 0;
        PropertySet properties;
        bool attributes = false;
    };

    explicit PropertyReader(Connection &connection) : server(connection) {}

    void read(const std::vector<Wanted> &wanted, const Receiver &receiver);
    // The numbers in a property of one window. Absent when the property is missing or holds something else.
    using Numbers = std::optional<std::vector<std::uint32_t>>;
    Numbers numbers(WindowId window, Atom property, std::uint32_t longest);
    // The same in two steps, so that several requests can be sent before the first reply is read.
    xcb_get_property_cookie_t ask(WindowId window, Atom property, std::uint32_t longest);
    Numbers answer(xcb_get_property_cookie_t cookie);

private:
    void readSome(std::span<const Wanted> wanted, const Receiver &receiver);

    Connection &server;
};

}  // namespace korvane::platform::x11
