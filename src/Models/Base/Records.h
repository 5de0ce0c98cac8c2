// The plain values that travel between the model and the views.
#pragma once

#include "Ports/Applications.h"
#include "Ports/Values/Image.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

using platform::ImagePtr;
using platform::Pid;

// One task on the bar: a window, or something that stands for a window.
struct RunningAppItem {
    std::string id;  // see Identifiers.h
    Pid processIdentifier = 0;
    std::int64_t windowIndex = 0;  // among the application's windows, in the order of reading
    std::string name;              // the tab's text
    std::string appName;
    ImagePtr icon;
    std::optional<std::string> bundleIdentifier;
    bool isActive = false;              // the focused window of the frontmost application
    bool hasNotificationBadge = false;  // the application shows a badge

    // Does not compare all fields: it is the same as showsTheSame(). Code that relies on this should call
    // showsTheSame().
    friend bool operator==(const RunningAppItem &left, const RunningAppItem &right);
};

// Whether the two are the same task and look alike: they have the same id, name, isActive and hasNotificationBadge. A
// change of the other fields needs no redraw.
inline bool showsTheSame(const RunningAppItem &left, const RunningAppItem &right)
{
    return left.isActive == right.isActive && left.hasNotificationBadge == right.hasNotificationBadge
           && left.id == right.id && left.name == right.name;
}

inline bool operator==(const RunningAppItem &left, const RunningAppItem &right)
{
    return showsTheSame(left, right);
}

// Whether two records are equal in every field.
bool isSameRecord(const RunningAppItem &left, const RunningAppItem &right);

// One application in the attention list.
struct AttentionAppItem {
    std::string id;
    Pid processIdentifier = 0;
    std::string name;
    ImagePtr icon;
    std::optional<std::string> bundleIdentifier;
    friend bool operator==(const AttentionAppItem &, const AttentionAppItem &) = default;
};

// Several tasks shown as one button.
struct RunningAppGroup {
    std::string id;
    std::string appName;  // for a custom group, the group's name
    ImagePtr icon;
    std::vector<RunningAppItem> windows;  // in task order
    bool isCustom = false;
    std::optional<std::string> customIconGlyph;

    // Of the first member; 0 without members.
    Pid processIdentifier() const;
    // Whether any member is active.
    bool isActive() const;
    // The button's text.
    std::string displayName() const;
};

// One element of a row of the bar: either one task or one group.
struct TaskbarEntry {
    std::string id;
    std::optional<RunningAppItem> item;
    std::optional<RunningAppGroup> group;

    static TaskbarEntry ofItem(RunningAppItem item);
    static TaskbarEntry ofGroup(RunningAppGroup group);

    std::string title() const;
    bool isGrouped() const { return group.has_value(); }
};

// What is remembered of a running application for as long as its process lives.
struct AppMetadata {
    std::string name;
    std::optional<std::string> bundleIdentifier;
    ImagePtr icon;
};

// An application in the start menu's own list.
struct StartFavorite {
    std::string id, name, kind, value;
    std::optional<std::string> bundleIdentifier;
    friend bool operator==(const StartFavorite &, const StartFavorite &) = default;
};

// A launcher that opens a web address.
struct CustomWebLauncher {
    std::string id, name, url, glyph;
    friend bool operator==(const CustomWebLauncher &, const CustomWebLauncher &) = default;
};

}  // namespace korvane
