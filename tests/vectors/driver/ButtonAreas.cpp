// What the buttons of tasks and groups show and offer.
#include "tests/vectors/driver/Areas.h"
#include "tests/vectors/driver/RecordJson.h"

#include "Models/Tasks/NotificationMark.h"
#include "Models/Tasks/StripRules.h"
#include "Models/Tasks/TaskMenus.h"
#include "Platform/Icu/IcuText.h"

namespace korvane::vectors {
namespace {

Json stripJson(const std::optional<StripChoice> &strip)
{
    return strip ? Json::array({settingOf(strip->colorSetting).property, strip->opacity}) : Json();
}

Json titles(const Menu &menu)
{
    Json list = Json::array();
    for (const MenuItem &item : menu)
        list.push_back(item.isDivider() ? "-" : (item.submenu.empty() ? "" : ">") + item.title);
    return list;
}

// The windows of a group as the files describe them: named after their place, the first of them active.
RunningAppGroup buttonGroup(const Json &arguments)
{
    RunningAppGroup group;
    group.isCustom = arguments.at("isCustom");
    group.id = group.isCustom ? "custom:K" : "auto:100";
    group.appName = arguments.at("appName");
    const int count = arguments.at("windowCount");
    for (int i = 0; i < count; ++i) {
        RunningAppItem item;
        item.id = "ax:100:hash:" + std::to_string(i);
        item.processIdentifier = 100;
        item.name = "W" + std::to_string(i);
        item.appName = group.appName;
        item.isActive = i == 0;
        item.bundleIdentifier = optionalMember<std::string>(arguments, "firstBundleIdentifier");
        group.windows.push_back(item);
    }
    return group;
}

Json transparencyMenu(const Json &)
{
    double chosen = 0;
    Json list = Json::array();
    for (const MenuItem &item : TaskMenus::transparencyMenu([&](double opacity) { chosen = opacity; })) {
        if (item.isDivider()) {
            list.push_back(Json::array({"-"}));
            continue;
        }
        item.action();
        list.push_back({item.title, chosen});
    }
    return list;
}

Json groupButton(const Json &arguments)
{
    const RunningAppGroup group = buttonGroup(arguments);
    const bool single = GroupButtons::actsAsWindow(group);
    return {{"chevron", GroupButtons::showsChevron(group)},
            {"closeGlyph", single ? "closeFrontWindow" : "confirmQuitGroup"},
            {"click", single ? "activate" : "toggleWindowList"},
            {"scrolls", GroupButtons::listScrolls(group)},
            {"displayName", group.displayName()},
            {"toolTip", GroupButtons::toolTip(group)},
            {"isActive", group.isActive()},
            {"processIdentifier", group.processIdentifier()}};
}

Json notificationMark(const Json &arguments)
{
    const auto mark = NotificationMarks::ofStyle(settingFrom<Choice<NotificationBadgeStyle>>(arguments.at("style")),
                                                 arguments.at("size"));
    if (!mark)
        return nullptr;
    using Shape = NotificationMark::Shape;
    Json json{{"opacity", mark->opacity}, {"width", mark->frame.width}, {"height", mark->frame.height}};
    switch (mark->shape) {
    case Shape::corner:
        json["shape"] = "corner";
        json["cornerRadius"] = mark->cornerRadius;
        break;
    case Shape::circle:
        json["shape"] = "circle";
        break;
    case Shape::roundedRectangle:
        json["shape"] = "roundedRectangle";
        break;
    case Shape::line:
        json["shape"] = "stripe";
        json["from"] = {0.0, mark->lineLength};
        json["to"] = {mark->lineLength, 0.0};
        json["lineWidth"] = mark->lineWidth;
        break;
    }
    return json;
}

}  // namespace

const Functions &buttonFunctions()
{
    static const Functions functions{
        {"highlightOpacity",
         [](const Json &arguments) {
             return Json(StripRules::highlightOpacity(arguments.at("isActive"), arguments.at("inverted")));
         }},
        {"taskStrip",
         [](const Json &arguments) {
             return stripJson(StripRules::task(arguments.at("blueStripsEnabled"), arguments.at("isActive"),
                                               arguments.at("isPreviousWindow")));
         }},
        {"windowRowStrip",
         [](const Json &arguments) {
             return stripJson(StripRules::task(arguments.at("blueStripsEnabled"),
                                               arguments.at("isActiveBlueStripWindow"),
                                               arguments.at("isPreviousWindow")));
         }},
        {"taskMenu",
         [](const Json &arguments) {
             SettingsValues settings;
             settings.groupingMode = settingFrom<Choice<GroupingMode>>(arguments.at("groupingMode"));
             settings.forcedUngroupedWindows = arguments.at("forcedUngroupedWindows").get<std::set<std::string>>();
             return titles(TaskMenus::taskMenu(itemFrom(arguments.at("item")), settings, {}));
         }},
        {"groupMenu", [](const Json &arguments) { return titles(TaskMenus::groupMenu(buttonGroup(arguments), {})); }},
        {"groupHeaderMenu",
         [](const Json &arguments) { return titles(TaskMenus::groupHeaderMenu(buttonGroup(arguments), {})); }},
        {"windowRowMenu",
         [](const Json &arguments) { return titles(TaskMenus::windowRowMenu(itemFrom(arguments.at("item")), {})); }},
        {"colorMenu", [](const Json &) { return titles(TaskMenus::colorMenu({}, {})); }},
        {"transparencyMenu", transparencyMenu},
        {"groupButton", groupButton},
        {"notificationMark", notificationMark},
        {"changedGroupGlyph",
         [](const Json &arguments) {
             platform::IcuText text;
             return Json(GroupButtons::changedGlyph(
                 arguments.at("text"), [&](std::string_view whole) { return text.firstCharacter(whole); }));
         }},
    };
    return functions;
}

}  // namespace korvane::vectors
