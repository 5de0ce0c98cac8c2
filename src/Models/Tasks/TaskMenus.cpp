#include "Models/Tasks/TaskMenus.h"

#include "Models/Base/Identifiers.h"
#include "Models/Tasks/TabColors.h"
#include "Models/Tasks/TaskGrouping.h"

namespace korvane {
namespace TaskMenus {
namespace {

constexpr double usualOpacity = 0.5;

MenuItem item(std::string title, std::function<void()> action)
{
    return {std::move(title), std::move(action), {}};
}

MenuItem submenu(std::string title, Menu items)
{
    return {std::move(title), {}, std::move(items)};
}

void addDivider(Menu &menu)
{
    menu.emplace_back();
}

void addClosing(Menu &menu, const RunningAppGroup &group, const GroupMenuActions &actions)
{
    if (GroupButtons::actsAsWindow(group)) {
        menu.push_back(item("Close", actions.closeWindow));
    } else if (group.isCustom) {
        menu.push_back(item("Close " + group.appName, actions.quitGroup));
    } else {
        menu.push_back(item("Quit " + group.appName + " & Group", actions.quitGroup));
        menu.push_back(item("Close Group", actions.closeGroup));
    }
}

void addArranging(Menu &menu, const RunningAppGroup &group, const GroupMenuActions &actions)
{
    menu.push_back(item("Set First", actions.setFirst));
    menu.push_back(item("Set Last", actions.setLast));
    addDivider(menu);
    menu.push_back(item("New Group", actions.newGroup));
    if (group.isCustom) {
        addDivider(menu);
        menu.push_back(item("Change Icon…", actions.changeIcon));
    } else {
        menu.push_back(item("Add Application to Favorites", actions.addFavorite));
        addDivider(menu);
    }
}

}  // namespace

Menu colorMenu(const SetColor &set, const std::function<void(const SetColor &)> &pickColor)
{
    Menu menu;
    for (const auto &color : TabColors::palette) {
        const std::string text(color.text);
        const ColorName stored = color.color ? ColorName(text) : std::nullopt;
        menu.push_back(item(text, [set, stored] { set(stored); }));
        if (!color.color)
            addDivider(menu);
    }
    addDivider(menu);
    menu.push_back(item("Color Picker…", [set, pickColor] { pickColor(set); }));
    return menu;
}

Menu transparencyMenu(const std::function<void(double)> &set)
{
    Menu menu{item("Default (50%)", [set] { set(usualOpacity); })};
    addDivider(menu);
    for (int n = 1; n <= 10; ++n)
        menu.push_back(item(std::to_string(n * 10) + "%", [set, opacity = n / 10.0] { set(opacity); }));
    return menu;
}

TaskOffers taskOffers(const RunningAppItem &task, const SettingsValues &settings)
{
    const bool isSettings = task.id == Identifiers::settingsTask;
    TaskOffers offers;
    offers.position = !isSettings;
    offers.newGroup = !isSettings && settings.groupingMode != GroupingMode::never;
    offers.parentGroup = offers.newGroup && settings.forcedUngroupedWindows.contains(task.id);
    offers.defaultColor = task.bundleIdentifier.has_value();
    return offers;
}

Menu taskMenu(const RunningAppItem &task, const SettingsValues &settings, const TaskMenuActions &actions)
{
    const TaskOffers offers = taskOffers(task, settings);
    Menu menu;
    if (offers.position) {
        menu.push_back(item("Set First", actions.setFirst));
        menu.push_back(item("Set Last", actions.setLast));
        addDivider(menu);
    }
    if (offers.newGroup) {
        menu.push_back(item("New Group", actions.newGroup));
        if (offers.parentGroup)
            menu.push_back(item("Parent Group", actions.parentGroup));
        menu.push_back(item("Add Application to Favorites", actions.addFavorite));
        addDivider(menu);
    }
    menu.push_back(submenu("Select Color", colorMenu(actions.setCustomColor, actions.pickColor)));
    if (offers.defaultColor)
        menu.push_back(submenu("Set Default Color", colorMenu(actions.setDefaultColor, actions.pickColor)));
    menu.push_back(submenu("Color Transparency", transparencyMenu(actions.setColorOpacity)));
    menu.push_back(item("Quit " + task.appName, actions.quit));
    addDivider(menu);
    menu.push_back(item("Close", actions.close));
    addDivider(menu);
    menu.push_back(item("Resize", actions.armResize));
    return menu;
}

Menu groupMenu(const RunningAppGroup &group, const GroupMenuActions &actions)
{
    Menu menu;
    addArranging(menu, group, actions);
    menu.push_back(submenu("Select Color", colorMenu(actions.setCustomColor, actions.pickColor)));
    if (!group.isCustom && !group.windows.empty() && group.windows.front().bundleIdentifier)
        menu.push_back(submenu("Set Default Color", colorMenu(actions.setDefaultColor, actions.pickColor)));
    menu.push_back(submenu("Color Transparency", transparencyMenu(actions.setColorOpacity)));
    addDivider(menu);
    addClosing(menu, group, actions);
    addDivider(menu);
    menu.push_back(item("Resize", actions.armResize));
    return menu;
}

Menu groupHeaderMenu(const RunningAppGroup &group, const GroupMenuActions &actions)
{
    Menu menu;
    addArranging(menu, group, actions);
    addDivider(menu);
    addClosing(menu, group, actions);
    return menu;
}

Menu windowRowMenu(const RunningAppItem &task, const WindowRowMenuActions &actions)
{
    Menu menu{item("Set First", actions.setFirst), item("Set Last", actions.setLast)};
    addDivider(menu);
    menu.push_back(item("New Group", actions.newGroup));
    menu.push_back(item("Add Application to Favorites", actions.addFavorite));
    addDivider(menu);
    menu.push_back(item("Quit " + task.appName, actions.quit));
    addDivider(menu);
    menu.push_back(item("Close", actions.close));
    return menu;
}

}  // namespace TaskMenus

std::string GroupButtons::changedGlyph(const std::string &text,
                                       const std::function<std::string(std::string_view)> &firstCharacter)
{
    const std::string first = firstCharacter(text);
    return first.empty() ? std::string(TaskGrouping::newGroupGlyph) : first;
}

}  // namespace korvane
