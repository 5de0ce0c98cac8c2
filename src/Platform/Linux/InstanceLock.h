// Allows one program of a kind at a time for each user. It locks a file in a folder that nobody else can write to.
#pragma once

#include "Platform/Linux/Descriptor.h"

#include <filesystem>
#include <string>
#include <vector>

namespace korvane::platform {

class InstanceLock {
public:
    enum class Outcome {
        taken,        // by us, until the object is destroyed or the process ends
        heldByOther,  // another process of the same user has it
        obstructed,   // somebody else's file is in the way; `obstacle` names it
        unavailable,  // there is no folder that we can write to
    };

    // The folder in $XDG_RUNTIME_DIR if that belongs to the user, and a folder of the user in the system's temporary
    // folder.
    static std::vector<std::filesystem::path> standardFolders();

    // Takes the lock with that name in the first folder that can be used. A missing folder is made, for the owner only.
    // It follows no symbolic link and waits for nothing.
    Outcome take(const std::vector<std::filesystem::path> &folders, const std::string &name);
    const std::filesystem::path &obstacle() const { return inTheWay; }

private:
    Outcome takeIn(const std::filesystem::path &folder, const std::string &name);

    Descriptor file;
    std::filesystem::path inTheWay;
};

}  // namespace korvane::platform
