#include "Views/Tasks/TaskCommands.h"

#include <algorithm>

namespace korvane::TaskCommands {
namespace {

using V = SettingsValues;

bool isSettings(const RunningAppItem &item)
{
    return item.id == Identifiers::settingsTask;
}

std::set<std::string> windowIDs(const RunningAppGroup &group)
{
    std::set<std::string> ids;
    for (const RunningAppItem &item : group.windows)
        ids.insert(item.id);
    return ids;
}

// The bar may be gone when an alert closes, but the model still exists.
void changeIcon(const TaskButtonHost &host, const RunningAppGroup &group)
{
    AppModel &model = host.model;
    platform::Text &text = host.platform.text;
    const std::string folder(TaskGrouping::newGroupGlyph);
    platform::AlertField field;
    field.text = group.customIconGlyph.value_or(folder);
    field.placeholder = folder;
    if (model.runKorvaneModal({"Change Group Icon", "Type one emoji or character.", {"Save", "Cancel"}, &field})
        != platform::firstAlertButton)
        return;
    model.setCustomGroupIcon(group, GroupButtons::changedGlyph(field.text, [&](std::string_view whole) {
                                 return text.firstCharacter(whole);
                             }));
}

// Opens the colour panel with the colour that the tab has at that moment.
std::function<void(const SetColor &)> picker(const TaskButtonHost &host, std::function<ColorName()> current)
{
    return [&platform = host.platform, current = std::move(current)](const SetColor &apply) {
        TabColors::pickColor(platform, current(), [apply](const std::string &color) { apply(color); });
    };
}

auto opacitySetter(AppModel &model)
{
    return [&model](double opacity) { model.set(&V::tabColorOpacity, opacity); };
}

GroupMenuActions groupActions(const TaskButtonHost &host, const RunningAppGroup &group)
{
    AppModel &model = host.model;
    const auto place = [&host, group](bool first) {
        host.setTaskPosition(Identifiers::groupDrag(group.id), windowIDs(group), first);
    };
    GroupMenuActions actions;
    actions.setFirst = [place] { place(true); };
    actions.setLast = [place] { place(false); };
    actions.newGroup = [&model, group] { model.createCustomGroup(group.windows); };
    actions.changeIcon = [&host, group] { changeIcon(host, group); };
    actions.addFavorite = [&model, group] { model.addToFavorites(group); };
    actions.setCustomColor = [&model, group](const ColorName &name) { model.setLiveTabColorName(name, group.id); };
    actions.setDefaultColor = [&model, group](const ColorName &name) {
        if (group.windows.empty() || !group.windows.front().bundleIdentifier)
            return;
        std::vector<std::string> ids{group.id};
        for (const RunningAppItem &item : group.windows)
            ids.push_back(item.id);
        model.setDefaultAppColorName(name, *group.windows.front().bundleIdentifier, ids);
    };
    actions.setColorOpacity = opacitySetter(model);
    actions.pickColor =
        picker(host, [&model, group] { return TabColors::groupColorName(model.liveTabColors(), group); });
    actions.closeWindow = [&model, group] { model.closeFrontWindow(group.windows.front()); };
    actions.quitGroup = [&model, group] { model.confirmQuitGroup(group); };
    actions.closeGroup = [&model, group] { model.confirmCloseGroup(group); };
    actions.armResize = [&host, group] { host.armResize(group.id); };
    return actions;
}

}  // namespace

void click(const TaskButtonHost &host, const RunningAppItem &item)
{
    if (!isSettings(item))
        host.model.activate(item);
    else if (host.showSettings)
        host.showSettings();
}

void close(const TaskButtonHost &host, const RunningAppItem &item)
{
    if (isSettings(item))
        host.model.closeSettingsWindow();
    else
        host.model.closeFrontWindow(item);
}

void close(const TaskButtonHost &host, const RunningAppGroup &group)
{
    if (GroupButtons::actsAsWindow(group))
        host.model.closeFrontWindow(group.windows.front());
    else
        host.model.confirmQuitGroup(group);
}

Menu menu(const TaskButtonHost &host, const RunningAppItem &item)
{
    AppModel &model = host.model;
    TaskMenuActions actions;
    actions.setFirst = [&host, item] { host.setTaskPosition(item.id, {item.id}, true); };
    actions.setLast = [&host, item] { host.setTaskPosition(item.id, {item.id}, false); };
    actions.newGroup = [&model, item] { model.createCustomGroup({item}); };
    actions.parentGroup = [&model, item] { model.returnToParentGroup(item); };
    actions.addFavorite = [&model, item] { model.addToFavorites(item); };
    actions.setCustomColor = [&model, item](const ColorName &name) { model.setLiveTabColorName(name, item.id); };
    actions.setDefaultColor = [&model, item](const ColorName &name) {
        if (item.bundleIdentifier)
            model.setDefaultAppColorName(name, *item.bundleIdentifier, {item.id});
    };
    actions.setColorOpacity = opacitySetter(model);
    actions.pickColor = picker(host, [&model, item] { return model.liveTabColorName(item.id); });
    actions.quit = [&model, item] {
        if (isSettings(item))
            model.closeSettingsWindow();
        else
            model.confirmQuitApplication(item);
    };
    actions.close = [&host, item] { close(host, item); };
    actions.armResize = [&host, item] { host.armResize(item.id); };
    return TaskMenus::taskMenu(item, model.settings(), actions);
}

Menu menu(const TaskButtonHost &host, const RunningAppGroup &group)
{
    return TaskMenus::groupMenu(group, groupActions(host, group));
}

Menu headerMenu(const TaskButtonHost &host, const RunningAppGroup &group)
{
    return TaskMenus::groupHeaderMenu(group, groupActions(host, group));
}

Menu rowMenu(const TaskButtonHost &host, const RunningAppItem &item)
{
    AppModel &model = host.model;
    WindowRowMenuActions actions;
    actions.setFirst = [&host, item] { host.setTaskPosition(rowDragID(item), {item.id}, true); };
    actions.setLast = [&host, item] { host.setTaskPosition(rowDragID(item), {item.id}, false); };
    actions.newGroup = [&model, item] { model.createCustomGroup({item}); };
    actions.addFavorite = [&model, item] { model.addToFavorites(item); };
    actions.quit = [&model, item] { model.confirmQuitApplication(item); };
    actions.close = [&model, item] { model.closeFrontWindow(item); };
    return TaskMenus::windowRowMenu(item, actions);
}

std::string rowDragID(const RunningAppItem &item)
{
    return std::string(Identifiers::groupWindowDragPrefix) + item.id;
}

}  // namespace korvane::TaskCommands
