// The format of the settings file: a property list in XML with one dictionary of typed values.
#pragma once

#include "Ports/Defaults.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace korvane::platform {

using Bytes = std::vector<std::uint8_t>;

// A value of a kind that we never write (a date, a list of mixed values). It is kept and written back unchanged.
class ForeignValue;
using ForeignValuePtr = std::shared_ptr<const ForeignValue>;

using PropertyValue =
    std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>, StringMap, Bytes, ForeignValuePtr>;
using PropertyList = std::map<std::string, PropertyValue, std::less<>>;

// Whether the library would need more than a fraction of a second to read the text. Its time grows with the square of
// the number of keys, and of the number of escaped characters. The settings of a real user are far below the limit.
bool holdsTooMuch(std::string_view xml);

// Absent when the text holds too much, or when it is not a complete property list with a dictionary at the top. A
// number that is not finite is left out, as if its key were missing.
std::optional<PropertyList> parsePropertyList(std::string_view xml);

// The user's locale does not matter. Numbers must be finite and texts storable.
std::string writePropertyList(const PropertyList &list);

// The part of a text that can be stored and read again: valid UTF-8 without control characters, except tab and newline.
// A broken byte becomes U+FFFD.
std::string storableText(std::string_view text);

}  // namespace korvane::platform
