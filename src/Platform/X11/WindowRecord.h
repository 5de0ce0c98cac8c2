// What the mirror knows about one window, and how the bytes of a property change it. Nothing here talks to the server.
#pragma once

#include "Platform/Linux/ApplicationCatalogue.h"
#include "Platform/X11/Atoms.h"
#include "Ports/Applications.h"

#include <bitset>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace korvane::platform::x11 {

using WindowId = std::uint32_t;

// The numbers in WM_STATE and in requests by WM_CHANGE_STATE.
constexpr std::uint32_t normalState = 1, iconicState = 3;

// The properties that the mirror keeps. The comment names the X property.
enum class Property : std::uint8_t {
    name,        // _NET_WM_NAME
    legacyName,  // WM_NAME
    role,
    windowClass,
    gtkApplicationId,
    type,
    state,
    managerState,  // WM_STATE
    hints,
    transientFor,
    protocols,
    desktop,
    pid,
    machine,
    count,
};
constexpr auto propertyCount = static_cast<std::size_t>(Property::count);
using PropertySet = std::bitset<propertyCount>;

Atom atomOf(Property property);
// How much of a property is requested, in units of four bytes.
std::uint32_t longestOf(Property property);

// A property as the server returns it. Type 0 means that the property does not exist.
struct PropertyValue {
    std::uint32_t type = 0;
    int format = 0;
    std::span<const std::uint8_t> bytes;

    // Empty unless the property holds bytes.
    std::string_view text() const;
    // The number at that index, if the property holds numbers of 32 bits and has enough of them.
    std::optional<std::uint32_t> number(std::size_t index) const;
    std::size_t numbers() const { return format == 32 ? bytes.size() / 4 : 0; }
};

// What a changed property can mean to the readers of the window.
enum class Change : std::uint8_t {
    none,
    content,    // its title, role or state
    structure,  // which application it belongs to, or whether it is a task at all
};

enum class WindowKind : std::uint8_t { ordinary, desktop, dock, transitory };

struct WindowRecord {
    WindowId id = 0;
    Pid pid = 0;
    std::string title, role;
    WindowOrigin origin;  // without the executable, which belongs to the process
    std::string machine;
    WindowKind kind = WindowKind::ordinary;
    WindowId transientFor = 0;
    std::uint32_t managerState = 0;  // normalState, iconicState, or 0 for neither
    std::uint32_t desktop = 0;
    std::uint32_t declaredPid = 0;
    bool minimized = false, shaded = false, skipsTaskbar = false, modal = false;
    bool demandsAttention = false, urgent = false;
    bool closable = false;  // the window wants a message before it is closed
    bool hasName = false;   // _NET_WM_NAME exists, so WM_NAME is ignored
    bool hasClass = false, hasManagerState = false;
    // These two are window attributes, not properties. They are current only while no window manager lists the windows.
    bool overrideRedirect = false, viewable = false;
    // A counter value from the last time when it was the active window. A larger value is later.
    std::uint64_t lastActive = 0;

    Change apply(Property property, const PropertyValue &value, const Atoms &atoms);
};

constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

}  // namespace korvane::platform::x11
