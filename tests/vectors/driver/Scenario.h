// Scenarios: one model over a passive simulated desktop, driven by a list of operations. After each operation
// everything that can be observed has to be as the file says, also what the operation was to leave alone.
#pragma once

#include "tests/vectors/driver/Case.h"

#include "Models/AppModel/AppModel.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <memory>
#include <string>
#include <vector>

namespace korvane::vectors {

Outcome runScenario(const Json &testCase, const Json &file);

class Scenario {
public:
    Scenario(const Json &testCase, const Json &file, bool revisions);

    AppModel &model() { return *appModel; }
    platform::simulated::SimulatedDesktop &desktop() { return simulatedDesktop; }
    // A new model on the same defaults, as after a new start of the program.
    void restart();

    // Whether the file gives the list of tasks as identifiers.
    bool namesTasksOnly() const { return tasksAsNames; }

    // What happened since the last call: actions on the desktop, keys written one by one, announcements.
    Json takeCalls();
    Json takeWrites();
    Json takePublished();

    // The task or the group of an argument: an identifier of one that is there now, or a whole record.
    RunningAppItem item(const Json &argument);
    RunningAppGroup group(const Json &step);

private:
    platform::simulated::SimulatedDesktop simulatedDesktop{platform::simulated::Behaviour::passive};
    platform::Platform platform = simulatedDesktop.platform();
    int uuids = 0;
    bool tasksAsNames;
    std::unique_ptr<AppModel> appModel;
    std::vector<std::string> publications;
    platform::Subscription observation;
};

// From an operation's name to what it does; its result is null for an operation without one.
using Operations = std::map<std::string, std::function<Json(Scenario &scenario, const Json &step)>, std::less<>>;
const Operations &operations();

// From the name of a part of the observable state to its value.
using StateParts = std::map<std::string, std::function<Json(Scenario &scenario)>, std::less<>>;
const StateParts &stateParts();

}  // namespace korvane::vectors
