// What the mirror knows of one window, and how a property's bytes change it. Nothing here talks to the server.
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

// The numbers that WM_STATE holds and WM_CHANGE_STATE asks for.
constexpr std::uint32_t normalState = 1, iconicState = 3;

// The properties that are kept, each with the attribute it comes from.
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
// How much of a property is asked for, in units of four bytes.
std::uint32_t longestOf(Property property);

// A property as the server gives it. Type 0 is a property that is not there.
struct PropertyValue {
    std::uint32_t type = 0;
    int format = 0;
    std::span<const std::uint8_t> bytes;

    // Empty unless the property holds bytes.
    std::string_view text() const;
    // The number at a place, if the property holds that many numbers of 32 bits.
    std::optional<std::uint32_t> number(std::size_t index) const;
    std::size_t numbers() const { return format == 32 ? bytes.size() / 4 : 0; }
};

// What a property's change can mean to those who look at the window.
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
    WindowOrigin origin;  // without the executable, which is the process's
    std::string machine;
    WindowKind kind = WindowKind::ordinary;
    WindowId transientFor = 0;
    std::uint32_t managerState = 0;  // normalState, iconicState, or 0 for neither
    std::uint32_t desktop = 0;
    std::uint32_t declaredPid = 0;
    bool minimized = false, shaded = false, skipsTaskbar = false, modal = false;
    bool demandsAttention = false, urgent = false;
    bool closable = false;  // it asks to be told before it is closed
    bool hasName = false;   // _NET_WM_NAME is there, so WM_NAME does not count
    bool hasClass = false, hasManagerState = false;
    // Of the server, not of a property; kept only while no window manager lists the windows.
    bool overrideRedirect = false, viewable = false;
    // When it was last the active window, as a count; larger is later.
    std::uint64_t lastActive = 0;

    Change apply(Property property, const PropertyValue &value, const Atoms &atoms);
};

constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

}  // namespace korvane::platform::x11
