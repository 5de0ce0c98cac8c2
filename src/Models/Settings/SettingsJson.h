// The two settings that are stored as data. Each is a list of records, stored as one JSON array.
#pragma once

#include "Models/Settings/SettingsTable.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace korvane::SettingsJson {

using Bytes = std::vector<std::uint8_t>;

// Absent when a text is not UTF-8. The caller must then store nothing.
std::optional<Bytes> encode(const FavoriteList &favorites);
std::optional<Bytes> encode(const WebLauncherList &launchers);
// Absent unless the data is an array of objects that have every required member as text.
std::optional<FavoriteList> decodeFavorites(std::span<const std::uint8_t> data);
std::optional<WebLauncherList> decodeWebLaunchers(std::span<const std::uint8_t> data);

}  // namespace korvane::SettingsJson
