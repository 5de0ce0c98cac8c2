// What the model announces: one of its own properties, or a setting, which is named by its member. There is no other
// way to name a property.
#pragma once

#include "Models/Settings/SettingsTable.h"

#include <string_view>

namespace korvane {

enum class ModelProperty {
    modelChanged,  // several properties, or something derived from them
    accessibilityTrusted,
    activeBlueStripWindowID,
    attentionApps,
    liveTabColors,
    openGroupedLists,
    previousWindowIDsByApplication,
    runningApps,
    settingsWindowVisible,
    systemIsInactive,
    taskOverflowRowCount,
    taskOverflowRowsVisible,
    taskRowsExpanded,
};

class Property {
public:
    Property(ModelProperty property) : own(property) {}
    Property(const Setting &which) : setting(&which) {}
    template <typename T> Property(T SettingsValues::*member) : setting(&settingOf(member)) {}

    std::string_view name() const;

    friend bool operator==(const Property &, const Property &) = default;
    template <typename T> friend bool operator==(const Property &property, T SettingsValues::*member)
    {
        return property.setting && property.setting->member == SettingMember(member);
    }

private:
    ModelProperty own = ModelProperty::modelChanged;
    const Setting *setting = nullptr;  // null for one of the model's own
};

}  // namespace korvane
