// The applications that the user has put into the start menu.
#include "Models/AppModel/AppModel.h"

#include <algorithm>

namespace korvane {
namespace {

StartFavorite favoriteOf(const std::string &appName, const std::optional<std::string> &bundleIdentifier)
{
    const std::string &value = bundleIdentifier ? *bundleIdentifier : appName;
    return {"app:" + value, appName, "app", value, bundleIdentifier};
}

}  // namespace

void AppModel::addToFavorites(const RunningAppItem &item)
{
    addFavorite(favoriteOf(item.appName, item.bundleIdentifier));
}

void AppModel::addToFavorites(const RunningAppGroup &group)
{
    if (!group.isCustom && !group.windows.empty())
        addFavorite(favoriteOf(group.appName, group.windows.front().bundleIdentifier));
}

void AppModel::addFavorite(StartFavorite favorite)
{
    auto &favorites = store.edit().startFavorites;
    if (std::any_of(favorites.begin(), favorites.end(),
                    [&](const StartFavorite &known) { return known.id == favorite.id; }))
        return;
    favorites.push_back(std::move(favorite));
    publish(&SettingsValues::startFavorites);
    saveStartFavorites();
}

}  // namespace korvane
