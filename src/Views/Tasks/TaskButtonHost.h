// What a bar provides to its buttons.
#pragma once

#include "Models/AppModel/AppModel.h"
#include "Views/Kit/ViewServices.h"

#include <functional>
#include <set>
#include <string>

class QWidget;

namespace korvane {

struct TaskButtonHost {
    AppModel &model;
    ViewServices &services;
    platform::Platform &platform;
    // "Set First" and "Set Last" for what the drag id stands for.
    std::function<void(const std::string &dragID, const std::set<std::string> &windowIDs, bool first)> setTaskPosition;
    std::function<void()> showSettings;
    std::function<void(const std::string &entryID)> armResize;
    // The pointer carries a picture of the source. Returns when the mouse button is released or the drag is cancelled.
    std::function<void(QWidget &source, const std::string &dragID, const std::set<std::string> &windowIDs)> beginDrag;
};

}  // namespace korvane
