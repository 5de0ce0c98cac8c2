// The records of the model as the files write them, and back. Icons are left out or given as a name.
#pragma once

#include "tests/vectors/driver/Case.h"

#include "Models/Base/Records.h"
#include "Models/Settings/SettingsTable.h"

namespace korvane::vectors {

template <typename T> Json optionalJson(const std::optional<T> &value)
{
    return value ? Json(*value) : Json();
}

// Absent for a member that is missing or null.
template <typename T> std::optional<T> optionalMember(const Json &object, const char *key)
{
    const auto found = object.find(key);
    return found == object.end() || found->is_null() ? std::nullopt : std::optional<T>(found->get<T>());
}

// The same picture for the same name.
ImagePtr iconNamed(const std::string &name);

Json jsonOf(const RunningAppItem &item);
Json jsonOf(const AttentionAppItem &item);
Json jsonOf(const StartFavorite &favorite);
Json jsonOf(const CustomWebLauncher &launcher);
template <typename Record> Json jsonOfList(const std::vector<Record> &records)
{
    Json list = Json::array();
    for (const Record &record : records)
        list.push_back(jsonOf(record));
    return list;
}
Json idsOf(const std::vector<RunningAppItem> &items);

RunningAppItem itemFrom(const Json &json);
AttentionAppItem attentionItemFrom(const Json &json);
RunningAppGroup groupFrom(const Json &json);
StartFavorite favoriteFrom(const Json &json);
CustomWebLauncher webLauncherFrom(const Json &json);

Json settingJson(const SettingsValues &values, const Setting &setting);
// Assigns the named settings.
void readSettings(const Json &json, SettingsValues &values);
// Calls `assign` with the member and its value.
template <typename Assign> void withSettingValue(const Setting &setting, const Json &json, Assign assign);

template <typename T> inline constexpr bool isChoice = false;
template <typename Enum> inline constexpr bool isChoice<Choice<Enum>> = true;

template <typename T> T settingFrom(const Json &json)
{
    if constexpr (isChoice<T>)
        return T(json.get<std::string>());
    else
        return json.get<T>();
}
template <> FavoriteList settingFrom<FavoriteList>(const Json &json);
template <> WebLauncherList settingFrom<WebLauncherList>(const Json &json);

template <typename Assign> void withSettingValue(const Setting &setting, const Json &json, Assign assign)
{
    std::visit([&]<typename T>(T SettingsValues::*member) { assign(member, settingFrom<T>(json)); }, setting.member);
}

}  // namespace korvane::vectors
