// What has changed about the tasks, so that a bar need not update its other buttons.
#pragma once

#include <string>
#include <unordered_set>

namespace korvane {

struct TaskChanges {
    // Something that every button may depend on: a setting, a colour, a group.
    bool everything = false;
    // Tasks were added, removed or moved, or a bar has to lay them out in another way.
    bool list = false;
    // Tasks whose own button shows something else, by their identifiers. New tasks are among them.
    std::unordered_set<std::string> ids;

    bool none() const { return !everything && !list && ids.empty(); }
    void merge(const TaskChanges &later)
    {
        everything = everything || later.everything;
        list = list || later.list;
        if (everything)
            ids.clear();
        else
            ids.insert(later.ids.begin(), later.ids.end());
    }
};

}  // namespace korvane
