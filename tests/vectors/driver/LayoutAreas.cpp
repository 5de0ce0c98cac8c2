// The layout engine, widths and heights, and whole layout passes.
#include "tests/vectors/driver/Areas.h"
#include "tests/vectors/driver/Comparison.h"
#include "tests/vectors/driver/RecordJson.h"

#include "Models/Bar/PanelGeometry.h"
#include "Models/Bar/TaskLayoutEngine.h"
#include "Models/Bar/TaskResize.h"
#include "Models/Bar/TaskbarPass.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace korvane::vectors {
namespace {

using WidthList = std::vector<double>;

Json jsonOf(const std::vector<OverflowRow> &rows)
{
    Json list = Json::array();
    for (const OverflowRow &row : rows)
        list.push_back({{"id", row.id},
                        {"lower", row.lower},
                        {"count", row.count},
                        {"reversed", row.reversed},
                        {"leading", row.leading},
                        {"widths", row.widths},
                        {"height", row.height},
                        {"bufferWidth", row.bufferWidth}});
    return list;
}

Json jsonOf(const TaskLayout &layout)
{
    return {{"widths", layout.widths}, {"mainCount", layout.mainCount}, {"overflowRows", jsonOf(layout.overflowRows)}};
}

// Holds the minimum widths for as long as the engine reads them.
struct Minimums {
    Minimums(const Json &arguments, const char *key) : list(optionalMember<WidthList>(arguments, key)) {}
    operator TaskLayoutEngine::MinimumWidths() const { return list ? &*list : nullptr; }

