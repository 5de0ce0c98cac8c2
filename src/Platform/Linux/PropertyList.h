// The settings file's form: a property list in XML with one dictionary of typed values.
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

// A value of a kind that we never write (a date, a list of mixed values): kept and written back as it was.
class ForeignValue;
using ForeignValuePtr = std::shared_ptr<const ForeignValue>;

using PropertyValue =
    std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>, StringMap, Bytes, ForeignValuePtr>;
using PropertyList = std::map<std::string, PropertyValue, std::less<>>;

// Whether a text holds more than the library reads in a fraction of a second: its time grows with the square of the
// keys, and of the characters that are written by name. No settings that a person made come near.
bool holdsTooMuch(std::string_view xml);

// Absent when the text holds too much, or is not a whole property list with a dictionary at its top. A number that is
// not finite is left out, as if its key were missing.
std::optional<PropertyList> parsePropertyList(std::string_view xml);

// Whatever the user's locale. Numbers have to be finite and texts storable.
std::string writePropertyList(const PropertyList &list);

// What of a text can be stored and read again: valid UTF-8 (a broken byte becomes U+FFFD) without control characters
// other than tab and newline.
std::string storableText(std::string_view text);

}  // namespace korvane::platform
