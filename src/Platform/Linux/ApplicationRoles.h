// The fixed identifiers that stand for a role on the desktop, and how an installed application comes to fill it.
#pragma once

#include <span>
#include <string_view>

namespace korvane::platform {

// Tried in the order of the fields: the user's default for a kind of content, an application known to fill the role
// well, then any whose entry claims the category. Lists are separated by semicolons and may be empty.
struct ApplicationRole {
    std::string_view identifier;
    std::string_view contentTypes;
    std::string_view program;  // a command that the system's alternatives lead to the choice
    std::string_view knownEntries;
    std::string_view category;
};

// An application that could fill several reports the first of them.
std::span<const ApplicationRole> applicationRoles();

// Null for an identifier that is no role.
const ApplicationRole *findApplicationRole(std::string_view identifier);

}  // namespace korvane::platform
