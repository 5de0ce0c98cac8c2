// Any bytes in the place of the settings file: reading survives them, and what was read is written and read again
// alike.
#include "Platform/Linux/PropertyList.h"

#include <cstdint>
#include <cstdlib>

using namespace korvane::platform;

namespace {

// Foreign values are copies of trees, which have no equality of ours.
bool isForeign(const PropertyValue &value)
{
    return std::holds_alternative<ForeignValuePtr>(value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto first = parsePropertyList(std::string_view(reinterpret_cast<const char *>(data), size));
    if (!first)
        return 0;
    const auto second = parsePropertyList(writePropertyList(*first));
    if (!second || second->size() != first->size())
        std::abort();
    for (const auto &[key, value] : *first) {
        const auto again = second->find(key);
        if (again == second->end() || isForeign(again->second) != isForeign(value)
            || (!isForeign(value) && again->second != value))
            std::abort();
    }
    return 0;
}
