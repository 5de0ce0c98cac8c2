#include "Platform/Linux/PropertyListDefaults.h"

#include "Platform/Linux/PrivateFile.h"
#include "Platform/Linux/UserDirectories.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace korvane::platform {
namespace {

constexpr std::size_t largestSettingsFile = 16u << 20;
constexpr auto leftoverAge = std::chrono::minutes(1);

std::string timeStamp()
{
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y%m%d-%H%M%S", &utc);
    return text.data();
}

}  // namespace

std::filesystem::path defaultsFile()
{
    const auto directory = userConfigDirectory();
    return directory.empty() ? directory : directory / "korvane" / "defaults.plist";
}

PropertyListDefaults::PropertyListDefaults(MainLoop &mainLoop, std::filesystem::path path, Report reportTo)
    : loop(mainLoop), file(std::move(path)), report(std::move(reportTo))
{
    if (file.empty()) {
        writable = false;
        report("korvane: no home directory, so settings last only as long as the program");
        return;
    }
    load();
}

PropertyListDefaults::~PropertyListDefaults()
{
    dirty = dirty || unwritten;
    synchronize();
}

void PropertyListDefaults::reportOnStandardError(const std::string &line)
{
    std::fprintf(stderr, "%s\n", line.c_str());
}

void PropertyListDefaults::load()
{
    // An earlier version or a careless copy may have left the folder open to others.
    struct stat folder {};
    const auto directory = file.parent_path();
    if (::stat(directory.c_str(), &folder) == 0 && folder.st_uid == ::getuid() && (folder.st_mode & 077) != 0)
        (void)::chmod(directory.c_str(), 0700);
    removeLeftovers();

    const FileContents contents = readFile(file, largestSettingsFile);
    if (contents.outcome == FileContents::Outcome::missing)
        return;
    if (contents.outcome == FileContents::Outcome::read) {
        if (auto parsed = parsePropertyList(contents.bytes)) {
            values = *std::move(parsed);
            return;
        }
    }
    if (contents.outcome != FileContents::Outcome::read)
        writable = setAside(contents.reason);
    else
        writable = setAside(holdsTooMuch(contents.bytes) ? "it holds too much" : "it is damaged");
}

bool PropertyListDefaults::setAside(const std::string &reason)
{
    std::filesystem::path kept = file;
    kept += ".damaged-" + timeStamp();
    std::error_code error;
    for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(kept, error)); ++number) {
        kept = file;
        kept += ".damaged-" + timeStamp() + "-" + std::to_string(number);
    }
    std::filesystem::rename(file, kept, error);
    const std::string complaint = "korvane: the settings in " + file.string() + " can't be read (" + reason + "); ";
    if (error) {
        report(complaint + "the file is left alone and settings last only as long as the program");
        return false;
    }
    report(complaint + "the file was kept as " + kept.string());
    return true;
}

// Removes the temporary files of a process that was killed while it wrote.
void PropertyListDefaults::removeLeftovers()
{
    const std::string prefix = "." + file.filename().string() + ".";
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(file.parent_path(), error)) {
        const std::string name = entry.path().filename().string();
        if (name.size() != prefix.size() + 6 || !name.starts_with(prefix))
            continue;
        std::error_code ignored;
        const auto written = entry.last_write_time(ignored);
        if (!ignored && std::filesystem::file_time_type::clock::now() - written > leftoverAge)
            std::filesystem::remove(entry.path(), ignored);
    }
}

template <typename T> std::optional<T> PropertyListDefaults::read(std::string_view key) const
{
    const auto found = values.find(key);
    if (found == values.end())
        return std::nullopt;
    const T *value = std::get_if<T>(&found->second);
    return value != nullptr ? std::optional<T>(*value) : std::nullopt;
}

bool PropertyListDefaults::has(std::string_view key)
{
    return values.contains(key);
}

std::optional<bool> PropertyListDefaults::boolean(std::string_view key)
{
    return read<bool>(key);
}

std::optional<std::int64_t> PropertyListDefaults::integer(std::string_view key)
{
    return read<std::int64_t>(key);
}

std::optional<double> PropertyListDefaults::number(std::string_view key)
{
    if (const auto value = read<double>(key))
        return value;
    if (const auto value = read<std::int64_t>(key))
        return static_cast<double>(*value);
    return std::nullopt;
}

std::optional<std::string> PropertyListDefaults::string(std::string_view key)
{
    return read<std::string>(key);
}

std::optional<std::vector<std::string>> PropertyListDefaults::strings(std::string_view key)
{
    return read<std::vector<std::string>>(key);
}

std::optional<StringMap> PropertyListDefaults::dictionary(std::string_view key)
{
    return read<StringMap>(key);
}

std::optional<std::vector<std::uint8_t>> PropertyListDefaults::data(std::string_view key)
{
    return read<Bytes>(key);
}

void PropertyListDefaults::setBoolean(std::string_view key, bool value)
{
    store(key, value);
}

void PropertyListDefaults::setInteger(std::string_view key, std::int64_t value)
{
    store(key, value);
}

void PropertyListDefaults::setNumber(std::string_view key, double value)
{
    if (std::isfinite(value))
        store(key, value);
}

void PropertyListDefaults::setString(std::string_view key, std::string_view value)
{
    store(key, storableText(value));
}

void PropertyListDefaults::setStrings(std::string_view key, const std::vector<std::string> &value)
{
    std::vector<std::string> texts;
    texts.reserve(value.size());
    for (const auto &text : value)
        texts.push_back(storableText(text));
    store(key, std::move(texts));
}

void PropertyListDefaults::setDictionary(std::string_view key, const StringMap &value)
{
    StringMap map;
    for (const auto &[name, text] : value)
        map.insert_or_assign(storableText(name), storableText(text));
    store(key, std::move(map));
}

void PropertyListDefaults::setData(std::string_view key, std::span<const std::uint8_t> value)
{
    store(key, Bytes(value.begin(), value.end()));
}

void PropertyListDefaults::remove(std::string_view key)
{
    const auto found = values.find(key);
    if (found == values.end())
        return;
    values.erase(found);
    changed();
}

void PropertyListDefaults::removeAll()
{
    if (values.empty())
        return;
    values.clear();
    changed();
}

void PropertyListDefaults::store(std::string_view key, PropertyValue value)
{
    const auto found = values.find(key);
    if (found == values.end())
        values.insert_or_assign(storableText(key), std::move(value));
    else if (found->second == value)
        return;
    else
        found->second = std::move(value);
    changed();
}

void PropertyListDefaults::changed()
{
    if (dirty)
        return;
    dirty = true;
    loop.post([this, still = std::weak_ptr<bool>(alive)] {
        if (still.lock())
            synchronize();
    });
}

void PropertyListDefaults::synchronize()
{
    if (!dirty)
        return;
    dirty = false;
    if (!writable)
        return;
    const auto reason = replacePrivateFile(file, writePropertyList(values));
    unwritten = reason.has_value();
    if (!reason)
        return;
    // The next change, or the end of the program, tries again. All values are still in memory.
    if (!failureReported)
        report("korvane: settings can't be written to " + file.string() + " (" + *reason
               + "); they last only as long as the program");
    failureReported = true;
}

}  // namespace korvane::platform
