#include "tests/vectors/driver/Comparison.h"

#include <bit>
#include <cstdint>

namespace korvane::vectors {
namespace {

constexpr std::size_t longestText = 300;

std::string shown(const Json &value)
{
    std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() > longestText)
        text = text.substr(0, longestText) + "…";
    return text;
}

std::string difference(const Json &expected, const Json &got, const std::string &path)
{
    return path + ": expected " + shown(expected) + ", got " + shown(got);
}

std::string memberPath(const std::string &path, const std::string &key)
{
    return std::string(path).append(".").append(key);
}

std::string elementPath(const std::string &path, std::size_t index)
{
    return std::string(path).append("[").append(std::to_string(index)).append("]");
}

bool sameNumber(const Json &expected, const Json &got)
{
    if (expected.is_number_integer() && got.is_number_integer())
        return expected == got;
    // A file may write a double without its fraction.
    return std::bit_cast<std::uint64_t>(expected.get<double>()) == std::bit_cast<std::uint64_t>(got.get<double>());
}

}  // namespace

std::optional<std::string> firstDifference(const Json &expected, const Json &got, const std::string &path)
{
    if (expected.is_number() && got.is_number())
        return sameNumber(expected, got) ? std::nullopt : std::optional(difference(expected, got, path));
    if (expected.type() != got.type())
        return difference(expected, got, path);
    if (expected.is_object()) {
        for (const auto &[key, value] : expected.items()) {
            const std::string place = memberPath(path, key);
            if (!got.contains(key))
                return place + ": expected " + shown(value) + ", got nothing";
            if (auto found = firstDifference(value, got[key], place))
                return found;
        }
        for (const auto &[key, value] : got.items())
            if (!expected.contains(key))
                return memberPath(path, key) + ": expected nothing, got " + shown(value);
        return std::nullopt;
    }
    if (expected.is_array()) {
        for (std::size_t i = 0; i < expected.size() && i < got.size(); ++i)
            if (auto found = firstDifference(expected[i], got[i], elementPath(path, i)))
                return found;
        if (expected.size() != got.size())
            return path + ": expected " + std::to_string(expected.size()) + " elements, got "
                   + std::to_string(got.size()) + "; " + difference(expected, got, path);
        return std::nullopt;
    }
    return expected == got ? std::nullopt : std::optional(difference(expected, got, path));
}

Outcome compared(const Json &expected, const Json &got, const std::string &path)
{
    auto found = firstDifference(expected, got, path);
    return found ? Outcome::fail(*found) : Outcome::pass();
}

}  // namespace korvane::vectors
