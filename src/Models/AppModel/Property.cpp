#include "Models/AppModel/Property.h"

#include "Models/Base/Assert.h"

#include <algorithm>
#include <array>

namespace korvane {
namespace {

struct PropertyName {
    ModelProperty property;
    std::string_view name;
};

constexpr auto names = std::to_array<PropertyName>({
    {ModelProperty::modelChanged, "modelChanged"},
    {ModelProperty::accessibilityTrusted, "accessibilityTrusted"},
    {ModelProperty::activeBlueStripWindowID, "activeBlueStripWindowID"},
    {ModelProperty::attentionApps, "attentionApps"},
    {ModelProperty::liveTabColors, "liveTabColors"},
    {ModelProperty::openGroupedLists, "openGroupedLists"},
    {ModelProperty::previousWindowIDsByApplication, "previousWindowIDsByApplication"},
    {ModelProperty::runningApps, "runningApps"},
    {ModelProperty::settingsWindowVisible, "settingsWindowVisible"},
    {ModelProperty::systemIsInactive, "systemIsInactive"},
    {ModelProperty::taskOverflowRowCount, "taskOverflowRowCount"},
    {ModelProperty::taskOverflowRowsVisible, "taskOverflowRowsVisible"},
    {ModelProperty::taskRowsExpanded, "taskRowsExpanded"},
});

}  // namespace

std::string_view Property::name() const
{
    if (setting)
        return setting->property;
    const auto *const found =
        std::find_if(names.begin(), names.end(), [this](const PropertyName &each) { return each.property == own; });
    KORVANE_ASSERT(found != names.end(), "a property has no name");
    return found->name;
}

}  // namespace korvane
