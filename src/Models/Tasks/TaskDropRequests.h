// What the drop of a task may ask of the model. Each request may do nothing: what was dragged, or what it was dropped
// on, may be gone by then.
#pragma once

#include "Models/Base/Records.h"

#include <string>

namespace korvane {

class TaskDropRequests {
public:
    // On the middle of a plain task: both go into one custom group.
    virtual void groupTask(const std::string &id, const std::string &targetID) = 0;
    // On a group's button: the task joins it. This turns an automatic group into a custom group.
    virtual void dropTask(const std::string &id, const RunningAppGroup &group) = 0;
    // Beside a task of the same row.
    virtual void dropTaskOnRow(const std::string &id, const std::string &adjacentTo, bool after) = 0;
    // On the cap at the end of an overflow row.
    virtual void dropTaskAtOverflowRowEnd(const std::string &id, const std::string &targetID) = 0;

protected:
    TaskDropRequests() = default;
    ~TaskDropRequests() = default;
};

}  // namespace korvane
