#include "Models/Settings/SettingsTable.h"

#include "Models/Base/Assert.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace korvane {
namespace {

using V = SettingsValues;

template <typename T> inline constexpr bool isList = !std::is_arithmetic_v<T> && !std::is_same_v<T, std::string>;
template <typename Enum> inline constexpr bool isList<Choice<Enum>> = false;

constexpr bool isPlain(const SettingMember &member)
{
    return std::visit([]<typename T>(T V::*) { return !isList<T>; }, member);
}

constexpr Setting quicklyLaunch(std::string_view key, std::string_view property, SettingMember member)
{
    return {key, property, SettingGroup::quicklyLaunch, member, isPlain(member)};
}

constexpr Setting appearance(std::string_view property, SettingMember member)
{
    return {property, property, SettingGroup::appearance, member, isPlain(member)};
}

constexpr Setting customGroups(std::string_view property, SettingMember member)
{
    return {property, property, SettingGroup::customGroups, member, false};
}

constexpr Setting alone(std::string_view key, std::string_view property, SettingMember member)
{
    return {key, property, SettingGroup::alone, member, false};
}

constexpr std::array table{
    quicklyLaunch("quickLaunchSafari", "quicklyLaunchSafari", &V::quicklyLaunchSafari),
    quicklyLaunch("quickLaunchFinder", "quicklyLaunchFinder", &V::quicklyLaunchFinder),
    quicklyLaunch("quickLaunchPhotos", "quicklyLaunchPhotos", &V::quicklyLaunchPhotos),
    quicklyLaunch("quickLaunchTextEdit", "quicklyLaunchTextEdit", &V::quicklyLaunchTextEdit),
    quicklyLaunch("quickLaunchTerminal", "quicklyLaunchTerminal", &V::quicklyLaunchTerminal),
    quicklyLaunch("quickLaunchIconSize", "quicklyLaunchIconSize", &V::quicklyLaunchIconSize),
    quicklyLaunch("customQuickLaunchPaths", "customQuicklyLaunchPaths", &V::customQuicklyLaunchPaths),
    quicklyLaunch("customQuickLaunchIconPaths", "customQuicklyLaunchIconPaths", &V::customQuicklyLaunchIconPaths),
    quicklyLaunch("customWebLaunchers", "customWebLaunchers", &V::customWebLaunchers),
    quicklyLaunch("quicklyLaunchOrder", "quicklyLaunchOrder", &V::quicklyLaunchOrder),

    appearance("autoHideEnabled", &V::autoHideEnabled),
    appearance("blueStripsEnabled", &V::blueStripsEnabled),
    appearance("activeWindowStripColor", &V::activeWindowStripColor),
    appearance("lastWindowStripColor", &V::lastWindowStripColor),
    appearance("groupingMode", &V::groupingMode),
    appearance("newWindowsGo", &V::newWindowsGo),
    appearance("notificationBadgeStyle", &V::notificationBadgeStyle),
    appearance("showCloseGlyph", &V::showCloseGlyph),
    appearance("expertSkipUnchangedRefreshes", &V::expertSkipUnchangedRefreshes),
    appearance("expertCacheNotificationBadges", &V::expertCacheNotificationBadges),
    appearance("expertBadgeScanSeconds", &V::expertBadgeScanSeconds),
    appearance("expertCoalesceActionRefreshes", &V::expertCoalesceActionRefreshes),
    appearance("expertPauseWhenDisplaySleeps", &V::expertPauseWhenDisplaySleeps),
    appearance("expertAvoidRedundantPanelWrites", &V::expertAvoidRedundantPanelWrites),
    appearance("disableDonateOnStartMenu", &V::disableDonateOnStartMenu),
    appearance("topOverflowBorderHeight", &V::topOverflowBorderHeight),
    appearance("menuOpacity", &V::menuOpacity),
    appearance("barOpacity", &V::barOpacity),
    appearance("tabColorOpacity", &V::tabColorOpacity),
    appearance("volumeScrollRate", &V::volumeScrollRate),
    appearance("brightnessScrollRate", &V::brightnessScrollRate),
    appearance("showAttentionApps", &V::showAttentionApps),
    appearance("attentionListMode", &V::attentionListMode),
    appearance("attentionIndicatorPolicy", &V::attentionIndicatorPolicy),
    appearance("attentionIndicatorApps", &V::attentionIndicatorApps),
    appearance("lockApplicationsContainerToTaskbar", &V::lockApplicationsContainerToTaskbar),
    appearance("invertTaskbarButtonHighlight", &V::invertTaskbarButtonHighlight),
    appearance("mediaSliderDisplay", &V::mediaSliderDisplay),
    appearance("autoHideOverflow", &V::autoHideOverflow),
    appearance("tuckAwayOverflowPixels", &V::tuckAwayOverflowPixels),
    appearance("overflowCardOverlapPixels", &V::overflowCardOverlapPixels),
    appearance("appRefreshRate", &V::appRefreshRate),
    appearance("animationDurationMS", &V::animationDurationMS),
    appearance("appMonitorRefreshRate", &V::appMonitorRefreshRate),
    appearance("taskbarRefreshSeconds", &V::taskbarRefreshSeconds),
    appearance("specificGroupingPolicy", &V::specificGroupingPolicy),
    appearance("specificGroupingApps", &V::specificGroupingApps),
    appearance("startIconChoice", &V::startIconChoice),
    appearance("customStartIcon", &V::customStartIcon),
    appearance("customStartImagePath", &V::customStartImagePath),

    customGroups("customGroupNames", &V::customGroupNames),
    customGroups("customGroupIcons", &V::customGroupIcons),
    customGroups("customGroupMembers", &V::customGroupMembers),
    customGroups("forcedUngroupedWindows", &V::forcedUngroupedWindows),

    alone("startFavorites", "startFavorites", &V::startFavorites),
    alone("recentWindowIDs", "recentWindowIDs", &V::recentWindowIDs),
    alone("taskbarBlacklist", "blacklist", &V::blacklist),
    alone("taskOrder", "taskOrder", &V::taskOrder),
    alone("defaultAppColors", "defaultAppColors", &V::defaultAppColors),
};

}  // namespace

FavoriteList defaultFavorites()
{
    static constexpr std::array<std::array<std::string_view, 2>, 9> applications{{
        {"Mail", "com.apple.mail"},
        {"Calendar", "com.apple.iCal"},
        {"Notes", "com.apple.Notes"},
        {"FaceTime", "com.apple.FaceTime"},
        {"Messages", "com.apple.MobileSMS"},
        {"Photos", "com.apple.Photos"},
        {"Finder", "com.apple.finder"},
        {"Safari", "com.apple.Safari"},
        {"Calculator", "com.apple.calculator"},
    }};
    FavoriteList favorites;
    for (const auto &[name, bundle] : applications) {
        const std::string identifier(bundle);
        favorites.push_back({"app:" + identifier, std::string(name), "app", identifier, identifier});
    }
    return favorites;
}

std::span<const Setting> settingsTable()
{
    return table;
}

const Setting &settingOf(const SettingMember &member)
{
    const auto *const found =
        std::find_if(table.begin(), table.end(), [&](const Setting &setting) { return setting.member == member; });
    KORVANE_ASSERT(found != table.end(), "a setting is missing from the table");
    return *found;
}

const Setting *findSetting(std::string_view property)
{
    const auto *const found =
        std::find_if(table.begin(), table.end(), [&](const Setting &setting) { return setting.property == property; });
    return found == table.end() ? nullptr : found;
}

}  // namespace korvane
