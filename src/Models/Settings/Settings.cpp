#include "Models/Settings/Settings.h"

#include "Models/Base/Assert.h"
#include "Models/Settings/SettingsJson.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace korvane {
namespace {

constexpr std::string_view seededKey = "didSeedDefaultAppColors";

std::optional<bool> read(platform::Defaults &defaults, std::string_view key, const bool &)
{
    return defaults.boolean(key);
}

std::optional<double> read(platform::Defaults &defaults, std::string_view key, const double &)
{
    return defaults.number(key);
}

std::optional<std::int64_t> read(platform::Defaults &defaults, std::string_view key, const std::int64_t &)
{
    return defaults.integer(key);
}

std::optional<std::string> read(platform::Defaults &defaults, std::string_view key, const std::string &)
{
    return defaults.string(key);
}

template <typename Enum>
std::optional<Choice<Enum>> read(platform::Defaults &defaults, std::string_view key, const Choice<Enum> &)
{
    auto text = defaults.string(key);
    return text ? std::optional(Choice<Enum>(std::move(*text))) : std::nullopt;
}

std::optional<StringList> read(platform::Defaults &defaults, std::string_view key, const StringList &)
{
    return defaults.strings(key);
}

std::optional<StringMap> read(platform::Defaults &defaults, std::string_view key, const StringMap &)
{
    return defaults.dictionary(key);
}

std::optional<StringSet> read(platform::Defaults &defaults, std::string_view key, const StringSet &)
{
    const auto list = defaults.strings(key);
    return list ? std::optional(StringSet(list->begin(), list->end())) : std::nullopt;
}

std::optional<FavoriteList> read(platform::Defaults &defaults, std::string_view key, const FavoriteList &)
{
    const auto data = defaults.data(key);
    return data ? SettingsJson::decodeFavorites(*data) : std::nullopt;
}

std::optional<WebLauncherList> read(platform::Defaults &defaults, std::string_view key, const WebLauncherList &)
{
    const auto data = defaults.data(key);
    return data ? SettingsJson::decodeWebLaunchers(*data) : std::nullopt;
}

void store(platform::Defaults &defaults, std::string_view key, bool value)
{
    defaults.setBoolean(key, value);
}

void store(platform::Defaults &defaults, std::string_view key, double value)
{
    defaults.setNumber(key, value);
}

void store(platform::Defaults &defaults, std::string_view key, std::int64_t value)
{
    defaults.setInteger(key, value);
}

void store(platform::Defaults &defaults, std::string_view key, const std::string &value)
{
    defaults.setString(key, value);
}

template <typename Enum> void store(platform::Defaults &defaults, std::string_view key, const Choice<Enum> &value)
{
    defaults.setString(key, std::string(value.text()));
}

void store(platform::Defaults &defaults, std::string_view key, const StringList &value)
{
    defaults.setStrings(key, value);
}

void store(platform::Defaults &defaults, std::string_view key, const StringMap &value)
{
    defaults.setDictionary(key, value);
}

void store(platform::Defaults &defaults, std::string_view key, const StringSet &value)
{
    defaults.setStrings(key, StringList(value.begin(), value.end()));
}

// If the value can't be encoded, the stored value stays as it is.
template <typename Record>
void store(platform::Defaults &defaults, std::string_view key, const std::vector<Record> &value)
{
    if (const auto data = SettingsJson::encode(value))
        defaults.setData(key, *data);
}

}  // namespace

Settings::Settings(platform::Defaults &defaultsStore) : defaults(defaultsStore)
{
    load();
    loadMigrated();
}

void Settings::load()
{
    for (const Setting &setting : settingsTable())
        std::visit(
            [&](auto member) {
                if (auto stored = read(defaults, setting.key, current.*member))
                    current.*member = std::move(*stored);
            },
            setting.member);
}

void Settings::loadMigrated()
{
    using V = SettingsValues;
    const auto keyOf = [](const SettingMember &member) { return settingOf(member).key; };
    if (!defaults.boolean(seededKey).value_or(false)) {
        current.defaultAppColors = V().defaultAppColors;
        save(&V::defaultAppColors);
        defaults.setBoolean(seededKey, true);
    } else if (!defaults.dictionary(keyOf(&V::defaultAppColors))) {
        current.defaultAppColors.clear();
    }

    if (!defaults.string(keyOf(&V::groupingMode)))
        if (const auto grouped = defaults.boolean("groupTabsEnabled"))
            current.groupingMode = *grouped ? GroupingMode::always : GroupingMode::never;
    if (!defaults.string(keyOf(&V::notificationBadgeStyle)))
        if (const auto shown = defaults.boolean("notificationIndicatorsEnabled"); shown && !*shown)
            current.notificationBadgeStyle = NotificationBadgeStyle::none;
    // If the list named the only applications that may raise the indicator, an empty list would allow none.
    if (current.attentionIndicatorApps.empty())
        current.attentionIndicatorPolicy = FilterPolicy::blacklist;
    if (!current.startIconChoice.value())
        current.startIconChoice = V().startIconChoice;
    if (defaults.strings(keyOf(&V::blacklist)) != current.blacklist)
        save(&V::blacklist);
}

void Settings::save(SettingGroup group)
{
    for (const Setting &setting : settingsTable())
        if (setting.group == group)
            write(setting);
}

void Settings::write(const Setting &setting)
{
    std::visit([&](auto member) { store(defaults, setting.key, current.*member); }, setting.member);
}

void Settings::forgetDefaultColors()
{
    current.defaultAppColors.clear();
    forget(&SettingsValues::defaultAppColors);
    defaults.setBoolean(seededKey, true);
}

}  // namespace korvane
