// The defaults database in memory. It keeps a list of all writes, so that a test can check what an operation saved.
#pragma once

#include "Ports/Defaults.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace korvane::platform::simulated {

// A list or a dictionary that holds something other than text. It is present, but every reader sees it as absent.
struct UnreadableValue {
    std::string note;  // only for the test that put it there
    friend bool operator==(const UnreadableValue &, const UnreadableValue &) = default;
};

using DefaultsValue = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>,
                                   platform::StringMap, std::vector<std::uint8_t>, UnreadableValue>;

class MemoryDefaults final : public platform::Defaults {
public:
    bool has(std::string_view key) override;
    std::optional<bool> boolean(std::string_view key) override;
    std::optional<std::int64_t> integer(std::string_view key) override;
    std::optional<double> number(std::string_view key) override;
    std::optional<std::string> string(std::string_view key) override;
    std::optional<std::vector<std::string>> strings(std::string_view key) override;
    std::optional<platform::StringMap> dictionary(std::string_view key) override;
    std::optional<std::vector<std::uint8_t>> data(std::string_view key) override;

    void setBoolean(std::string_view key, bool value) override { write(key, value); }
    void setInteger(std::string_view key, std::int64_t value) override { write(key, value); }
    void setNumber(std::string_view key, double value) override { write(key, value); }
    void setString(std::string_view key, std::string_view value) override { write(key, std::string(value)); }
    void setStrings(std::string_view key, const std::vector<std::string> &value) override { write(key, value); }
    void setDictionary(std::string_view key, const platform::StringMap &value) override { write(key, value); }
    void setData(std::string_view key, std::span<const std::uint8_t> value) override
    {
        write(key, std::vector<std::uint8_t>(value.begin(), value.end()));
    }
    void remove(std::string_view key) override;
    void removeAll() override;
    void synchronize() override { ++synchronizations; }

    using Values = std::map<std::string, DefaultsValue, std::less<>>;
    const Values &all() const { return values; }
    // Stores a value as if an earlier run had written it. It is not recorded as a write.
    void put(std::string key, DefaultsValue value) { values.insert_or_assign(std::move(key), std::move(value)); }
    // The keys written since the beginning or since the last takeWrites(), in order. A removal is recorded as "-" and
    // the key.
    std::vector<std::string> takeWrites() { return std::exchange(writes, {}); }
    int synchronizeCount() const { return synchronizations; }

private:
    void write(std::string_view key, DefaultsValue value);
    void noteRemoval(std::string_view key);
    template <typename T> std::optional<T> read(std::string_view key) const;

    Values values;
    std::vector<std::string> writes;
    int synchronizations = 0;
};

}  // namespace korvane::platform::simulated
