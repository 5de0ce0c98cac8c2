#include "Models/Settings/SettingsJson.h"

#include <nlohmann/json.hpp>

namespace korvane::SettingsJson {
namespace {

using Json = nlohmann::ordered_json;

std::optional<Bytes> bytes(const Json &json)
{
    try {
        const std::string text = json.dump();
        return Bytes(text.begin(), text.end());
    } catch (const Json::exception &) {
        return std::nullopt;
    }
}

std::optional<std::string> text(const Json &object, const char *member)
{
    const auto found = object.find(member);
    if (found == object.end() || !found->is_string())
        return std::nullopt;
    return found->get<std::string>();
}

// Decodes one list of records. The whole list is absent when any record can't be decoded.
template <typename Record, typename Decode>
std::optional<std::vector<Record>> decodeList(std::span<const std::uint8_t> data, Decode decode)
{
    const Json json = Json::parse(data.begin(), data.end(), nullptr, false);
    if (!json.is_array())
        return std::nullopt;
    std::vector<Record> records;
    for (const Json &object : json) {
        std::optional<Record> record;
        if (object.is_object())
            record = decode(object);
        if (!record)
            return std::nullopt;
        records.push_back(std::move(*record));
    }
    return records;
}

}  // namespace

std::optional<Bytes> encode(const FavoriteList &favorites)
{
    Json json = Json::array();
    for (const StartFavorite &favorite : favorites) {
        Json object = {
            {"id", favorite.id}, {"name", favorite.name}, {"kind", favorite.kind}, {"value", favorite.value}};
        if (favorite.bundleIdentifier)
            object["bundleIdentifier"] = *favorite.bundleIdentifier;
        json.push_back(std::move(object));
    }
    return bytes(json);
}

std::optional<Bytes> encode(const WebLauncherList &launchers)
{
    Json json = Json::array();
    for (const CustomWebLauncher &launcher : launchers)
        json.push_back(
            {{"id", launcher.id}, {"name", launcher.name}, {"url", launcher.url}, {"glyph", launcher.glyph}});
    return bytes(json);
}

std::optional<FavoriteList> decodeFavorites(std::span<const std::uint8_t> data)
{
    return decodeList<StartFavorite>(data, [](const Json &object) -> std::optional<StartFavorite> {
        const auto id = text(object, "id"), name = text(object, "name"), kind = text(object, "kind"),
                   value = text(object, "value");
        if (!id || !name || !kind || !value)
            return std::nullopt;
        StartFavorite favorite{*id, *name, *kind, *value, std::nullopt};
        if (const auto bundle = object.find("bundleIdentifier"); bundle != object.end() && !bundle->is_null()) {
            if (!bundle->is_string())
                return std::nullopt;
            favorite.bundleIdentifier = bundle->get<std::string>();
        }
        return favorite;
    });
}

std::optional<WebLauncherList> decodeWebLaunchers(std::span<const std::uint8_t> data)
{
    return decodeList<CustomWebLauncher>(data, [](const Json &object) -> std::optional<CustomWebLauncher> {
        const auto id = text(object, "id"), name = text(object, "name"), url = text(object, "url"),
                   glyph = text(object, "glyph");
        if (!id || !name || !url || !glyph)
            return std::nullopt;
        return CustomWebLauncher{*id, *name, *url, *glyph};
    });
}

}  // namespace korvane::SettingsJson
