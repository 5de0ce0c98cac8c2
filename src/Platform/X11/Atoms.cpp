#include "Platform/X11/Atoms.h"

namespace korvane::platform::x11 {
namespace {

// These are in the order of the enumeration.
constexpr std::array<std::string_view, atomCount> texts{
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_ACTIVE_WINDOW",
    "_NET_CURRENT_DESKTOP",
    "_NET_CLOSE_WINDOW",
    "_NET_RESTACK_WINDOW",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_DESKTOP",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_ICON",
    "_NET_WM_STATE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_SHADED",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STATE_SKIP_PAGER",
    "_NET_WM_STATE_MODAL",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_DEMANDS_ATTENTION",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DND",
    "_GTK_APPLICATION_ID",
    "WM_WINDOW_ROLE",
    "WM_STATE",
    "WM_CHANGE_STATE",
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "WM_NAME",
    "WM_CLASS",
    "WM_CLIENT_MACHINE",
    "WM_HINTS",
    "WM_TRANSIENT_FOR",
    "UTF8_STRING",
    "STRING",
    "COMPOUND_TEXT",
    "_KORVANE_SERVER_TIME",
};
static_assert(!texts.back().empty());

}  // namespace

std::string_view atomName(Atom atom)
{
    return texts[static_cast<std::size_t>(atom)];
}

Atoms::Atoms(const std::array<std::uint32_t, atomCount> &values) : numbers(values)
{
    for (std::size_t i = 0; i < atomCount; ++i)
        if (values[i] != 0)
            names.emplace(values[i], static_cast<Atom>(i));
}

std::optional<Atom> Atoms::named(std::uint32_t number) const
{
    const auto found = names.find(number);
    return found == names.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace korvane::platform::x11
