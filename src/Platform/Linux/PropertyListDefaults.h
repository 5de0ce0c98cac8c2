// The defaults database in a file of the user. It is read once, answers from memory, and is written after the turn that
// changed it.
#pragma once

#include "Platform/Linux/PropertyList.h"
#include "Ports/Defaults.h"
#include "Ports/MainLoop.h"

#include <filesystem>
#include <functional>

namespace korvane::platform {

// The file defaults.plist in Korvane's folder of the user's configuration directory. Empty when the user has no home.
std::filesystem::path defaultsFile();

// Characters that no property list can hold are removed from texts (storableText). A number that is not finite is not
// stored, and the key keeps its old value.
class PropertyListDefaults final : public Defaults {
public:
    using Report = std::function<void(const std::string &line)>;

    // Reads the file. A file that can't be read is renamed and reported, and an empty database takes its place. If even
    // the renaming fails, nothing is ever written. With an empty path everything stays in memory. `report` gets one
    // line for each such event, and one for the first write that fails; later writes try again.
    PropertyListDefaults(MainLoop &mainLoop, std::filesystem::path path, Report reportTo = reportOnStandardError);
    // Writes all changes that are not yet written.
    ~PropertyListDefaults() override;

    PropertyListDefaults(const PropertyListDefaults &) = delete;
    PropertyListDefaults &operator=(const PropertyListDefaults &) = delete;

    bool has(std::string_view key) override;
    std::optional<bool> boolean(std::string_view key) override;
    std::optional<std::int64_t> integer(std::string_view key) override;
    std::optional<double> number(std::string_view key) override;
    std::optional<std::string> string(std::string_view key) override;
    std::optional<std::vector<std::string>> strings(std::string_view key) override;
    std::optional<StringMap> dictionary(std::string_view key) override;
    std::optional<std::vector<std::uint8_t>> data(std::string_view key) override;

    void setBoolean(std::string_view key, bool value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setNumber(std::string_view key, double value) override;
    void setString(std::string_view key, std::string_view value) override;
    void setStrings(std::string_view key, const std::vector<std::string> &value) override;
    void setDictionary(std::string_view key, const StringMap &value) override;
    void setData(std::string_view key, std::span<const std::uint8_t> value) override;
    void remove(std::string_view key) override;
    void removeAll() override;
    void synchronize() override;

    static void reportOnStandardError(const std::string &line);

private:
    void load();
    bool setAside(const std::string &reason);
    void removeLeftovers();
    template <typename T> std::optional<T> read(std::string_view key) const;
    void store(std::string_view key, PropertyValue value);
    void changed();

    MainLoop &loop;
    std::filesystem::path file;
    Report report;
    PropertyList values;
    bool writable = true;  // false when the existing file must not be changed
    bool dirty = false;
    bool unwritten = false;  // the last write failed
    bool failureReported = false;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);  // tells posted calls whether this object still exists
};

}  // namespace korvane::platform
