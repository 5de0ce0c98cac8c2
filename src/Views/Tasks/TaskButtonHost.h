// What a bar lends its buttons.
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
    // "Set First" and "Set Last" of what a drag id stands for.
    std::function<void(const std::string &dragID, const std::set<std::string> &windowIDs, bool first)> setTaskPosition;
    std::function<void()> showSettings;
    std::function<void(const std::string &entryID)> armResize;
    // Carries the picture of the source until the button is let go or the drag is given up; returns then.
    std::function<void(QWidget &source, const std::string &dragID, const std::set<std::string> &windowIDs)> beginDrag;
};

}  // namespace korvane
