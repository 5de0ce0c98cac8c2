// The operations of scenarios. One that is missing here makes its cases count as skipped.
#include "tests/vectors/driver/DesktopJson.h"
#include "tests/vectors/driver/RecordJson.h"
#include "tests/vectors/driver/Scenario.h"

#include <stdexcept>

namespace korvane::vectors {
namespace {

using Step = const Json &;

std::string text(Step step, const char *key)
{
    return step.at(key).get<std::string>();
}

// An operation that gives nothing back.
template <typename Call> auto operation(Call call)
{
    return [call](Scenario &scenario, Step step) {
        call(scenario.model(), step);
        return Json();
    };
}

// The same for those without arguments, with a task, with the name of an application, and with a group.
auto plain(void (AppModel::*method)())
{
    return operation([method](AppModel &model, Step) { (model.*method)(); });
}

auto onItem(void (AppModel::*method)(const RunningAppItem &))
{
    return [method](Scenario &scenario, Step step) {
        const RunningAppItem item = scenario.item(step.at("item"));
        (scenario.model().*method)(item);
        return Json();
    };
}

auto onName(void (AppModel::*method)(const std::string &))
{
    return operation([method](AppModel &model, Step step) { (model.*method)(text(step, "name")); });
}

auto onGroup(void (AppModel::*method)(const RunningAppGroup &))
{
    return [method](Scenario &scenario, Step step) {
        const RunningAppGroup group = scenario.group(step);
        (scenario.model().*method)(group);
        return Json();
    };
}

Json changeParts(Scenario &scenario, Step step)
{
    Json parts = Json::object();
    for (const auto &[key, value] : step.items())
        if (key != "op" && key != "changed" && key != "calls" && key != "writes" && key != "published")
            parts[key] = value;
    changeDesktop(parts, scenario.desktop());
    return Json();
}

Json tell(Scenario &scenario, Step step)
{
    if (!notify(text(step, "name"), scenario.desktop()))
        throw std::runtime_error("unknown notification " + text(step, "name"));
    return Json();
}

Json assign(Scenario &scenario, Step step)
{
    const Setting *setting = findSetting(text(step, "property"));
    if (!setting)
        throw std::runtime_error("no setting " + text(step, "property"));
    withSettingValue(*setting, step.at("value"),
                     [&](auto member, auto value) { scenario.model().set(member, std::move(value)); });
    return Json();
}

Json resolve(Scenario &scenario, Step step)
{
    const platform::Element window = scenario.model().resolveWindow(scenario.item(step.at("item")));
    return {{"hash", window ? Json(scenario.desktop().accessibility.hash(window)) : Json()}};
}

Json createCustomGroup(Scenario &scenario, Step step)
{
    std::vector<RunningAppItem> items;
    for (const Json &item : step.at("items"))
        items.push_back(scenario.item(item));
    scenario.model().createCustomGroup(items);
    return Json();
}

void activateAttentionApp(AppModel &model, Step step)
{
    // A copy: the operation refreshes the list.
    const auto apps = model.attentionApps();
    for (const AttentionAppItem &item : apps)
        if (item.id == step.at("id")) {
            model.activateAttentionApp(item);
            return;
        }
    throw std::runtime_error("no attention item " + text(step, "id"));
}

Operations makeOperations()
{
    using M = AppModel;
    Operations table{
        // The scenario itself
        {"desktop", changeParts},
        {"notification", tell},
        {"set", assign},
        {"advance",
         [](Scenario &scenario, Step step) {
             scenario.desktop().loop.advance(platform::Seconds(step.at("seconds").get<double>()));
             return Json();
         }},
        {"restart",
         [](Scenario &scenario, Step) {
             scenario.restart();
             return Json();
         }},
        // Life cycle and refresh
        {"start", plain(&M::start)},
        {"stop", plain(&M::stop)},
        {"refresh", operation([](M &model, Step step) {
             model.refresh(step.at("forceBadgeScan"), step.at("skipUnchangedDownstream"));
         })},
        {"refreshAfterWindowStateChange",
         operation([](M &model, Step step) { model.refreshAfterWindowStateChange(step.at("immediate")); })},
        {"addToFavoritesTask", onItem(&M::addToFavorites)},
        {"addToFavoritesGroup", onGroup(&M::addToFavorites)},
        {"manualRefreshAndRepaint", plain(&M::manualRefreshAndRepaint)},
        {"refreshForStartMenuShow", plain(&M::refreshForStartMenuShow)},
        {"setTaskbarHidden", operation([](M &model, Step step) { model.setTaskbarHidden(step.at("hidden")); })},
        {"setInactiveReason",
         operation([](M &model, Step step) { model.setInactiveReason(text(step, "reason"), step.at("active")); })},
        {"beginTaskResize", plain(&M::beginTaskResize)},
        {"endTaskResize", plain(&M::endTaskResize)},
        {"setSettingsWindowVisible",
         operation([](M &model, Step step) { model.setSettingsWindowVisible(step.at("visible")); })},
        {"requestAccessibilityPermission", plain(&M::requestAccessibilityPermission)},
        // Settings
        {"restoreDefaults", plain(&M::restoreDefaults)},
        {"resetWindowStripColors", plain(&M::resetWindowStripColors)},
        {"saveCustomGroups", plain(&M::saveCustomGroups)},
        {"addToBlacklist", operation([](M &model, Step step) { model.addToBlacklist(text(step, "name")); })},
        {"removeFromBlacklist", operation([](M &model, Step step) { model.removeFromBlacklist(text(step, "name")); })},
        // Marks
        {"addAttentionIndicatorApp", onName(&M::addAttentionIndicatorApp)},
        {"removeAttentionIndicatorApp", onName(&M::removeAttentionIndicatorApp)},
        {"allowAllAttentionIndicatorApps", plain(&M::allowAllAttentionIndicatorApps)},
        {"setAttentionIndicatorFilter", operation([](M &model, Step step) {
             model.setAttentionIndicatorFilter(Choice<FilterPolicy>(text(step, "policy")),
                                               step.at("apps").get<StringList>());
         })},
        {"recordRecent", onItem(&M::recordRecent)},
        {"clearRecents", plain(&M::clearRecents)},
        {"confirmClearRecents", plain(&M::confirmClearRecents)},
        {"setLiveTabColorName", operation([](M &model, Step step) {
             model.setLiveTabColorName(optionalMember<std::string>(step, "name"), text(step, "id"));
         })},
        {"setDefaultAppColorName", operation([](M &model, Step step) {
             model.setDefaultAppColorName(optionalMember<std::string>(step, "name"), text(step, "bundleIdentifier"),
                                          step.at("liveIDs").get<StringList>());
         })},
        // Groups
        {"regroupTaskbarForCurrentSettings", plain(&M::regroupTaskbarForCurrentSettings)},
        {"addSpecificGroupingApp", onName(&M::addSpecificGroupingApp)},
        {"removeSpecificGroupingApp", onName(&M::removeSpecificGroupingApp)},
        {"createCustomGroup", createCustomGroup},
        {"returnToParentGroup", onItem(&M::returnToParentGroup)},
        {"renameCustomGroup",
         [](Scenario &scenario, Step step) {
             scenario.model().renameCustomGroup(scenario.group(step), text(step, "name"));
             return Json();
         }},
        {"setCustomGroupIcon",
         [](Scenario &scenario, Step step) {
             scenario.model().setCustomGroupIcon(scenario.group(step), text(step, "glyph"));
             return Json();
         }},
        {"dropTask",
         [](Scenario &scenario, Step step) {
             scenario.model().dropTask(text(step, "id"), scenario.group(step));
             return Json();
         }},
        {"groupTask",
         operation([](M &model, Step step) { model.groupTask(text(step, "id"), text(step, "targetID")); })},
        {"removeEmptyCustomGroups", plain(&M::removeEmptyCustomGroups)},
        // Order
        {"windowsForDragID",
         [](Scenario &scenario, Step step) { return idsOf(scenario.model().windowsForDragID(text(step, "id"))); }},
        {"setTaskPosition",
         operation([](M &model, Step step) { model.setTaskPosition(text(step, "id"), step.at("first")); })},
        {"dropTaskOnRow", operation([](M &model, Step step) {
             model.dropTaskOnRow(text(step, "id"), text(step, "adjacentTo"), step.at("after"));
         })},
        {"dropTaskAtOverflowRowEnd", operation([](M &model, Step step) {
             model.dropTaskAtOverflowRowEnd(text(step, "id"), text(step, "targetID"));
         })},
        {"moveTasks", operation([](M &model, Step step) {
             model.moveTasks(step.at("ids").get<StringList>(), text(step, "adjacentTo"), step.at("after"));
         })},
        {"moveTaskAfter", operation([](M &model, Step step) {
             model.moveTaskAfter(text(step, "id"), text(step, "targetID"),
                                 optionalMember<std::string>(step, "replacementAnchorID"));
         })},
        {"moveTask", operation([](M &model, Step step) {
             model.moveTask(text(step, "id"), text(step, "before"),
                            optionalMember<std::string>(step, "replacementAnchorID"));
         })},
        // Windows
        {"activate", onItem(&M::activate)},
        {"activateApplication", operation([](M &model, Step step) { model.activateApplication(step.at("pid")); })},
        {"activateAttentionApp", operation(activateAttentionApp)},
        {"resolveWindow", resolve},
        {"closeFrontWindow", onItem(&M::closeFrontWindow)},
        {"closeWindows", onGroup(&M::closeWindows)},
        {"closeAndRemoveCustomGroup", onGroup(&M::closeAndRemoveCustomGroup)},
        {"minimizeAllWindows", onGroup(&M::minimizeAllWindows)},
        {"closeAllWindows", plain(&M::closeAllWindows)},
        {"hideVisibleWindows", plain(&M::hideVisibleWindows)},
        {"quit", onItem(&M::quit)},
        {"confirmQuitApplication", onItem(&M::confirmQuitApplication)},
        {"confirmQuitGroup", onGroup(&M::confirmQuitGroup)},
        {"confirmCloseGroup", onGroup(&M::confirmCloseGroup)},
        {"confirmCloseAllWindows", plain(&M::confirmCloseAllWindows)},
    };
    return table;
}

}  // namespace

const Operations &operations()
{
    static const Operations table = makeOperations();
    return table;
}

}  // namespace korvane::vectors
