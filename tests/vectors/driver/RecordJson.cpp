#include "tests/vectors/driver/RecordJson.h"

#include <stdexcept>

namespace korvane::vectors {

ImagePtr iconNamed(const std::string &name)
{
    static std::map<std::string, ImagePtr> icons;
    ImagePtr &icon = icons[name];
    if (!icon)
        icon = std::make_shared<const platform::Image>();
    return icon;
}

Json jsonOf(const RunningAppItem &item)
{
    return {{"id", item.id},
            {"processIdentifier", item.processIdentifier},
            {"windowIndex", item.windowIndex},
            {"name", item.name},
            {"appName", item.appName},
            {"bundleIdentifier", optionalJson(item.bundleIdentifier)},
            {"isActive", item.isActive},
            {"hasNotificationBadge", item.hasNotificationBadge}};
}

Json jsonOf(const AttentionAppItem &item)
{
    return {{"id", item.id},
            {"processIdentifier", item.processIdentifier},
            {"name", item.name},
            {"bundleIdentifier", optionalJson(item.bundleIdentifier)}};
}

Json jsonOf(const StartFavorite &favorite)
{
    return {{"id", favorite.id},
            {"name", favorite.name},
            {"kind", favorite.kind},
            {"value", favorite.value},
            {"bundleIdentifier", optionalJson(favorite.bundleIdentifier)}};
}

Json jsonOf(const CustomWebLauncher &launcher)
{
    return {{"id", launcher.id}, {"name", launcher.name}, {"url", launcher.url}, {"glyph", launcher.glyph}};
}

Json idsOf(const std::vector<RunningAppItem> &items)
{
    Json ids = Json::array();
    for (const RunningAppItem &item : items)
        ids.push_back(item.id);
    return ids;
}

RunningAppItem itemFrom(const Json &json)
{
    RunningAppItem item;
    item.id = json.at("id");
    item.processIdentifier = json.at("processIdentifier");
    item.windowIndex = json.at("windowIndex");
    item.name = json.at("name");
    item.appName = json.at("appName");
    item.icon = iconNamed(json.value("icon", ""));
    item.bundleIdentifier = optionalMember<std::string>(json, "bundleIdentifier");
    item.isActive = json.at("isActive");
    item.hasNotificationBadge = json.at("hasNotificationBadge");
    return item;
}

AttentionAppItem attentionItemFrom(const Json &json)
{
    AttentionAppItem item;
    item.id = json.at("id");
    item.processIdentifier = json.at("processIdentifier");
    item.name = json.at("name");
    item.icon = iconNamed(json.value("icon", ""));
    item.bundleIdentifier = optionalMember<std::string>(json, "bundleIdentifier");
    return item;
}

RunningAppGroup groupFrom(const Json &json)
{
    RunningAppGroup group;
    group.id = json.at("id");
    group.appName = json.at("appName");
    group.icon = iconNamed("");
    for (const Json &window : json.at("windows"))
        group.windows.push_back(itemFrom(window));
    group.isCustom = json.at("isCustom");
    group.customIconGlyph = optionalMember<std::string>(json, "customIconGlyph");
    return group;
}

StartFavorite favoriteFrom(const Json &json)
{
    return {json.at("id"), json.at("name"), json.at("kind"), json.at("value"),
            optionalMember<std::string>(json, "bundleIdentifier")};
}

CustomWebLauncher webLauncherFrom(const Json &json)
{
    return {json.at("id"), json.at("name"), json.at("url"), json.at("glyph")};
}

template <> FavoriteList settingFrom<FavoriteList>(const Json &json)
{
    FavoriteList list;
    for (const Json &each : json)
        list.push_back(favoriteFrom(each));
    return list;
}

template <> WebLauncherList settingFrom<WebLauncherList>(const Json &json)
{
    WebLauncherList list;
    for (const Json &each : json)
        list.push_back(webLauncherFrom(each));
    return list;
}

Json settingJson(const SettingsValues &values, const Setting &setting)
{
    return std::visit(
        [&]<typename T>(T SettingsValues::*member) {
            if constexpr (std::is_same_v<T, FavoriteList> || std::is_same_v<T, WebLauncherList>)
                return jsonOfList(values.*member);
            else if constexpr (isChoice<T>)
                return Json((values.*member).text());
            else
                return Json(values.*member);
        },
        setting.member);
}

void readSettings(const Json &json, SettingsValues &values)
{
    for (const auto &[property, value] : json.items()) {
        const Setting *setting = findSetting(property);
        if (!setting)
            throw std::runtime_error("no setting " + property);
        withSettingValue(*setting, value, [&](auto member, auto read) { values.*member = std::move(read); });
    }
}

}  // namespace korvane::vectors
