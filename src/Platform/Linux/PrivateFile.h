// Files that belong to the user alone, replaced as a whole or not at all.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::platform {

// Makes the directory and those above it that are missing, for the owner only. Absent on success, else the reason.
std::optional<std::string> makePrivateDirectory(const std::filesystem::path &directory);

// Puts the contents into a temporary file of the same directory, on the disk, and then in the place of the file. A
// crash leaves the old file or the new one. Follows a symbolic link to the file it stands for. Absent on success, else
// the reason.
std::optional<std::string> replacePrivateFile(const std::filesystem::path &file, std::string_view contents);

struct FileContents {
    enum class Outcome { read, missing, unreadable };
    Outcome outcome = Outcome::unreadable;
    std::string bytes;
    std::string reason;  // why it is unreadable
};

// Reads a regular file of at most that many bytes. Anything else, such as a pipe, counts as unreadable and is not
// waited for.
FileContents readFile(const std::filesystem::path &file, std::size_t largest);

}  // namespace korvane::platform
