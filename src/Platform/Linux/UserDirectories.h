// Where a user's files belong, after the XDG base directory rules. Without X and without a toolkit.
#pragma once

#include <filesystem>
#include <vector>

namespace korvane::platform {

// $HOME, else what the password database says; empty when neither tells.
std::filesystem::path userHomeDirectory();
// $XDG_CONFIG_HOME, else ~/.config. Like the next ones it passes over relative values and is empty without a home.
std::filesystem::path userConfigDirectory();
// $XDG_CACHE_HOME, else ~/.cache.
std::filesystem::path userCacheDirectory();
// $XDG_DATA_HOME, else ~/.local/share.
std::filesystem::path userDataDirectory();
// The user's data directory, then those of $XDG_DATA_DIRS: the first holds what overrides the rest.
std::vector<std::filesystem::path> dataDirectories();
// The file of this process; empty when it can't be told. A file that was replaced since keeps its path.
std::filesystem::path runningExecutable();

}  // namespace korvane::platform
