// The user's defaults database: one flat space of typed values.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::platform {

using StringMap = std::map<std::string, std::string>;

// A value of another type reads as absent; an integer also reads as a number.
class Defaults {
public:
    virtual ~Defaults() = default;

    virtual bool has(std::string_view key) = 0;
    virtual std::optional<bool> boolean(std::string_view key) = 0;
    virtual std::optional<std::int64_t> integer(std::string_view key) = 0;
    virtual std::optional<double> number(std::string_view key) = 0;
    virtual std::optional<std::string> string(std::string_view key) = 0;
    // Absent if any element is not text.
    virtual std::optional<std::vector<std::string>> strings(std::string_view key) = 0;
    // Absent if any value is not text.
    virtual std::optional<StringMap> dictionary(std::string_view key) = 0;
    virtual std::optional<std::vector<std::uint8_t>> data(std::string_view key) = 0;

    virtual void setBoolean(std::string_view key, bool value) = 0;
    virtual void setInteger(std::string_view key, std::int64_t value) = 0;
    virtual void setNumber(std::string_view key, double value) = 0;
    virtual void setString(std::string_view key, std::string_view value) = 0;
    virtual void setStrings(std::string_view key, const std::vector<std::string> &value) = 0;
    virtual void setDictionary(std::string_view key, const StringMap &value) = 0;
    virtual void setData(std::string_view key, std::span<const std::uint8_t> value) = 0;
    // Does nothing when the key is absent.
    virtual void remove(std::string_view key) = 0;
    // Removes every key of this program.
    virtual void removeAll() = 0;
    // Writes the new values to the disk now, instead of at the next turn of the run loop.
    virtual void synchronize() = 0;
};

}  // namespace korvane::platform
