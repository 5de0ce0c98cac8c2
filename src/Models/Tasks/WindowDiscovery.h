// From the platform's windows to tasks. Two readings: each application's own window list, and the window server's
// on-screen list where single windows may not be read.
#pragma once

#include "Models/Base/Records.h"
#include "Ports/Platform.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace korvane {

using ApplicationList = std::vector<const platform::Application *>;
using MetadataOf = std::function<const AppMetadata &(const platform::Application &)>;

class WindowDiscovery {
public:
    explicit WindowDiscovery(platform::Platform &system) : platform(system) {}

    // The elements of the application's windows; absent when it does not answer.
    std::optional<std::vector<platform::Element>> windows(Pid pid) const;
    // Trimmed; absent when there is no title, or when the title has only blanks.
    std::optional<std::string> title(const platform::Element &window) const;
    std::optional<std::string> axIdentifier(const platform::Element &window) const;
    std::string stableWindowIdentifier(const platform::Element &window) const;
    // False also when it can't be read.
    bool isMinimized(const platform::Element &window) const;
    // Finds a task's window again: by identifier, else by title at its index, else the first with its title. Null when
    // there is none.
    platform::Element resolveWindow(const RunningAppItem &item) const;

    // Every window that the application lists, also minimised ones.
    std::vector<RunningAppItem> accessibleWindowItems(const platform::Application &application,
                                                      const AppMetadata &metadata, bool hasBadge) const;
    // The windows on the screen of the given applications, front to back.
    std::vector<RunningAppItem> visibleWindowItems(const ApplicationList &applications,
                                                   const std::unordered_set<std::string> &badgedApps,
                                                   const MetadataOf &metadataOf) const;

private:
    platform::Platform &platform;
};

// Names of tasks that are not to be shown. Compares whole names without regard to case.
class NameFilter {
public:
    explicit NameFilter(platform::Text &textServices) : text(textServices) {}

    // Whether the name is in the list.
    bool matches(const std::vector<std::string> &names, std::string_view name) const;
    // Adds the trimmed name. Returns false and does nothing when the name is blank or already in the list.
    bool add(std::vector<std::string> &names, std::string_view name) const;
    // Removes every entry that equals the name.
    void remove(std::vector<std::string> &names, std::string_view name) const;
    // In the order of the user's language.
    void sort(std::vector<std::string> &names) const;

private:
    platform::Text &text;
};

}  // namespace korvane
