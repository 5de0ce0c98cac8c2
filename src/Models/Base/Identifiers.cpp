#include "Models/Base/Identifiers.h"

#include <array>
#include <cstdio>
#include <random>

namespace korvane::Identifiers {

std::string accessibilityWindowPrefix(Pid pid)
{
    return "ax:" + std::to_string(pid) + ":";
}

std::string stableWindow(const std::optional<std::string> &identifier, std::uint64_t hash)
{
    if (identifier && !identifier->empty())
        return "identifier:" + *identifier + ":hash:" + std::to_string(hash);
    return "hash:" + std::to_string(hash);
}

std::string windowListWindow(Pid pid, std::int64_t number)
{
    return "cg:" + std::to_string(pid) + ":" + std::to_string(number);
}

std::string automaticGroup(Pid pid)
{
    return std::string(automaticGroupPrefix) + std::to_string(pid);
}

std::string customGroup(std::string_view groupKey)
{
    return std::string(customGroupPrefix).append(groupKey);
}

std::string groupDrag(std::string_view groupID)
{
    return std::string(groupDragPrefix).append(groupID);
}

std::string applicationMemoryKey(const std::optional<std::string> &bundleIdentifier, Pid pid)
{
    return bundleIdentifier ? *bundleIdentifier : "pid:" + std::to_string(pid);
}

std::string makeUuid()
{
    std::random_device random;
    std::array<std::uint32_t, 4> words{};
    for (auto &word : words)
        word = random();
    words[1] = (words[1] & 0xFFFF0FFFU) | 0x00004000U;  // version 4: made at random
    words[2] = (words[2] & 0x3FFFFFFFU) | 0x80000000U;
    std::array<char, 37> text{};
    std::snprintf(text.data(), text.size(), "%08X-%04X-%04X-%04X-%04X%08X", words[0], words[1] >> 16,
                  words[1] & 0xFFFFU, words[2] >> 16, words[2] & 0xFFFFU, words[3]);
    return text.data();
}

}  // namespace korvane::Identifiers
