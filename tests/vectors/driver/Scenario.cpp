#include "tests/vectors/driver/Scenario.h"

#include "tests/vectors/driver/Comparison.h"
#include "tests/vectors/driver/DesktopJson.h"
#include "tests/vectors/driver/RecordJson.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

namespace korvane::vectors {
namespace {

// What a refresh assigns; assignments of these outside of one are not told in the files.
constexpr std::array refreshProperties{
    "runningApps",     "attentionApps", "activeBlueStripWindowID", "previousWindowIDsByApplication",
    "recentWindowIDs", "taskOrder"};

// Keys of the two large groups are left out in the files: they are always written whole.
bool isWrittenWithItsGroup(std::string_view key)
{
    const auto table = settingsTable();
    return std::any_of(table.begin(), table.end(), [&](const Setting &setting) {
        return setting.key == key
               && (setting.group == SettingGroup::appearance || setting.group == SettingGroup::quicklyLaunch);
    });
}

// In a file of that form the two large parts of the state list only the members that differ.
bool listsDifferences(const std::string &part)
{
    return part == "properties" || part == "store";
}

void applyChange(const std::string &part, const Json &change, Json &state)
{
    if (!listsDifferences(part)) {
        state[part] = change;
        return;
    }
    for (const auto &[member, value] : change.items()) {
        if (value.is_null())
            state[part].erase(member);
        else
            state[part][member] = part == "store" ? normalized(value) : value;
    }
}

Json observed(Scenario &scenario, const Json &expected)
{
    Json state = Json::object();
    for (const auto &[part, value] : expected.items())
        state[part] = stateParts().find(part)->second(scenario);
    return state;
}

// What the driver or the model can't do of this case; empty when it can do all.
std::string missing(const Json &testCase, const Json &file)
{
    for (const auto &[part, value] : file.at("initialState").items())
        if (!stateParts().contains(part))
            return "no state " + part;
    for (const Json &step : testCase.at("steps"))
        if (const std::string name = step.at("op"); !operations().contains(name))
            return "no operation " + name;
    return {};
}

Json member(const Json &step, const char *key)
{
    return step.value(key, Json::array());
}

}  // namespace

Scenario::Scenario(const Json &testCase, const Json &file, bool revisions)
    : tasksAsNames(file.at("initialState").contains("liveState"))
{
    simulatedDesktop.accessibility.setRevisionsSupported(revisions);
    changeDesktop(testCase.at("desktop"), simulatedDesktop);
    for (const auto &[key, tagged] : testCase.at("store").items())
        simulatedDesktop.defaults.put(key, defaultsValueFrom(tagged));
    restart();
    simulatedDesktop.actions.take();
    simulatedDesktop.defaults.takeWrites();
    publications.clear();
}

void Scenario::restart()
{
    appModel.reset();
    appModel = std::make_unique<AppModel>(platform, [this] {
        char text[40];
        std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012d", ++uuids);
        return std::string(text);
    });
    observation = appModel->published.add([this](Property property) {
        const bool inRefresh =
            std::find(refreshProperties.begin(), refreshProperties.end(), property.name()) != refreshProperties.end()
            && appModel->inspect().refreshing;
        if (inRefresh || property == ModelProperty::modelChanged)
            publications.emplace_back(property.name());
    });
}

Json Scenario::takeCalls()
{
    Json calls = Json::array();
    for (const platform::simulated::Action &action : simulatedDesktop.actions.take())
        calls.push_back(jsonOf(action));
    return calls;
}

Json Scenario::takeWrites()
{
    Json writes = Json::array();
    for (const std::string &write : simulatedDesktop.defaults.takeWrites())
        if (!isWrittenWithItsGroup(write.starts_with('-') ? write.substr(1) : write))
            writes.push_back(write);
    return writes;
}

Json Scenario::takePublished()
{
    return std::exchange(publications, {});
}

RunningAppItem Scenario::item(const Json &argument)
{
    if (argument.is_object())
        return itemFrom(argument);
    for (const RunningAppItem &task : appModel->runningApps())
        if (task.id == argument)
            return task;
    const auto settingsTask = appModel->settingsTaskItem();
    if (settingsTask && settingsTask->id == argument)
        return *settingsTask;
    throw std::runtime_error("no task " + argument.dump());
}

RunningAppGroup Scenario::group(const Json &step)
{
    const Json &argument = step.at("group");
    if (argument.is_object())
        return groupFrom(argument);
    for (const TaskbarEntry &entry : appModel->taskbarEntries(step.at("groupAll")))
        if (entry.group && entry.id == argument)
            return *entry.group;
    throw std::runtime_error("no group " + argument.dump());
}

Outcome runScenario(const Json &testCase, const Json &file)
{
    if (const std::string what = missing(testCase, file); !what.empty())
        return Outcome::skip(what);

    // The files without writes and announcements say so; theirs are not empty.
    const bool tellsAll = !file.at("initialState").contains("properties");
    // Once with every window read at every refresh, once with the stamps that spare reading: nobody may see a
    // difference.
    for (const bool revisions : {false, true}) {
        const std::string way = revisions ? "with stamps: " : "";
        Json expected = file.at("initialState");
        for (const auto &[part, value] : testCase.at("initial").items())
            applyChange(part, value, expected);
        Scenario scenario(testCase, file, revisions);
        if (const auto found = firstDifference(expected, observed(scenario, expected), "initially"))
            return Outcome::fail(way + *found);

        int number = 0;
        for (const Json &step : testCase.at("steps")) {
            const std::string name = step.at("op");
            const std::string where = std::string(way).append("step ").append(std::to_string(++number)) + " " + name;
            Json result;
            try {
                result = operations().find(name)->second(scenario, step);
            } catch (const std::exception &problem) {
                return Outcome::fail(where + ": " + problem.what());
            }
            const Json changes = step.value("changed", Json::object());
            for (const auto &[part, value] : changes.items())
                applyChange(part, value, expected);
            auto found = firstDifference(step.value("result", Json()), result, where + ": result");
            if (!found)
                found = firstDifference(expected, observed(scenario, expected), where + ": state");
            const Json calls = scenario.takeCalls(), writes = scenario.takeWrites(),
                       published = scenario.takePublished();
            if (!found)
                found = firstDifference(member(step, "calls"), calls, where + ": calls");
            if (!found && tellsAll)
                found = firstDifference(member(step, "writes"), writes, where + ": writes");
            if (!found && tellsAll)
                found = firstDifference(member(step, "published"), published, where + ": published");
            if (found)
                return Outcome::fail(*found);
        }
    }
    return Outcome::pass();
}

}  // namespace korvane::vectors
