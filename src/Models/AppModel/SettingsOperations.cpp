// Saving the settings in their groups, and restoring the defaults.
#include "Models/AppModel/AppModel.h"

namespace korvane {

using V = SettingsValues;

void AppModel::settingChanged(const Setting &setting)
{
    if (Property(setting) == &V::taskbarRefreshSeconds) {
        // Only a running timer is replaced, because a change during a task resize must not start the timer early.
        if (refreshTimer)
            configureRefreshTimer();
    }
    // The result of the next tick may depend on this setting.
    if (refreshTimerParked) {
        lastAskedRefresh = platform.loop.monotonicNow();
        configureRefreshTimer();
    }
    listIsSorted = false;
    publish(setting);
    // Everything that is derived from these settings is computed again.
    if (setting.group == SettingGroup::quicklyLaunch && setting.savesOnChange)
        announceChange();
}

void AppModel::saveQuicklyLaunchSettings()
{
    store.save(SettingGroup::quicklyLaunch);
    announceChange();
}

void AppModel::saveAppearanceSettings()
{
    store.save(SettingGroup::appearance);
}

void AppModel::saveCustomGroups()
{
    store.save(SettingGroup::customGroups);
    announceChange();
}

void AppModel::saveStartFavorites()
{
    store.save(&V::startFavorites);
}

void AppModel::saveTaskOrder(std::vector<std::string> order)
{
    store.edit().taskOrder = std::move(order);
    listIsSorted = false;
    publish(&V::taskOrder);
    store.save(&V::taskOrder);
}

void AppModel::resetWindowStripColors()
{
    const V defaults;
    set(&V::activeWindowStripColor, defaults.activeWindowStripColor);
    set(&V::lastWindowStripColor, defaults.lastWindowStripColor);
}

void AppModel::restoreDefaults()
{
    V defaults;
    defaults.customStartIcon = "K";  // deliberately another letter than on the first run
    const auto restoreGroup = [&](SettingGroup group) {
        for (const Setting &setting : settingsTable())
            if (setting.group == group)
                std::visit([&](auto member) { store.assign(member, defaults.*member); }, setting.member);
    };
    restoreGroup(SettingGroup::appearance);

    liveColors.clear();
    manualColorIDs.clear();
    store.forgetDefaultColors();

    restoreGroup(SettingGroup::quicklyLaunch);
    store.edit().blacklist = defaults.blacklist;
    store.edit().startFavorites = defaults.startFavorites;
    saveStartFavorites();
    restoreGroup(SettingGroup::customGroups);

    saveCustomGroups();
    saveAppearanceSettings();
    saveQuicklyLaunchSettings();
    saveBlacklist();
    refresh();
}

}  // namespace korvane
