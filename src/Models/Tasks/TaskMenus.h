// The context menus of tasks, groups and the rows of a window list, as values: their items, the order and the
// conditions. The views turn them into menus of the toolkit.
#pragma once

#include "Models/Base/Records.h"
#include "Models/Settings/SettingsTable.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvane {

struct MenuItem {
    std::string title;             // empty: a divider
    std::function<void()> action;  // of an item without a submenu
    std::vector<MenuItem> submenu;

    bool isDivider() const { return title.empty(); }
};
using Menu = std::vector<MenuItem>;

using ColorName = std::optional<std::string>;
using SetColor = std::function<void(const ColorName &)>;

// What the items do. If an action is absent, its items are left out, where the menu's description says so.
struct TaskMenuActions {
    std::function<void()> setFirst, setLast;  // both or none
    std::function<void()> newGroup;
    std::function<void()> parentGroup;  // may be absent
    std::function<void()> addFavorite;
    SetColor setCustomColor;
    SetColor setDefaultColor;  // may be absent
    std::function<void(double)> setColorOpacity;
    std::function<void(const SetColor &apply)> pickColor;  // opens the colour panel, which applies each colour at once
    std::function<void()> quit, close, armResize;
};

struct GroupMenuActions {
    std::function<void()> setFirst, setLast, newGroup, changeIcon, addFavorite;
    SetColor setCustomColor, setDefaultColor;
    std::function<void(double)> setColorOpacity;
    std::function<void(const SetColor &apply)> pickColor;
    std::function<void()> closeWindow, quitGroup, closeGroup, armResize;
};

struct WindowRowMenuActions {
    std::function<void()> setFirst, setLast, newGroup, addFavorite, quit, close;
};

namespace TaskMenus {

Menu colorMenu(const SetColor &set, const std::function<void(const SetColor &)> &pickColor);
Menu transparencyMenu(const std::function<void(double)> &set);

// What a task's menu offers besides the items that every task has.
struct TaskOffers {
    bool position = false;     // "Set First" and "Set Last"
    bool newGroup = false;     // and the favorites
    bool parentGroup = false;  // for a window that was taken out of its group by hand
    bool defaultColor = false;
    friend bool operator==(const TaskOffers &, const TaskOffers &) = default;
};
TaskOffers taskOffers(const RunningAppItem &item, const SettingsValues &settings);
Menu taskMenu(const RunningAppItem &item, const SettingsValues &settings, const TaskMenuActions &actions);

Menu groupMenu(const RunningAppGroup &group, const GroupMenuActions &actions);
// The menu of the header of a group's window list: the same without the colours and "Resize".
Menu groupHeaderMenu(const RunningAppGroup &group, const GroupMenuActions &actions);
Menu windowRowMenu(const RunningAppItem &item, const WindowRowMenuActions &actions);

}  // namespace TaskMenus

// What a group's button shows and does.
namespace GroupButtons {

inline constexpr std::size_t listScrollsFrom = 21;  // windows

// An automatic group of one window acts as that window.
inline bool actsAsWindow(const RunningAppGroup &group)
{
    return !group.isCustom && group.windows.size() == 1;
}
inline bool showsChevron(const RunningAppGroup &group)
{
    return group.isCustom || group.windows.size() > 1;
}
inline bool listScrolls(const RunningAppGroup &group)
{
    return group.windows.size() >= listScrollsFrom;
}
inline std::string toolTip(const RunningAppGroup &group)
{
    return "Show " + group.appName + " windows";
}
// What "Change Icon…" stores for a text: its first character as a person sees it, or the folder for an empty text.
std::string changedGlyph(const std::string &text, const std::function<std::string(std::string_view)> &firstCharacter);

}  // namespace GroupButtons
}  // namespace korvane
