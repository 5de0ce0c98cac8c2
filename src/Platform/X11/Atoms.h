// The names that the backend and the window managers share. Their numbers are requested once per connection.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace korvane::platform::x11 {

enum class Atom : std::uint8_t {
    // Properties of the root window.
    netSupported,
    netSupportingWmCheck,
    netClientList,
    netClientListStacking,
    netActiveWindow,
    netCurrentDesktop,
    netCloseWindow,
    netRestackWindow,
    // Properties of a window.
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
    // Names that only the backend uses.
    serverTime,
    count,
};

constexpr auto atomCount = static_cast<std::size_t>(Atom::count);

// The name in the form that the server knows.
std::string_view atomName(Atom atom);

class Atoms {
public:
    Atoms() = default;
    explicit Atoms(const std::array<std::uint32_t, atomCount> &numbers);

    std::uint32_t operator[](Atom atom) const { return numbers[static_cast<std::size_t>(atom)]; }
    // Absent when none of our names has that number.
    std::optional<Atom> named(std::uint32_t number) const;

private:
    std::array<std::uint32_t, atomCount> numbers{};
    std::unordered_map<std::uint32_t, Atom> names;
};

}  // namespace korvane::platform::x11
