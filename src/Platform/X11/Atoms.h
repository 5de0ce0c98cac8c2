// The names that the backend and the window managers share, known by number once per connection.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace korvane::platform::x11 {

enum class Atom : std::uint8_t {
    // Of the root window.
    netSupported,
    netSupportingWmCheck,
    netClientList,
    netClientListStacking,
    netActiveWindow,
    netCurrentDesktop,
    netCloseWindow,
    netRestackWindow,
    // Of a window.
    netWmName,
    netWmPid,
    netWmDesktop,
    netWmStrut,
    netWmStrutPartial,
    netWmIcon,
    netWmState,
    netWmStateHidden,
    netWmStateShaded,
    netWmStateSkipTaskbar,
    netWmStateSkipPager,
    netWmStateModal,
    netWmStateAbove,
    netWmStateDemandsAttention,
    netWmWindowType,
    netWmWindowTypeNormal,
    netWmWindowTypeDialog,
    netWmWindowTypeUtility,
    netWmWindowTypeToolbar,
    netWmWindowTypeDock,
    netWmWindowTypeDesktop,
    netWmWindowTypeSplash,
    netWmWindowTypeMenu,
    netWmWindowTypeDropdownMenu,
    netWmWindowTypePopupMenu,
    netWmWindowTypeTooltip,
    netWmWindowTypeNotification,
    netWmWindowTypeCombo,
    netWmWindowTypeDnd,
    gtkApplicationId,
    wmWindowRole,
    wmState,
    wmChangeState,
    wmProtocols,
    wmDeleteWindow,
    wmName,
    wmClass,
    wmClientMachine,
    wmHints,
    wmTransientFor,
    // Types of text.
    utf8String,
    string,
    compoundText,
    // The backend's own.
    serverTime,
    count,
};

constexpr auto atomCount = static_cast<std::size_t>(Atom::count);

// The name as the server knows it.
std::string_view atomName(Atom atom);

class Atoms {
public:
    Atoms() = default;
    explicit Atoms(const std::array<std::uint32_t, atomCount> &numbers);

    std::uint32_t operator[](Atom atom) const { return numbers[static_cast<std::size_t>(atom)]; }
    // Absent for a number that none of our names has.
    std::optional<Atom> named(std::uint32_t number) const;

private:
    std::array<std::uint32_t, atomCount> numbers{};
    std::unordered_map<std::uint32_t, Atom> names;
};

}  // namespace korvane::platform::x11