    std::optional<WidthList> list;
};

WidthList widthsOf(const Json &arguments, const char *key = "widths")
{
    return arguments.at(key).get<WidthList>();
}

Json compressedMainRow(const Json &arguments)
{
    const auto row =
        TaskLayoutEngine::compressedMainRow(widthsOf(arguments), arguments.at("available"),
                                            Minimums(arguments, "minimumWidths"), arguments.at("packToMinimums"));
    return {{"count", row.count}, {"widths", row.widths}};
}

Json makeLayout(const Json &arguments)
{
    return jsonOf(TaskLayoutEngine::makeLayout(
        arguments.at("screenWidth"), arguments.at("quicklyLaunchRightEdge"), arguments.at("mainTrailingControlsWidth"),
        widthsOf(arguments), Minimums(arguments, "minimumWidths"), arguments.at("packMainRowToMinimums")));
}

Json makeLockedLayout(const Json &arguments)
{
    return jsonOf(TaskLayoutEngine::makeLockedLayout(
        arguments.at("screenWidth"), arguments.at("quicklyLaunchRightEdge"), arguments.at("mainTrailingControlsWidth"),
        widthsOf(arguments, "mainWidths"), widthsOf(arguments, "overflowWidths"),
        Minimums(arguments, "mainMinimumWidths"), arguments.at("packMainRowToMinimums")));
}

// A pass over one entry of that kind, whose title has the measured width.
TaskbarLayout passOverOneEntry(const Json &arguments)
{
    const std::string kind = arguments.at("kind");
    std::vector<RunningAppItem> items(kind == "item" ? 1 : 2);
    SettingsValues settings;
    settings.groupingMode = kind == "group" ? GroupingMode::always : GroupingMode::asNeeded;
    std::size_t number = 0;
    for (RunningAppItem &item : items) {
        item.id = "ax:7:hash:" + std::to_string(number++);
        item.processIdentifier = 7;
        item.name = item.appName = "Mail";
        if (kind == "customGroup")
            settings.customGroupMembers[item.id] = "K";
    }
    settings.customGroupNames["K"] = "Work";
    std::map<std::string, double> overrides;
    if (const auto width = optionalMember<double>(arguments, "override"))
        for (const char *id : {"ax:7:hash:0", "auto:7", "custom:K"})
            overrides[id] = *width;
    const TaskbarPassInput input{.runningApps = items,
                                 .settingsTask = {},
                                 .settings = settings,
                                 .width = 1440,
                                 .taskWidthOverrides = overrides,
                                 .lockedMainWindowIDs = {}};
    TaskbarLayout layout =
        TaskbarPass::run(input, [&](std::string_view) -> double { return arguments.at("measured"); });
    const auto &entries = layout.entries;
    const bool made = entries.size() == 1 && entries.front().isGrouped() == (kind != "item")
                      && (kind == "item" || entries.front().group->isCustom == (kind == "customGroup"));
    if (!made)
        throw std::runtime_error("no entry of the kind " + kind);
    return layout;
}

Json preferredTabWidth(const Json &arguments)
{
    const auto measure = [&](std::string_view) -> double { return arguments.at("measured"); };
    return TaskbarPass::preferredTabWidth(passOverOneEntry(arguments).entries.front(), measure);
}

Json overflowGeometry(const Json &arguments)
{
    // The count of rows has the main row in it, and is 0 before the first layout.
    const int rows = arguments.at("taskOverflowRowCount");
    const GeometryKey key{std::max(0, rows - 1), arguments.at("tuckAwayOverflowPixels"),
                          arguments.at("overflowCardOverlapPixels"), arguments.at("autoHideOverflow"),
                          arguments.at("taskRowsExpanded")};
    const auto geometry = PanelGeometry::overflowGeometry(key);
    return {{"collapsedHeight", geometry.collapsedHeight}, {"normalHeight", geometry.normalHeight}};
}

// By id, since the files list the groups in an order of their own.
Json groupsOf(const std::vector<TaskbarEntry> &entries)
{
    Json groups = Json::object();
    for (const TaskbarEntry &entry : entries)
        if (entry.group)
            groups[entry.id] = {{"id", entry.id},
                                {"appName", entry.group->appName},
                                {"displayName", entry.group->displayName()},
                                {"windows", idsOf(entry.group->windows)},
                                {"isCustom", entry.group->isCustom},
                                {"customIconGlyph", optionalJson(entry.group->customIconGlyph)},
                                {"isActive", entry.group->isActive()},
                                {"processIdentifier", entry.group->processIdentifier()}};
    return groups;
}

// One grip, told of a drag step by step.
Json resize(const Json &arguments)
{
    const double currentWidth = arguments.at("currentWidth");
    Json calls = Json::array(), states = Json::array();
    TaskResize drag({[&] { calls.push_back({"beginResize"}); },
                     [&](double width) {
                         calls.push_back({"commitWidth", width});
                     },
                     [&] { calls.push_back({"endResize"}); }, [&] { calls.push_back({"disarm"}); }});
    for (const Json &step : arguments.at("steps")) {
        if (step.at(0) == "changed")
            drag.changed(currentWidth, step.at(1));
        else
            drag.ended();
        states.push_back({{"resizing", drag.resizing()},
                          {"dragStartWidth", drag.dragStartWidth()},
                          {"latestWidth", drag.latestWidth()},
                          {"guideOffset", drag.guideOffset()},
                          {"gripCentreX", drag.gripCentreX(currentWidth)},
                          {"calls", calls}});
    }
    return states;
}

Json pruneTaskWidthOverrides(const Json &arguments)
{
    auto overrides = arguments.at("overrides").get<TaskWidthOverrides::Overrides>();
    std::vector<RunningAppItem> tasks;
    for (const Json &task : arguments.at("tasks")) {
        RunningAppItem item;
        item.id = task.at(0);
        item.processIdentifier = task.at(1);
        tasks.push_back(std::move(item));
    }
    TaskWidthOverrides::prune(overrides, tasks, arguments.at("customGroupMembers").get<StringMap>(),
                              optionalMember<std::string>(arguments, "settingsTask"));
    return overrides;
}

}  // namespace

const Functions &layoutEngineFunctions()
{
    static const Functions functions{
        {"packedCount",
         [](const Json &arguments) {
             return Json(TaskLayoutEngine::packedCount(widthsOf(arguments), arguments.at("available")));
         }},
        {"mainCapacity",
         [](const Json &arguments) {
             return Json(TaskLayoutEngine::mainCapacity(widthsOf(arguments), arguments.at("available")));
         }},
        {"compressedMainRow", compressedMainRow},
        {"makeLayout", makeLayout},
        {"makeLockedLayout", makeLockedLayout},
    };
    return functions;
}

