// Short ways to make records for tests.
#pragma once

#include "Models/Base/Records.h"

#include <string>
#include <vector>

namespace korvane::testing {

inline RunningAppItem makeItem(const std::string &id, Pid pid = 101, std::int64_t index = 0,
                               const std::string &appName = "Mail")
{
    RunningAppItem item;
    item.id = id;
    item.processIdentifier = pid;
    item.windowIndex = index;
    item.name = "Window " + id;
    item.appName = appName;
    item.icon = std::make_shared<platform::Image>();
    item.bundleIdentifier = "org.example." + appName;
    return item;
}

inline std::vector<std::string> idsOf(const std::vector<RunningAppItem> &items)
{
    std::vector<std::string> ids;
    for (const RunningAppItem &item : items)
        ids.push_back(item.id);
    return ids;
}

inline std::vector<const RunningAppItem *> pointersTo(const std::vector<RunningAppItem> &items)
{
    std::vector<const RunningAppItem *> pointers;
    for (const RunningAppItem &item : items)
        pointers.push_back(&item);
    return pointers;
}

}  // namespace korvane::testing
