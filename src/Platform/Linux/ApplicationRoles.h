// The fixed identifiers that stand for a role on the desktop, and the rules by which an installed application fills a
// role.
#pragma once

#include <span>
#include <string_view>

namespace korvane::platform {

// The fields are tried in this order: the user's default for a kind of content, an application known to fill the role
// well, then any application whose entry has the category. Lists are separated by semicolons and may be empty.
struct ApplicationRole {
    std::string_view identifier;
    std::string_view contentTypes;
    std::string_view program;  // a command that the system's alternatives link to the chosen program
    std::string_view knownEntries;
    std::string_view category;
};

// If an application could fill several roles, it gets the first of them.
std::span<const ApplicationRole> applicationRoles();

// Null when the identifier is not a role.
const ApplicationRole *findApplicationRole(std::string_view identifier);

}  // namespace korvane::platform