const Functions &widthFunctions()
{
    static const Functions functions{
        {"tabWidth",
         [](const Json &arguments) {
             return Json(TaskbarPass::tabWidth(arguments.at("measured"), arguments.at("grouped")));
         }},
        {"preferredTabWidth", preferredTabWidth},
        {"wantedWidth", [](const Json &arguments) { return Json(passOverOneEntry(arguments).wantedWidths.at(0)); }},
        {"minimumWidth", [](const Json &arguments) { return Json(passOverOneEntry(arguments).minimumWidths.at(0)); }},
        {"quicklyLaunchRightEdge",
         [](const Json &arguments) {
             return Json(TaskbarPass::quicklyLaunchRightEdge(arguments.at("itemCount"), arguments.at("iconSize")));
         }},
        {"mainTrailingControlsWidth",
         [](const Json &arguments) {
             return Json(TaskbarPass::mainTrailingControlsWidth(
                 settingFrom<Choice<MediaSliderDisplay>>(arguments.at("mediaSliderDisplay")),
                 arguments.at("shouldShowTaskbarAttentionIndicator")));
         }},
        {"groupAll",
         [](const Json &arguments) {
             return Json(TaskGrouping::groupAll(settingFrom<Choice<GroupingMode>>(arguments.at("groupingMode")),
                                                arguments.at("capacity"), arguments.at("windowCount")));
         }},
        {"overflowGeometry", overflowGeometry},
        {"resize", resize},
        {"pruneTaskWidthOverrides", pruneTaskWidthOverrides},
        {"shownHeight",
         [](const Json &arguments) {
             return Json(PanelGeometry::shownHeight(arguments.at("height"), arguments.at("tuckAwayOverflowPixels"),
                                                    arguments.at("autoHideOverflow"), arguments.at("taskRowsExpanded"),
                                                    arguments.at("overflowOpen")));
         }},
    };
    return functions;
}

Outcome runLayoutPass(const Json &testCase, const Json &)
{
    std::vector<RunningAppItem> items;
    for (const Json &item : testCase.at("tasks"))
        items.push_back(itemFrom(item));
    Json named = testCase.at("settings");
    const bool showsIndicator = named.at("shouldShowTaskbarAttentionIndicator");
    named.erase("shouldShowTaskbarAttentionIndicator");
    SettingsValues settings;
    readSettings(named, settings);
    const TaskbarPassInput input{
        .runningApps = items,
        .settingsTask =
            testCase.at("settingsTask").is_null() ? std::nullopt : std::optional(itemFrom(testCase.at("settingsTask"))),
        .settings = settings,
        .quicklyLaunchItemCount = testCase.at("quicklyLaunchItemCount"),
        .width = testCase.at("W"),
        .showsAttentionIndicator = showsIndicator,
        .taskWidthOverrides = testCase.at("taskWidthOverrides").get<std::map<std::string, double>>(),
        .overflowReturnLocked = testCase.at("overflowReturnLocked"),
        .lockedMainWindowIDs = testCase.at("lockedMainWindowIDs").get<std::set<std::string>>()};
    const Json &measured = testCase.at("measured");
    const TaskbarLayout layout = TaskbarPass::run(
        input, [&](std::string_view text) -> double { return measured.at(std::string(text)).get<double>(); });

    Json ids = Json::array(), cardWidths = Json::array();
    for (const TaskbarEntry &entry : layout.entries)
        ids.push_back(entry.id);
    for (const OverflowRow &row : layout.overflowRows)
        cardWidths.push_back(TaskbarPass::overflowCardWidth(row));
    const Json got{{"quicklyLaunchRightEdge", layout.quicklyLaunchRightEdge},
                   {"mainTrailingControlsWidth", layout.mainTrailingControlsWidth},
                   {"capacity", layout.capacity},
                   {"groupAll", layout.groupAll},
                   {"entries", ids},
                   {"partitionMainCount", layout.partitionMainCount},
                   {"wantedWidths", layout.wantedWidths},
                   {"minimumWidths", layout.minimumWidths},
                   {"widths", layout.widths},
                   {"mainCount", layout.mainCount},
                   {"overflowRows", jsonOf(layout.overflowRows)},
                   {"hasOverflow", layout.hasOverflow},
                   {"rowCount", layout.rowCount},
                   {"overflowCardWidths", cardWidths},
                   {"groups", groupsOf(layout.entries)}};
    Json expected = testCase.at("expected");
    const Json groups = std::exchange(expected["groups"], Json::object());
    for (const Json &group : groups)
        expected["groups"][group.at("id").get<std::string>()] = group;
    return compared(expected, got, "layout");
}

}  // namespace korvane::vectors
