// Reading one attribute of an element.
#pragma once

#include "Ports/Accessibility.h"

#include <optional>
#include <string_view>

namespace korvane {

// Absent when the read fails or gives a value of another type.
template <typename T>
std::optional<T> elementAttribute(platform::Accessibility &accessibility, const platform::Element &element,
                                  std::string_view name)
{
    platform::Value value;
    if (accessibility.copy(element, name, value) != platform::AxStatus::success)
        return std::nullopt;
    auto *wanted = std::get_if<T>(&value);
    return wanted ? std::optional<T>(std::move(*wanted)) : std::nullopt;
}

}  // namespace korvane
