// All persisted settings in one table: key, property, type, default and group, in the order of writing. Loading,
// saving, restoring and the tests all use it. A new setting needs one member here and one line in SettingsTable.cpp.
#pragma once

#include "Models/Base/Records.h"
#include "Models/Settings/Choices.h"
#include "Ports/Defaults.h"

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace korvane {

using platform::StringMap;
using StringList = std::vector<std::string>;
using StringSet = std::set<std::string>;
using FavoriteList = std::vector<StartFavorite>;
using WebLauncherList = std::vector<CustomWebLauncher>;

// The nine favorites of a first run.
FavoriteList defaultFavorites();

// Every persisted property by its name, at its default.
struct SettingsValues {
    bool quicklyLaunchSafari = true;
    bool quicklyLaunchFinder = true;
    bool quicklyLaunchPhotos = false;
    bool quicklyLaunchTextEdit = true;
    bool quicklyLaunchTerminal = false;
    double quicklyLaunchIconSize = 18.0;
    StringList customQuicklyLaunchPaths;
    StringMap customQuicklyLaunchIconPaths;
    WebLauncherList customWebLaunchers;
    StringList quicklyLaunchOrder = {"finder", "safari", "textEdit"};

    bool autoHideEnabled = true;
    bool blueStripsEnabled = true;
    std::string activeWindowStripColor = "Custom:#093D91";
    std::string lastWindowStripColor = "Custom:#674927";
    Choice<GroupingMode> groupingMode = GroupingMode::asNeeded;
    Choice<NewWindowsPlace> newWindowsGo = NewWindowsPlace::last;
    Choice<NotificationBadgeStyle> notificationBadgeStyle = NotificationBadgeStyle::triangle;
    bool showCloseGlyph = true;
    bool expertSkipUnchangedRefreshes = true;
    bool expertCacheNotificationBadges = true;
    double expertBadgeScanSeconds = 4.0;
    bool expertCoalesceActionRefreshes = true;
    bool expertPauseWhenDisplaySleeps = true;
    bool expertAvoidRedundantPanelWrites = true;
    bool disableDonateOnStartMenu = false;
    double topOverflowBorderHeight = 2.0;
    double menuOpacity = 1.0;
    double barOpacity = 1.0;
    double tabColorOpacity = 0.5;
    double volumeScrollRate = 5.0;
    double brightnessScrollRate = 5.0;
    bool showAttentionApps = true;
    Choice<AttentionListMode> attentionListMode = AttentionListMode::always;
    Choice<FilterPolicy> attentionIndicatorPolicy = FilterPolicy::blacklist;
    StringList attentionIndicatorApps;
    bool lockApplicationsContainerToTaskbar = false;
    bool invertTaskbarButtonHighlight = false;
    Choice<MediaSliderDisplay> mediaSliderDisplay = MediaSliderDisplay::overflow;
    bool autoHideOverflow = true;
    double tuckAwayOverflowPixels = 7.0;
    double overflowCardOverlapPixels = 2.0;
    std::int64_t appRefreshRate = 0;
    std::int64_t animationDurationMS = 400;
    std::int64_t appMonitorRefreshRate = 6;
    std::int64_t taskbarRefreshSeconds = 2;
    Choice<FilterPolicy> specificGroupingPolicy = FilterPolicy::whitelist;
    StringList specificGroupingApps;
    Choice<StartIcon> startIconChoice = StartIcon::application;
    std::string customStartIcon = "ⓚ";
    std::string customStartImagePath;

    StringMap customGroupNames;
    StringMap customGroupIcons;
    StringMap customGroupMembers;
    StringSet forcedUngroupedWindows;

    FavoriteList startFavorites = defaultFavorites();
    StringList recentWindowIDs;
    StringList blacklist = {"Finder"};
    StringList taskOrder;
    StringMap defaultAppColors = {{"com.apple.finder", "Custom:#0D1F36"}, {"com.apple.Safari", "Custom:#183965"}};
};

// A group is written together. A setting that stands alone is written by the operations that change it.
enum class SettingGroup { quicklyLaunch, appearance, customGroups, alone };

using SettingMember =
    std::variant<bool SettingsValues::*, double SettingsValues::*, std::int64_t SettingsValues::*,
                 std::string SettingsValues::*, Choice<GroupingMode> SettingsValues::*,
                 Choice<MediaSliderDisplay> SettingsValues::*, Choice<NewWindowsPlace> SettingsValues::*,
                 Choice<StartIcon> SettingsValues::*, Choice<NotificationBadgeStyle> SettingsValues::*,
                 Choice<AttentionListMode> SettingsValues::*, Choice<FilterPolicy> SettingsValues::*,
                 StringList SettingsValues::*, StringMap SettingsValues::*, StringSet SettingsValues::*,
                 FavoriteList SettingsValues::*, WebLauncherList SettingsValues::*>;

struct Setting {
    std::string_view key;
    std::string_view property;
    SettingGroup group;
    SettingMember member;
    bool savesOnChange;  // a plain value saves its group at each change; lists are saved by their operations
};

// In the order of writing.
std::span<const Setting> settingsTable();
// The row of a member. A member without a row is a programming error that ends the process.
const Setting &settingOf(const SettingMember &member);
// Null when there is no such property.
const Setting *findSetting(std::string_view property);

}  // namespace korvane
