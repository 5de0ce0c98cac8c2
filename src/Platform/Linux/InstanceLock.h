// One program of a kind at a time for one user, by a lock on a file in a folder that nobody else can write to.
#pragma once

#include "Platform/Linux/Descriptor.h"

#include <filesystem>
#include <string>
#include <vector>

namespace korvane::platform {

class InstanceLock {
public:
    enum class Outcome {
        taken,        // by us, until the object goes or the process ends in whatever way
        heldByOther,  // another process of the same user has it
        obstructed,   // somebody else's file is in the way; `obstacle` names it
        unavailable,  // no folder can be written to
    };

    // $XDG_RUNTIME_DIR where it is the user's own, and a folder of the user's in the system's temporary one.
    static std::vector<std::filesystem::path> standardFolders();

    // Takes the lock of that name in the first of the folders that serves. Makes a folder that is missing, for the
    // owner alone. Follows no symbolic link and waits for nothing.
    Outcome take(const std::vector<std::filesystem::path> &folders, const std::string &name);
    const std::filesystem::path &obstacle() const { return inTheWay; }

private:
    Outcome takeIn(const std::filesystem::path &folder, const std::string &name);

    Descriptor file;
    std::filesystem::path inTheWay;
};

}  // namespace korvane::platform
