#include "Platform/X11/WindowRecord.h"

#include "Platform/X11/CompoundText.h"
#include "Platform/X11/PropertyText.h"

#include <array>
#include <cstring>

namespace korvane::platform::x11 {
namespace {

constexpr std::uint32_t urgencyHint = 1 << 8;

struct Row {
    Atom atom;
    std::uint32_t longest;
};

// These are in the order of the enumeration. A character takes up to four bytes, so a title of the longest length fits.
constexpr std::array<Row, propertyCount> rows{{
    {Atom::netWmName, longestText},
    {Atom::wmName, longestText},
    {Atom::wmWindowRole, 256},
    {Atom::wmClass, 256},
    {Atom::gtkApplicationId, 256},
    {Atom::netWmWindowType, 32},
    {Atom::netWmState, 32},
    {Atom::wmState, 2},
    {Atom::wmHints, 9},
    {Atom::wmTransientFor, 1},
    {Atom::wmProtocols, 32},
    {Atom::netWmDesktop, 1},
    {Atom::netWmPid, 1},
    {Atom::wmClientMachine, 64},
}};

template <typename T> bool assign(T &field, T value)
{
    if (field == value)
        return false;
    field = std::move(value);
    return true;
}

Change either(bool changed, Change change)
{
    return changed ? change : Change::none;
}

std::string decoded(const PropertyValue &value, const Atoms &atoms)
{
    if (value.type == atoms[Atom::string])
        return cleanLatin1(value.text());
    if (value.type == atoms[Atom::compoundText])
        return cleanText(compoundTextToUtf8(value.text()));
    return cleanText(value.text());
}

WindowKind kindOf(const PropertyValue &value, const Atoms &atoms)
{
    // A window lists its preferred types first, so the first type that we know counts.
    for (std::size_t i = 0; i < value.numbers(); ++i) {
        switch (atoms.named(*value.number(i)).value_or(Atom::count)) {
        case Atom::netWmWindowTypeDock:
            return WindowKind::dock;
        case Atom::netWmWindowTypeDesktop:
            return WindowKind::desktop;
        case Atom::netWmWindowTypeSplash:
        case Atom::netWmWindowTypeMenu:
        case Atom::netWmWindowTypeDropdownMenu:
        case Atom::netWmWindowTypePopupMenu:
        case Atom::netWmWindowTypeTooltip:
        case Atom::netWmWindowTypeNotification:
        case Atom::netWmWindowTypeCombo:
        case Atom::netWmWindowTypeDnd:
            return WindowKind::transitory;
        case Atom::netWmWindowTypeNormal:
        case Atom::netWmWindowTypeDialog:
        case Atom::netWmWindowTypeUtility:
        case Atom::netWmWindowTypeToolbar:
            return WindowKind::ordinary;
        default:
            break;
        }
    }
    return WindowKind::ordinary;
}

Change applyState(WindowRecord &window, const PropertyValue &value, const Atoms &atoms)
{
    bool hidden = false, shaded = false, skips = false, modal = false, attention = false;
    for (std::size_t i = 0; i < value.numbers(); ++i) {
        switch (atoms.named(*value.number(i)).value_or(Atom::count)) {
        case Atom::netWmStateHidden:
            hidden = true;
            break;
        case Atom::netWmStateShaded:
            shaded = true;
            break;
        case Atom::netWmStateSkipTaskbar:
            skips = true;
            break;
        case Atom::netWmStateModal:
            modal = true;
            break;
        case Atom::netWmStateDemandsAttention:
            attention = true;
            break;
        default:
            break;
        }
    }
    // Some managers also mark a window as hidden when only its title bar is left.
    const bool minimized = hidden && !shaded;
    bool structure = assign(window.skipsTaskbar, skips);
    structure = assign(window.modal, modal) || structure;
    bool content = assign(window.minimized, minimized);
    content = assign(window.demandsAttention, attention) || content;
    window.shaded = shaded;
    return structure ? Change::structure : either(content, Change::content);
}

}  // namespace

Atom atomOf(Property property)
{
    return rows[static_cast<std::size_t>(property)].atom;
}

std::uint32_t longestOf(Property property)
{
    return rows[static_cast<std::size_t>(property)].longest;
}

std::string_view PropertyValue::text() const
{
    return format == 8 ? std::string_view(reinterpret_cast<const char *>(bytes.data()), bytes.size())
                       : std::string_view();
}

std::optional<std::uint32_t> PropertyValue::number(std::size_t index) const
{
    if (index >= numbers())
        return std::nullopt;
    std::uint32_t result = 0;
    std::memcpy(&result, bytes.data() + index * 4, 4);
    return result;
}

Change WindowRecord::apply(Property property, const PropertyValue &value, const Atoms &atoms)
{
    switch (property) {
    case Property::name:
        hasName = value.type != 0 && value.format == 8;
        return either(hasName && assign(title, cleanText(value.text())), Change::content);
    case Property::legacyName:
        return either(!hasName && assign(title, decoded(value, atoms)), Change::content);
    case Property::role:
        return either(assign(role, decoded(value, atoms)), Change::content);
    case Property::windowClass: {
        auto [instance, name] = splitClass(value.text());
        hasClass = value.type != 0;
        bool changed = assign(origin.instanceName, std::move(instance));
        changed = assign(origin.className, std::move(name)) || changed;
        return either(changed, Change::structure);
    }
    case Property::gtkApplicationId:
        return either(assign(origin.gtkApplicationId, decoded(value, atoms)), Change::structure);
    case Property::type:
        return either(assign(kind, kindOf(value, atoms)), Change::structure);
    case Property::state:
        return applyState(*this, value, atoms);
    case Property::managerState: {
        hasManagerState = value.type != 0;
        const auto number = value.number(0).value_or(0);
        const bool known = number == normalState || number == iconicState;
        // Any visible effect of this change is also reported by the window's other state property.
        managerState = known ? number : 0;
        return Change::none;
    }
    case Property::hints:
        return either(assign(urgent, (value.number(0).value_or(0) & urgencyHint) != 0), Change::content);
    case Property::transientFor:
        return either(assign(transientFor, value.number(0).value_or(0)), Change::structure);
    case Property::protocols: {
        bool offered = false;
        for (std::size_t i = 0; i < value.numbers(); ++i)
            offered = offered || *value.number(i) == atoms[Atom::wmDeleteWindow];
        return either(assign(closable, offered), Change::content);
    }
    case Property::desktop:
        desktop = value.number(0).value_or(0);
        return Change::none;
    case Property::pid:
        return either(assign(declaredPid, value.number(0).value_or(0)), Change::structure);
    case Property::machine:
        return either(assign(machine, decoded(value, atoms)), Change::structure);
    case Property::count:
        break;
    }
    return Change::none;
}

}  // namespace korvane::platform::x11
