#include "Platform/Simulated/MemoryDefaults.h"

namespace korvane::platform::simulated {

template <typename T> std::optional<T> MemoryDefaults::read(std::string_view key) const
{
    const auto found = values.find(key);
    if (found == values.end())
        return std::nullopt;
    const T *value = std::get_if<T>(&found->second);
    return value ? std::optional<T>(*value) : std::nullopt;
}

bool MemoryDefaults::has(std::string_view key)
{
    return values.contains(key);
}

std::optional<bool> MemoryDefaults::boolean(std::string_view key)
{
    return read<bool>(key);
}

std::optional<std::int64_t> MemoryDefaults::integer(std::string_view key)
{
    return read<std::int64_t>(key);
}

std::optional<double> MemoryDefaults::number(std::string_view key)
{
    if (const auto whole = read<std::int64_t>(key))
        return static_cast<double>(*whole);
    return read<double>(key);
}

std::optional<std::string> MemoryDefaults::string(std::string_view key)
{
    return read<std::string>(key);
}

std::optional<std::vector<std::string>> MemoryDefaults::strings(std::string_view key)
{
    return read<std::vector<std::string>>(key);
}

std::optional<platform::StringMap> MemoryDefaults::dictionary(std::string_view key)
{
    return read<platform::StringMap>(key);
}

std::optional<std::vector<std::uint8_t>> MemoryDefaults::data(std::string_view key)
{
    return read<std::vector<std::uint8_t>>(key);
}

void MemoryDefaults::write(std::string_view key, DefaultsValue value)
{
    values.insert_or_assign(std::string(key), std::move(value));
    writes.emplace_back(key);
}

void MemoryDefaults::noteRemoval(std::string_view key)
{
    writes.emplace_back("-").append(key);
}

void MemoryDefaults::remove(std::string_view key)
{
    if (const auto found = values.find(key); found != values.end())
        values.erase(found);
    noteRemoval(key);
}

void MemoryDefaults::removeAll()
{
    for (const auto &[key, value] : values)
        noteRemoval(key);
    values.clear();
}

}  // namespace korvane::platform::simulated
