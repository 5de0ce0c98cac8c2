// Files that belong only to the user. A file is replaced completely or not at all.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::platform {

// Makes the directory and its missing parents, for the owner only. Returns nothing on success, otherwise the reason.
std::optional<std::string> makePrivateDirectory(const std::filesystem::path &directory);

// Writes the contents to the disk as a temporary file in the same directory, and then renames it to the file. After a
// crash either the old file or the new one is there. If the file is a symbolic link, its target is replaced. Returns
// nothing on success, otherwise the reason.
std::optional<std::string> replacePrivateFile(const std::filesystem::path &file, std::string_view contents);

struct FileContents {
    enum class Outcome { read, missing, unreadable };
    Outcome outcome = Outcome::unreadable;
    std::string bytes;
    std::string reason;  // why the file is unreadable
};

// Reads a regular file of at most that many bytes. Anything else, such as a pipe, counts as unreadable, and the
// function does not wait for it.
FileContents readFile(const std::filesystem::path &file, std::size_t largest);

}  // namespace korvane::platform
