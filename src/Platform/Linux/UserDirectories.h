// The directories for a user's files, by the XDG base directory rules. It needs neither X nor a toolkit.
#pragma once

#include <filesystem>
#include <vector>

namespace korvane::platform {

// $HOME, otherwise the home in the password database. Empty when both are missing.
std::filesystem::path userHomeDirectory();
// $XDG_CONFIG_HOME, otherwise ~/.config. This function and the next ones ignore relative values and return an empty
// path without a home.
std::filesystem::path userConfigDirectory();
// $XDG_CACHE_HOME, otherwise ~/.cache.
std::filesystem::path userCacheDirectory();
// $XDG_DATA_HOME, otherwise ~/.local/share.
std::filesystem::path userDataDirectory();
// The user's data directory, then those of $XDG_DATA_DIRS. Files in earlier directories override files in later ones.
std::vector<std::filesystem::path> dataDirectories();
// The executable file of this process; empty when it is not known. If the file was replaced since, the path stays the
// same.
std::filesystem::path runningExecutable();

}  // namespace korvane::platform
